"""A service of the system, played by a template of python-dbusmock."""
import subprocess
import sys

from gi.repository import GLib

from support.agent import call
from support.waiting import wait_for_end, wait_until

MOCK = "org.freedesktop.DBus.Mock"


class MockService:
    """Runs as a process of its own until it vanishes."""

    def __init__(self, session, connection, name, template):
        self.name = name
        self.path = "/" + name.replace(".", "/")
        self._connection = connection
        self._process = session.start([sys.executable, "-m", "dbusmock", "--template", template],
                                      stdout=subprocess.DEVNULL)
        wait_until(self._is_there, name)

    def _is_there(self):
        """The template's methods are there later than the name."""
        try:
            return "AddTemplate" in self.call("org.freedesktop.DBus.Introspectable",
                                              "Introspect").unpack()[0] and self.is_ready()
        except GLib.Error:
            return False

    def is_ready(self):
        return True

    def call(self, interface, method, arguments=None):
        return call(self._connection, self.name, self.path, interface, method, arguments)

    def vanish(self):
        self._process.kill()
        wait_for_end(self._process)
