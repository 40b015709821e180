"""The host over calendar files of a test, and the desktop's way of handing it commands."""
import os
import shutil
import subprocess

from gi.repository import GLib

from support.agent import call
from support.waiting import wait_for_end, wait_until

NAME = "org.plenzo.PlenzoHost"
PATH = "/org/plenzo/PlenzoHost"
APPLICATION = "org.freedesktop.Application"


def program():
    """The host program under test."""
    return os.environ["PLENZOHOST"]


class CalendarHost:
    """Owns the process of a host, whose configuration and files are in the session's folders."""

    def __init__(self, session, connection, *arguments, command=(), environment=None):
        self._connection = connection
        self._errors_path = session.folder / "host-errors"
        with open(self._errors_path, "a") as errors:
            self.process = session.start([*command, program(), *arguments], environment,
                                         stdout=subprocess.PIPE, stderr=errors, text=True)
        wait_until(lambda: self._has_name() or self.process.poll() is not None, "the host")

    def _has_name(self):
        return call(self._connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                    "NameHasOwner", GLib.Variant("(s)", (NAME,))).unpack()[0]

    def open(self, *urls):
        """As the desktop does it. The host has done what it can when this returns."""
        call(self._connection, NAME, PATH, APPLICATION, "Open",
             GLib.Variant("(asa{sv})", (list(urls), {})))

    def errors(self):
        return self._errors_path.read_text()

    def kill(self):
        self.process.kill()
        self._wait_for_end()

    def end(self):
        """The exit code."""
        self.process.terminate()
        return self._wait_for_end()

    def _wait_for_end(self):
        code = wait_for_end(self.process)
        self.process.stdout.close()
        wait_until(lambda: not self._has_name(), "the host is gone")
        return code


def make_default_handler(session):
    """The host is the session's program for command URLs, as an installation makes it."""
    applications = session.folder / "data" / "applications"
    applications.mkdir(exist_ok=True)
    shutil.copy(os.environ["PLENZO_HOST_ENTRY"], applications)
    (session.folder / "config" / "mimeapps.list").write_text(
        "[Default Applications]\nx-scheme-handler/plenzoevent=org.plenzo.PlenzoHost.desktop\n")
