"""Notification servers that come, go and misbehave."""
import unittest

from gi.repository import GLib

from support.notification_server import ConfusedServer, RefusingServer
from support.notification_test import NOTIFYING, NotificationTest, soon
from support.values import event
from support.waiting import wait_until


class AServer(NotificationTest):
    def pass_an_alarm(self, uid, **values):
        """An alarm comes due, whatever becomes of it."""
        self.link.push([event(uid, soon(), **values)])
        self.wait_until(lambda: self.link.pending() == [], f"{uid} is past")

    def start_with_a_silent_server(self, *capabilities):
        """A server that has not even said what it can do."""
        self.server = self.start_server(*capabilities)
        self.server.hold_answers()
        self.start_agent()
        self.link.set_preferences(NOTIFYING)
        self.wait_until(lambda: self.server.unanswered_methods() == ["GetCapabilities"], "asked")

    def test_that_comes_later_gets_the_alarms_from_before_too(self):
        self.start_agent()
        self.link.set_preferences(NOTIFYING)
        self.pass_an_alarm("before")
        self.server = self.start_server("body-markup")
        self.link.push([event("after", soon(), location="<4>")])
        self.wait_for("before", "after")
        self.assertEqual(self.server.delivered[-1].body.split("\n")[0], "&lt;4&gt;")

    def test_that_comes_back_gets_again_what_is_unanswered(self):
        self.start()
        self.deliver("answered", "second")
        self.server.dismiss(1)
        self.deliver("third")
        self.server.vanish()
        self.server = self.start_server("body-markup")
        self.link.push([event("fourth", soon(), location="<4>")], delta=True)
        self.wait_for("second", "third", "fourth")
        self.assertEqual(self.server.delivered[2].body.split("\n")[0], "&lt;4&gt;")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: len(self.server.closed) == 3, "closed")
        self.deliver("sentinel")
        self.assertEqual(self.server.closed, [1, 2, 3])

    def test_that_takes_over_from_another_gets_its_alarms_too(self):
        self.start("body-markup")
        self.deliver("first")
        first, self.server = self.server, self.start_server(replaces_another=True)
        self.link.push([event("second", soon(), location="<4>")])
        self.wait_for("first", "second")
        self.assertEqual(self.server.delivered[1].body.split("\n")[0], "<4>")
        self.assertEqual(first.summaries(), ["first"])

    def test_that_was_replaced_is_not_heard_any_more(self):
        self.start()
        self.deliver("a", "b", "c")
        self.server.hold_answers()
        self.link.push([event("d", soon())])
        self.wait_for("a", "b", "c", "d")
        first, self.server = self.server, self.start_server(replaces_another=True)
        self.wait_for("a", "b", "c", "d")
        self.deliver("e")
        first.release_answers()
        self.deliver("f")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: len(self.server.closed) >= 6, "closed")
        self.deliver("sentinel")
        self.assertEqual((first.closed, self.server.closed), ([], [1, 2, 3, 4, 5, 6]))

    def test_that_takes_over_from_one_that_never_answers_gets_what_was_held_up(self):
        self.start_with_a_silent_server("body-markup")
        self.pass_an_alarm("a", location="<4>")
        first, self.server = self.server, self.start_server(replaces_another=True)
        wait_until(lambda: self.server.delivered, "delivered", limit_seconds=10)
        first.release_answers()
        self.link.push([event("b", soon(), location="<5>")])
        self.wait_for("a", "b")
        self.assertEqual([delivered.body.split("\n")[0] for delivered in self.server.delivered],
                         ["<4>", "<5>"])

    def test_that_never_answers_does_not_hold_the_agent(self):
        self.start_with_a_silent_server()
        for uid in ("a", "b"):
            self.pass_an_alarm(uid)
        self.assertEqual(self.server.unanswered_methods(), ["GetCapabilities"], "asked once")
        self.link.call("PrepareToStop")
        self.link.version("unknown")
        self.announcements.wait_for("PlenzoAlarm Relaunch")

    def test_that_answers_late_gets_what_came_due_meanwhile(self):
        self.start_with_a_silent_server("body-markup")
        due = soon()
        self.link.push([event("a", due, location="&"), event("b", due)])
        self.wait_until(lambda: self.link.pending() == [], "both are past")
        self.server.release_answers()
        self.wait_for("a", "b")
        self.assertEqual(self.server.delivered[0].body.split("\n")[0], "&amp;")

    def check_recovery_from(self, kind):
        self.server = self.start_server(kind=kind)
        self.start_agent()
        self.link.set_preferences(NOTIFYING)
        self.deliver("a", "b")
        self.link.call("PrepareToStop")
        self.server = self.start_server(replaces_another=True)
        self.deliver("c")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: self.server.closed == [1], "closed")

    def test_that_refuses_everything_is_borne(self):
        self.check_recovery_from(RefusingServer)

    def test_that_answers_nonsense_is_borne(self):
        self.check_recovery_from(ConfusedServer)

    def test_that_tells_nonsense_is_borne(self):
        self.start()
        self.deliver("a", "b")
        for name, arguments in (
                ("NotificationClosed", GLib.Variant("(s)", ("1",))),
                ("NotificationClosed", None),
                ("NotificationClosed", GLib.Variant("(u)", (1,))),
                ("NotificationClosed", GLib.Variant("(uu)", (2**32 - 1, 99))),
                ("ActionInvoked", GLib.Variant("(us)", (1, "unknown"))),
                ("ActionInvoked", GLib.Variant("(uu)", (1, 1))),
                ("ActivationToken", GLib.Variant("(us)", (1, "token"))),
                ("Unknown", GLib.Variant("(v)", (GLib.Variant("s", ""),)))):
            self.server.emit(name, arguments)
        self.deliver("c")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: len(self.server.closed) == 3, "closed")
        self.assertEqual(sorted(self.server.closed), [1, 2, 3])

    def test_is_the_only_one_who_can_say_that_a_notification_is_closed(self):
        self.start()
        self.deliver("a")
        self.session.connect().emit_signal(None, "/org/freedesktop/Notifications",
                                           "org.freedesktop.Notifications", "NotificationClosed",
                                           GLib.Variant("(uu)", (1, 2)))
        self.deliver("b")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: self.server.closed == [1, 2], "both closed")


if __name__ == "__main__":
    unittest.main()
