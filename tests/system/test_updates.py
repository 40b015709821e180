"""Full updates and deltas, by either form, as the queue shows them."""
import datetime
import unittest
import zoneinfo

from support.agent import batch
from support.memory_files import sealed_file
from support.system_test import SystemTest
from support.values import (REFERENCE_DATE, Date, absolute_reminder, deletion_notice, event, in_seconds,
                            property_list, reminder)

HOUR = 3600
DAY = 24 * HOUR


class Updates(SystemTest):
    def setUp(self):
        super().setUp()
        self.start_agent()

    def test_replace_everything_when_full(self):
        self.link.push([event("a", in_seconds(HOUR)), event("b", in_seconds(2 * HOUR))])
        self.link.push([event("c", in_seconds(HOUR))])
        self.assertEqual(self.link.pending_uids(), ["c"])
        self.link.push([])
        self.assertEqual(self.link.pending_uids(), [])

    def test_add_replace_and_delete_when_deltas(self):
        first, second, third = (in_seconds(hours * HOUR) for hours in (1, 2, 3))
        self.link.push([event("kept", first), event("changed", second), event("deleted", third)])
        self.link.push([deletion_notice("deleted"), deletion_notice("unknown"),
                        event("added", in_seconds(4 * HOUR)),
                        deletion_notice("changed"), event("changed", in_seconds(5 * HOUR), title="new")],
                       delta=True)
        self.assertEqual([(row["uid"], row["title"]) for row in self.link.pending()],
                         [("kept", "kept"), ("added", "added"), ("changed", "new")])

    def test_skip_what_is_a_deletion_notice_when_full(self):
        self.link.push([event("a", in_seconds(HOUR)), deletion_notice("a"),
                        {**event("b", in_seconds(HOUR)), "del": False}])
        self.assertEqual(self.link.pending_uids(), ["a"])

    def test_keep_a_second_record_that_comes_without_a_notice(self):
        self.link.push([event("a", in_seconds(HOUR))])
        self.link.push([event("a", in_seconds(2 * HOUR))], delta=True)
        self.assertEqual(self.link.pending_uids(), ["a", "a"])

    def test_are_taken_in_the_order_in_which_they_were_sent(self):
        soon = in_seconds(HOUR)
        many = [event(f"old {number}", soon) for number in range(1000)]
        self.link.send("AlarmsUpdated", batch(many))
        self.link.send("AlarmsUpdated", batch([event("a", soon), event("b", in_seconds(2 * HOUR))]))
        for number in range(200):
            uid = f"c{number % 2}"
            self.link.send("AlarmsUpdated", batch([deletion_notice(uid), event(uid, soon)], True))
        self.link.send("AlarmsUpdated", batch([deletion_notice("c1"), deletion_notice("a")], True))
        self.assertEqual(self.link.pending_uids(), ["c0", "b"])

    def test_are_taken_in_that_order_in_either_form(self):
        soon = in_seconds(HOUR)
        many = property_list([event(f"old {number}", soon) for number in range(1000)])
        with sealed_file(many) as file:
            self.link.push_file(file.fileno())
        self.link.send("AlarmsUpdated", batch([event("bus", soon)]))
        with sealed_file(property_list([event("file", in_seconds(2 * HOUR))])) as file:
            self.link.push_file(file.fileno(), delta=True)
        self.link.send("AlarmsUpdated", batch([deletion_notice("bus")], True))
        self.assertEqual(self.link.pending_uids(), ["file"])

    def test_give_the_same_rows_in_either_form(self):
        records = [event("e1", in_seconds(HOUR), reminder("r1", -60), reminder("r2", -0.5, kind=1),
                         absolute_reminder("r3", in_seconds(1800), kind=4), title="Grüße 👋"),
                   event("e2", in_seconds(3 * DAY), absolute_reminder("r4", in_seconds(2 * DAY))),
                   {"uid": "e3", "title": "undated", "type": 1, "priority": 3,
                    "rem": [absolute_reminder("r5", in_seconds(DAY))]}]
        self.link.push(records)
        by_bus = self.link.pending()
        with sealed_file(property_list(records)) as file:
            self.link.push_file(file.fileno())
        self.assertEqual(self.link.pending(), by_bus)
        self.assertEqual([row["reminderUid"] for row in by_bus], ["r3", "r1", "r2", "r5", "r4"])


class Alarms(SystemTest):
    """Which alarms an occurrence has, and when."""

    def test_are_those_still_to_come_within_two_weeks(self):
        self.start_agent()
        start = in_seconds(DAY)
        reminders = {"at start": reminder("r"), "before": reminder("r", -HOUR),
                     "past": reminder("r", -2 * DAY), "too far": reminder("r", 14 * DAY),
                     "just near enough": reminder("r", 13 * DAY - 60),
                     "acknowledged": reminder("r", ack=Date(start.seconds + 1)),
                     "acknowledged when due": reminder("r", ack=start),
                     "no action": reminder("r", kind=3), "near a place": reminder("r", kind=10),
                     "absolute": absolute_reminder("r", in_seconds(HOUR), rel=7.0),
                     "near a place, at a time": absolute_reminder("r", in_seconds(2 * HOUR), kind=10),
                     "no type, no time": {"uid": "r"}}
        self.link.push([event(name, start, entry) for name, entry in reminders.items()])
        self.assertEqual(sorted(self.link.pending_uids()),
                         sorted(["at start", "before", "just near enough", "acknowledged when due",
                                 "absolute", "near a place, at a time", "no type, no time"]))

    def test_follow_the_wall_clock_of_the_zone_when_all_day_or_floating(self):
        for zone in ("Pacific/Chatham", "America/St_Johns", "Asia/Kathmandu", "UTC"):
            with self.subTest(zone):
                environment = {**self.session.environment, "TZ": zone}
                agent = self.start_agent(environment=environment)
                noon = self.wall_clock_in_utc(zone, days=3, hour=12)
                self.link.push([event("all day", noon, reminder("r", -900), allDay=True),
                                event("floating", noon, reminder("r", -900), floating=True),
                                event("timed", noon, reminder("r", -900))])
                fires = {row["uid"]: row["fireDate"][0] for row in self.link.pending()}
                self.assertEqual(fires, {
                    "all day": self.moment_in(zone, noon, hour=0) - 900,
                    "floating": self.moment_in(zone, noon, hour=12) - 900,
                    "timed": noon.seconds - 900})
                self.assertEqual(agent.ask_to_end(), 0)

    @staticmethod
    def wall_clock_in_utc(zone, days, hour):
        today = datetime.datetime.now(zoneinfo.ZoneInfo(zone)).date()
        wall_clock = datetime.datetime.combine(today + datetime.timedelta(days), datetime.time(hour))
        return Date((wall_clock - REFERENCE_DATE).total_seconds())

    @staticmethod
    def moment_in(zone, wall_clock, hour):
        """Seconds since 2001, by Python's zone data."""
        day = (REFERENCE_DATE + datetime.timedelta(seconds=wall_clock.seconds)).replace(hour=hour)
        reference = REFERENCE_DATE.replace(tzinfo=datetime.timezone.utc)
        return (day.replace(tzinfo=zoneinfo.ZoneInfo(zone)) - reference).total_seconds()


if __name__ == "__main__":
    unittest.main()
