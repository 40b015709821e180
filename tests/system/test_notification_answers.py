"""What the user does with notifications, as the host hears of it."""
import unittest

from gi.repository import GLib

from support.host_commands import HostCommands
from support.notification_test import NOTIFYING, NotificationTest, soon
from support.values import absolute_reminder, event, in_seconds, now_seconds


class AnAnswer(NotificationTest):
    def setUp(self):
        super().setUp()
        self.host = HostCommands(self.session)

    def invoke(self, identifier, action):
        """As a server does, which closes what was answered."""
        self.server.emit("ActionInvoked", GLib.Variant("(us)", (identifier, action)))
        self.server.emit("NotificationClosed", GLib.Variant("(uu)", (identifier, 2)))

    def wait_for_commands(self, *commands):
        self.wait_until(lambda: self.host.heard() == sorted(commands), f"{commands} heard")

    def test_by_a_click_shows_the_event_and_acknowledges_its_reminder(self):
        self.start("actions")
        self.deliver("tea")
        self.assertEqual(self.server.delivered[0].actions, ["default", "tea", "snooze", "Snooze"])
        self.invoke(1, "default")
        self.wait_for_commands("info/tea", "acknowledge/tea-at-start")

    def test_by_the_button_snoozes_as_the_settings_say(self):
        self.start("actions")
        self.link.set_preferences({"alarmsSnoozeSeconds": -600})
        start = in_seconds(86400)
        self.link.push([event("tea", start, absolute_reminder("r", soon()))])
        self.wait_for("tea")
        self.invoke(1, "snooze")
        self.wait_for_commands(f"snooze/r/{int(start.seconds) - 600}")

    def test_by_the_button_snoozes_from_now(self):
        self.start("actions")
        self.deliver("tea")
        before = now_seconds()
        self.invoke(1, "snooze")
        self.wait_until(self.host.heard, "a command")
        command, reminder, until = self.host.heard()[0].split("/")
        self.assertEqual((command, reminder), ("snooze", "tea-at-start"))
        self.assertTrue(int(before) <= int(until) - 300 <= now_seconds())

    def test_by_closing_acknowledges_and_what_the_server_takes_away_comes_again(self):
        self.start()
        self.deliver("expired", "closed")
        self.server.emit("NotificationClosed", GLib.Variant("(uu)", (2, 1)))
        self.server.dismiss(1)
        self.wait_for_commands("acknowledge/closed-at-start")
        self.assertEqual([row["uid"] for row in self.link.delivered()], ["expired"])
        self.wait_until(lambda: self.server.summaries() == ["closed", "expired", "expired"], "again")
        self.server.dismiss(3)
        self.wait_for_commands("acknowledge/closed-at-start", "acknowledge/expired-at-start")
        self.assertEqual(self.link.delivered(), [])

    def test_comes_from_a_server_that_came_after_the_delivery(self):
        self.start_agent()
        self.link.set_preferences(NOTIFYING)
        self.link.push([event("tea", soon())])
        self.wait_until(lambda: self.link.delivered(), "delivered")
        self.assertEqual([(row["uid"], row["reminderUid"], row["shown"])
                          for row in self.link.delivered()], [("tea", "tea-at-start", False)])
        self.server = self.start_server("actions")
        self.wait_for("tea")
        self.wait_until(lambda: self.link.delivered()[0]["shown"], "shown")
        self.server.dismiss(1)
        self.wait_for_commands("acknowledge/tea-at-start")

    def test_is_heard_for_each_of_very_many_notifications(self):
        self.start("actions")
        due = soon(later_by=1)
        self.link.push([event(f"{number:03}", due) for number in range(500)])
        self.wait_for(*(f"{number:03}" for number in range(500)))
        self.wait_until(lambda: all(row["shown"] for row in self.link.delivered()), "all shown")
        self.server.dismiss(250)
        self.wait_for_commands("acknowledge/249-at-start")
        self.assertEqual(len(self.link.delivered()), 499)
        self.link.call("PrepareToStop")
        self.wait_until(lambda: len(self.server.closed) == 499, "the others closed")


if __name__ == "__main__":
    unittest.main()
