"""Alarms that come due, as the user's notification server gets them."""
import datetime
import unittest
import zoneinfo

from support.notification_test import NOTIFYING, NotificationTest, soon
from support.values import REFERENCE_SECONDS_SINCE_1970, absolute_reminder, event, in_seconds, reminder


def today_at(moment):
    zone = zoneinfo.ZoneInfo("Pacific/Chatham")
    local = datetime.datetime.fromtimestamp(REFERENCE_SECONDS_SINCE_1970 + moment.seconds, zone)
    return local.strftime("Today at %-I:%M %p")


class ADueAlarm(NotificationTest):
    TEXTS = {"tags": ("<b>Tea</b> & cake", "Room <4> & \"5\"", "Room &lt;4&gt; &amp; \"5\"\n"),
             "entities": ("&lt;", "&amp;", "&amp;amp;\n"),
             "words": ("Größe", "Straße 5", "Straße 5\n"),
             "nothing": ("", "", "")}

    def check_texts(self, expected_place):
        due = soon()
        self.link.push([event(name, due, title=title, location=place)
                        for name, (title, place, _) in self.TEXTS.items()])
        self.wait_until(lambda: len(self.server.delivered) == len(self.TEXTS), "all delivered")
        delivered = [(one.summary, one.body.replace("\u202f", " ")) for one in self.server.delivered]
        self.assertEqual(sorted(delivered),
                         sorted((title, expected_place(place, escaped) + today_at(due))
                                for title, place, escaped in self.TEXTS.values()))

    def test_is_delivered_with_its_title_place_and_time_as_they_are(self):
        self.start()
        self.check_texts(lambda place, _: place and place + "\n")

    def test_is_delivered_with_its_place_escaped_for_a_server_that_reads_markup(self):
        self.start("body-markup", "body-hyperlinks")
        self.check_texts(lambda _, escaped: escaped)

    def test_tells_the_server_what_it_is(self):
        self.start()
        self.deliver("Tea")
        delivered = self.server.delivered[0]
        self.assertEqual(delivered.replaces, 0)
        self.assertEqual(delivered.hints["desktop-entry"], "org.plenzo.PlenzoAlarm")
        self.assertNotEqual(delivered.application, "")

    def test_is_delivered_once_when_several_occurrences_share_an_absolute_reminder(self):
        self.start()
        due, later = soon(), soon(later_by=0.2)
        self.link.push([event(day, in_seconds(86400), absolute_reminder("shared", due))
                        for day in ("monday", "tuesday")] + [event("sentinel", later)])
        self.wait_for("monday", "sentinel")

    def test_is_delivered_by_the_type_of_its_reminder(self):
        self.start()
        due, later = soon(), soon(later_by=0.2)
        self.link.push([event(f"type {kind:02}", due, absolute_reminder(f"r{kind}", due, kind))
                        for kind in (0, 1, 3, 9, 10, -1)] + [event("sentinel", later)])
        self.wait_for("type 00", "type 01", "type 10", "sentinel")
        self.assertEqual(self.link.pending(), [])

    def test_leaves_the_queue_unseen_while_alarms_are_off(self):
        self.start()
        self.link.set_preferences({"alarmsIssueAlarms": False})
        self.link.push([event("unseen", soon())])
        self.wait_until(lambda: self.link.pending() == [], "the queue is empty")
        self.link.set_preferences(NOTIFYING)
        self.deliver("sentinel")
        self.assertEqual(self.server.summaries(), ["sentinel"])

    def test_is_not_delivered_when_it_was_deleted_before(self):
        self.start()
        due = soon()
        self.link.push([event("deleted", due), event("sentinel", due)])
        self.link.push([{"uid": "deleted", "del": 1}], delta=True)
        self.wait_for("sentinel")

    def test_is_delivered_in_its_turn(self):
        self.start()
        start = in_seconds(3600)
        due = [soon(later_by=number / 10).seconds - start.seconds for number in range(4)]
        self.link.push([event("c", start, reminder("r", due[3])),
                        event("a", start, reminder("r", due[0]), reminder("s", due[2])),
                        event("b", start, reminder("r", due[1]))])
        self.wait_for("a", "b", "a", "c")


class DeliveredNotifications(NotificationTest):
    def check_removal_by(self, key):
        self.start()
        self.deliver("a", "b", "c")
        self.server.dismiss(2)
        # The server's announcement and the host's message come over different roads, so that
        # something of the server's has to come after the one before the other is sent.
        self.deliver("d")
        self.link.set_preferences({key: False})
        self.wait_until(lambda: len(self.server.closed) == 3, "the remaining three closed")
        self.link.set_preferences({key: True})
        self.deliver("e")
        self.link.set_preferences({key: False})
        self.wait_until(lambda: len(self.server.closed) == 4, "the last one closed")
        self.assertEqual(self.server.closed, [1, 3, 4, 5])

    def test_are_removed_when_alarms_are_switched_off(self):
        self.check_removal_by("alarmsIssueAlarms")

    def test_are_removed_when_their_use_is_switched_off(self):
        self.check_removal_by("alarmsUseNotificationCenter")

    def test_stay_when_the_delivery_is_switched_on_or_kept(self):
        self.start()
        self.deliver("a")
        for preferences in ({}, NOTIFYING, {"alarmsUseNotificationCenter": 1}, {"alarmsDaysToShow": 3}):
            self.link.set_preferences(preferences)
        self.deliver("sentinel")
        self.assertEqual(self.server.closed, [])

    def test_stay_when_the_queue_is_replaced(self):
        self.start()
        self.deliver("a")
        self.link.push([])
        self.deliver("sentinel")
        self.assertEqual(self.server.closed, [])

    def test_are_removed_before_the_host_stops_the_agent_which_goes_on(self):
        self.start()
        self.deliver("a", "b")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: self.server.closed == [1, 2], "both closed")
        self.deliver("c")

    def test_are_removed_even_when_the_server_has_not_told_their_numbers_yet(self):
        self.start()
        self.deliver("first")
        self.server.hold_answers()
        due = soon()
        self.link.push([event("a", due), event("b", due)])
        self.wait_until(lambda: self.server.unanswered_methods() == ["Notify", "Notify"],
                        "two on their way")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: self.server.closed == [1], "the first closed")
        self.server.release_answers()
        self.wait_until(lambda: self.server.closed == [1, 2, 3], "all closed")


if __name__ == "__main__":
    unittest.main()
