"""The end of the session, and the machine's sleep and end."""
import unittest

from gi.repository import Gio, GLib

from support.login_manager import HELD, LoginManager
from support.private_bus import PrivateSession
from support.session_manager import SessionManager
from support.system_test import SystemTest
from support.values import event, in_seconds

NO_FLAGS = GLib.Variant("(u)", (0,))
SYSTEM_SERVICES = {"org.freedesktop.login1", "org.freedesktop.timedate1",
                   "org.freedesktop.locale1", "org.gnome.SessionManager"}


class Power(SystemTest):
    def start_login_manager(self):
        manager = LoginManager(self.session, self.link.connection)
        self.addCleanup(manager.vanish)
        return manager

    def assert_works(self):
        self.link.push([event("e", in_seconds(600))])
        self.wait_until(lambda: self.link.pending_uids() == ["e"], "the pushed event")


class ALoginManager(Power):
    def test_waits_for_the_agent_until_it_is_ready_and_again_after_the_sleep(self):
        manager = self.start_login_manager()
        self.start_agent()
        for _ in range(3):
            manager.wait_for_inhibitors(HELD)
            manager.announce("PrepareForSleep", True)
            manager.wait_for_inhibitors([("shutdown", "delay")])
            manager.announce("PrepareForSleep", False)
        manager.wait_for_inhibitors(HELD)

    def test_waits_for_the_agent_before_the_shutdown_and_after_one_that_did_not_come(self):
        manager = self.start_login_manager()
        self.start_agent()
        manager.wait_for_inhibitors(HELD)
        manager.announce("PrepareForShutdown", True)
        manager.wait_for_inhibitors([("sleep", "delay")])
        manager.announce("PrepareForShutdown", False)
        manager.wait_for_inhibitors(HELD)

    def test_may_come_late_and_restart_in_the_middle_of_a_sleep(self):
        self.start_agent()
        manager = self.start_login_manager()
        manager.wait_for_inhibitors(HELD)
        manager.announce("PrepareForSleep", True)
        manager.wait_for_inhibitors([("shutdown", "delay")])
        manager.vanish()
        manager = self.start_login_manager()
        manager.wait_for_inhibitors(HELD)
        self.assert_works()

    def test_lets_go_of_an_agent_that_has_ended(self):
        manager = self.start_login_manager()
        agent = self.start_agent()
        manager.wait_for_inhibitors(HELD)
        self.assertEqual(agent.ask_to_end(), 0)
        manager.wait_for_inhibitors([])


class ASystemBus(Power):
    def test_may_be_missing(self):
        environment = dict(self.session.environment,
                           DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nowhere/at/all")
        self.start_agent(environment=environment)
        self.assert_works()

    def test_may_go_away(self):
        system = PrivateSession()
        self.addCleanup(system.close)
        connection = system.connect()
        connection.set_exit_on_close(False)
        manager = LoginManager(system, connection)
        self.addCleanup(manager.vanish)
        environment = dict(self.session.environment, DBUS_SYSTEM_BUS_ADDRESS=system.address)
        agent = self.start_agent(environment=environment)
        self.wait_until(lambda: agent.open_pipes() == len(HELD), "inhibitors")
        system.stop_bus()
        self.wait_until(lambda: agent.open_pipes() == 0, "inhibitors let go of")
        self.assert_works()


class Services(Power):
    def test_are_never_called_by_name_which_would_start_them(self):
        """With a service there, so that it is called; the others are missing."""
        self.start_login_manager()
        messages = []

        def note(_connection, message, is_incoming):
            """Keeps others' calls to itself: a monitor that answers is thrown out."""
            if not is_incoming or message.get_message_type() != Gio.DBusMessageType.METHOD_CALL:
                return message
            messages.append(message)
            return None

        monitor = self.session.connect()
        monitor.add_filter(note)
        monitor.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                          "org.freedesktop.DBus.Monitoring", "BecomeMonitor",
                          GLib.Variant("(asu)", (["type='method_call'"], 0)), None,
                          Gio.DBusCallFlags.NONE, -1, None)
        self.start_agent()
        self.wait_until(lambda: self.calls(messages, "Inhibit"), "a call of Inhibit")
        called = {message.get_destination() for message in self.calls(messages)}
        self.assertIn("org.freedesktop.DBus", called)
        self.assertEqual(called & SYSTEM_SERVICES, set())

    @staticmethod
    def calls(messages, member=None):
        return [message for message in list(messages) if member in (None, message.get_member())]


class ASessionManager(Power):
    def start_session_manager(self):
        return SessionManager(self.session.connect())

    def test_gets_consent_and_ends_the_agent(self):
        manager = self.start_session_manager()
        environment = dict(self.session.environment, DESKTOP_AUTOSTART_ID="started-7")
        agent = self.start_agent(environment=environment)
        manager.wait_for_client()
        self.assertEqual(manager.registered, [("org.plenzo.PlenzoAlarm", "started-7")])
        manager.tell("QueryEndSession", NO_FLAGS)
        manager.wait_for_responses(1)
        manager.tell("EndSession", NO_FLAGS)
        manager.wait_for_responses(2)
        self.assertEqual(manager.responses, [(True, "")] * 2)
        self.assertTrue(agent.is_running())
        manager.tell("Stop")
        self.assertEqual(agent.wait_for_end(), 0)
        self.announcements.wait_for("PlenzoAlarm Quit")
        self.assertEqual(agent.errors(), "")

    def test_may_come_late_and_restart(self):
        self.start_agent()
        for _ in range(2):
            manager = self.start_session_manager()
            manager.wait_for_client()
            manager.tell("EndSession", NO_FLAGS)
            manager.wait_for_responses(1)
            manager.tell("CancelEndSession")
            manager.vanish()
        self.assert_works()


if __name__ == "__main__":
    unittest.main()
