"""A login manager on a bus of the test's own, played by python-dbusmock's template."""
import subprocess
import sys

from gi.repository import GLib

from support.agent import call
from support.waiting import wait_for_end, wait_until

NAME = "org.freedesktop.login1"
PATH = "/org/freedesktop/login1"
MANAGER = "org.freedesktop.login1.Manager"

HELD = [("shutdown", "delay"), ("sleep", "delay")]


class LoginManager:
    """Runs as a process of its own until it vanishes."""

    def __init__(self, session, connection):
        self._connection = connection
        self._process = session.start([sys.executable, "-m", "dbusmock", "--template", "logind"],
                                      stdout=subprocess.DEVNULL)
        wait_until(self._is_there, "the login manager")

    def _is_there(self):
        answer = call(self._connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                      "org.freedesktop.DBus", "NameHasOwner", GLib.Variant("(s)", (NAME,)))
        return answer.unpack()[0] and self.inhibitors() is not None

    def inhibitors(self):
        """What is inhibited and how, of the inhibitors that are held; sorted."""
        try:
            answer = call(self._connection, NAME, PATH, MANAGER, "ListInhibitors")
        except GLib.Error:
            return None
        return sorted((what, mode) for what, _who, _why, mode, _user, _process in answer.unpack()[0])

    def wait_for_inhibitors(self, expected):
        wait_until(lambda: self.inhibitors() == expected,
                   f"inhibitors {expected}; now {self.inhibitors()}")

    def announce(self, signal, start):
        arguments = GLib.Variant("(sssav)", (MANAGER, signal, "b", [GLib.Variant("b", start)]))
        call(self._connection, NAME, PATH, "org.freedesktop.DBus.Mock", "EmitSignal", arguments)

    def vanish(self):
        self._process.kill()
        wait_for_end(self._process)
