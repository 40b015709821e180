"""A screen that nobody sees, with a window manager if wanted, and a notification server as users have
it: dunst."""
import os
import shutil
import subprocess
import unittest

from gi.repository import GLib

from support.agent import call
from support.notification_server import NAME, PATH
from support.waiting import wait_for_end, wait_until

_SERVER_CONTROL = "org.dunstproject.cmd0"
_PROPERTIES = "org.freedesktop.DBus.Properties"

# Everything is shown at once at a known place, and nothing goes by itself.
_CONFIGURATION = """[global]
    width = 300
    height = 100
    origin = top-left
    offset = 0x0
    notification_limit = 0
    history_length = 0
    stack_duplicates = false
    format = "%s"
    dmenu = {menu}
    mouse_left_click = do_action
    mouse_right_click = close_current
[urgency_critical]
    timeout = 0
"""
_INSIDE_OF_THE_FIRST = ("20", "10")


def skip_without(*programs):
    missing = [program for program in programs if shutil.which(program) is None]
    if missing:
        raise unittest.SkipTest(f"not installed: {' and '.join(missing)} (see scripts/install-dependencies)")


class Screen:
    """Owns an X server with a display of its own, of which the session's later programs know."""

    def __init__(self, session, size="800x600"):
        self._session = session
        reading, writing = os.pipe()
        with os.fdopen(reading) as display, open(session.folder / "screen-errors", "w") as errors:
            self._process = session.start(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24", "-nolisten", "tcp"],
                pass_fds=[writing], stdout=errors, stderr=errors)
            os.close(writing)
            number = display.readline().strip()
        if not number:
            raise AssertionError(f"no screen: {(session.folder / 'screen-errors').read_text()}")
        session.environment["DISPLAY"] = ":" + number

    def click(self, button):
        """A click of the mouse on the topmost notification."""
        self._control("mousemove", *_INSIDE_OF_THE_FIRST, "click", str(button))

    def shows_notifications(self):
        return self._control("search", "--onlyvisible", "--class", "Dunst", check=False) == 0

    def _control(self, *command, check=True):
        return self._run("xdotool", *command, check=check).returncode

    def xdotool(self, *command):
        """What it prints; nothing when it fails, as when there is no such window."""
        return self._run("xdotool", *command).stdout

    def xrandr(self, *command):
        return self._run("xrandr", *command, check=True).stdout

    def window_information(self, identifier):
        """Lines of a name, a colon and a value."""
        return self._run("xwininfo", "-id", identifier or "0").stdout

    def window_property(self, identifier, name):
        """As xprop prints it, without the name."""
        return self._run("xprop", "-id", identifier, name, check=True).stdout.partition(name)[2].strip()

    def _run(self, *command, check=False):
        return subprocess.run([str(word) for word in command], env=self._session.environment,
                              check=check, text=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def close(self):
        self._process.terminate()
        wait_for_end(self._process)


class WindowManager:
    """Owns the process of openbox, with its usual settings."""

    def __init__(self, session):
        ready = session.folder / "window-manager-is-ready"
        with open(session.folder / "window-manager-errors", "w") as errors:
            self._process = session.start(["openbox", "--sm-disable", "--startup", f"touch {ready}"],
                                          stdout=errors, stderr=errors)
        wait_until(ready.exists, "the window manager")

    def close(self):
        self._process.terminate()
        wait_for_end(self._process)


class Dunst:
    """The notification server's process, its screen and its user."""

    def __init__(self, session, screen, connection):
        self._screen = screen
        self._connection = connection
        self._environment = session.environment
        self._choice = session.folder / "menu-choice"
        configuration = session.folder / "dunstrc"
        configuration.write_text(_CONFIGURATION.format(menu=self._write_menu(session)))
        with open(session.folder / "dunst-errors", "w") as errors:
            self._process = session.start(["dunst", "-conf", str(configuration)], stdout=errors,
                                          stderr=errors)
        wait_until(self._is_there, "the notification server")

    def _write_menu(self, session):
        """The user's way of choosing from a list: the line with the chosen text. What was there to
        choose from stays beside it."""
        menu = session.folder / "menu"
        menu.write_text(f"#!/bin/sh\ntee '{self._choice}.offered' | grep -F -- \"$(cat '{self._choice}')\"\n")
        menu.chmod(0o700)
        return menu

    def _is_there(self):
        try:
            return self.information()[0] == "dunst"
        except GLib.Error:
            return False

    def information(self):
        return call(self._connection, NAME, PATH, NAME, "GetServerInformation").unpack()

    def kill(self):
        self._process.kill()
        wait_for_end(self._process)

    def count(self):
        """Of the notifications on the screen."""
        arguments = GLib.Variant("(ss)", (_SERVER_CONTROL, "displayedLength"))
        return call(self._connection, NAME, PATH, _PROPERTIES, "Get", arguments).unpack()[0]

    def past(self):
        """(program, title, body) of those that are gone, the latest first."""
        rows = call(self._connection, NAME, PATH, _SERVER_CONTROL, "NotificationListHistory").unpack()[0]
        return [(row["appname"], row["summary"], row["body"]) for row in rows]

    def wait_for_count(self, expected):
        wait_until(lambda: self.count() == expected, f"{expected} on the screen; now {self.count()}")

    def click(self, button=1):
        wait_until(self._screen.shows_notifications, "a window with notifications")
        self._screen.click(button)

    def invoke_default_action(self):
        self._control("action")

    def choose(self, text):
        """The action of the topmost notification whose label has the text, from the menu."""
        self._choice.write_text(text)
        self._control("context")

    def offered(self):
        """What the menu had to choose from."""
        return (self._choice.parent / "menu-choice.offered").read_text().splitlines()

    def close_last(self):
        self._control("close")

    def close_all(self):
        self._control("close-all")

    def _control(self, command):
        subprocess.run(["dunstctl", command], env=self._environment, check=True,
                       stdout=subprocess.DEVNULL)
