"""The bus starts the agent for a host that calls it."""
import os
import signal
import select
import unittest

from gi.repository import Gio, GLib

from support.agent import NAME, PATH, PROTOCOL, batch, call
from support.system_test import SystemTest
from support.values import event, in_seconds
from support.waiting import LIMIT_SECONDS


class Activation(SystemTest):
    def setUp(self):
        super().setUp()
        self.session.offer_activation()

    def agent_process(self):
        arguments = GLib.Variant("(s)", (NAME,))
        answer = call(self.link.connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                      "GetConnectionUnixProcessID", arguments)
        return os.pidfd_open(answer.unpack()[0])

    def end(self, process):
        signal.pidfd_send_signal(process, signal.SIGTERM)
        self.assertTrue(select.select([process], [], [], LIMIT_SECONDS)[0], "the agent goes on")
        os.close(process)

    def test_hands_over_the_call_that_started_the_agent(self):
        version = os.environ["PLENZO_VERSION"] + "t"
        self.link.connection.call_sync(NAME, PATH, PROTOCOL, "Version",
                                       GLib.Variant("(s)", (version,)), None,
                                       Gio.DBusCallFlags.NONE, LIMIT_SECONDS * 1000, None)
        self.announcements.wait_for("PlenzoAlarm Version")
        self.assertEqual(self.announcements.heard,
                         ["name taken", "PlenzoAlarm Launched", "PlenzoAlarm Version"])
        self.end(self.agent_process())

    def test_happens_once_for_many_calls_and_keeps_their_order(self):
        dates = [in_seconds(600 + number) for number in range(50)]
        for number, date in enumerate(dates):
            self.link.send("AlarmsUpdated", batch([event(f"e{number:02}", date)], number > 0))
        self.announcements.wait_for("PlenzoAlarm Launched")
        self.assertEqual(self.link.pending_uids(), [f"e{number:02}" for number in range(50)])
        self.assertEqual(self.announcements.heard, ["name taken", "PlenzoAlarm Launched"])
        self.end(self.agent_process())

    def test_works_again_after_the_agent_has_ended(self):
        for count in (1, 2):
            self.link.send("PrepareToStop")
            self.announcements.wait_for("PlenzoAlarm Launched", count)
            self.end(self.agent_process())
            self.announcements.wait_for("name released", count)


if __name__ == "__main__":
    unittest.main()
