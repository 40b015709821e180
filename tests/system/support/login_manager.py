"""A login manager on a bus of the test's own."""
from gi.repository import GLib

from support.mock_service import MOCK, MockService
from support.waiting import wait_until

MANAGER = "org.freedesktop.login1.Manager"

HELD = [("shutdown", "delay"), ("sleep", "delay")]


class LoginManager(MockService):
    def __init__(self, session, connection):
        super().__init__(session, connection, "org.freedesktop.login1", "logind")

    def is_ready(self):
        return self.inhibitors() is not None

    def inhibitors(self):
        """What is inhibited and how, of the inhibitors that are held; sorted."""
        inhibitors = self.call(MANAGER, "ListInhibitors").unpack()[0]
        return sorted((what, mode) for what, _who, _why, mode, _user, _process in inhibitors)

    def wait_for_inhibitors(self, expected):
        wait_until(lambda: self.inhibitors() == expected,
                   f"inhibitors {expected}; now {self.inhibitors()}")

    def announce(self, signal, start):
        arguments = GLib.Variant("(sssav)", (MANAGER, signal, "b", [GLib.Variant("b", start)]))
        self.call(MOCK, "EmitSignal", arguments)
