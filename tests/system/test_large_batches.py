"""Batches of the size that the link is made for: every alarm is queued, in its place."""
import os
import unittest

from gi.repository import GLib

from support.large_batches import LargeBatch, row_of
from support.memory_files import sealed_file
from support.system_test import SystemTest
from support.values import deletion_notice, event, in_seconds

# The sanitizers take their time, so a build with them gets a part of the records.
DIVISOR = int(os.environ.get("PLENZO_BATCH_DIVISOR", "1"))


class LargeBatches(SystemTest):
    def push(self, large):
        self.link.call("AlarmsUpdated",
                       GLib.Variant.new_tuple(large.as_records(), GLib.Variant("b", False)))

    def assert_queue_is_complete(self, large):
        expected, rows = large.expected_rows(), self.rows()
        self.assertEqual(len(rows), len(expected))
        differing = next((both for both in zip(rows, expected) if both[0] != both[1]), None)
        self.assertIsNone(differing)

    def rows(self):
        rows = self.link.pending_rows()
        return [row_of(rows.get_child_value(position)) for position in range(rows.n_children())]

    def test_come_in_a_file(self):
        self.start_agent()
        large = LargeBatch(100_000 // DIVISOR)
        with sealed_file(large.as_property_list()) as file:
            self.link.push_file(file.fileno())
        self.assert_queue_is_complete(large)

    def test_come_in_one_message(self):
        self.start_agent()
        large = LargeBatch(90_000 // DIVISOR)
        self.push(large)
        self.assert_queue_is_complete(large)

    def test_can_be_changed_by_deltas_and_are_replaced_as_a_whole(self):
        self.start_agent()
        large = LargeBatch(5000)
        self.push(large)
        numbers = range(0, 5000, 50)
        self.link.push([deletion_notice(f"event-{number:07}") for number in numbers], delta=True)
        deleted = {f"reminder-{number:07}" for number in numbers}
        self.assertEqual(self.rows(), [row for row in large.expected_rows()
                                       if row.reminder_uid[:len("reminder-0000000")] not in deleted])
        self.link.push([event("only", in_seconds(60))])
        self.assertEqual(self.link.pending_uids(), ["only"])

    def test_under_way_do_not_hold_the_end_up(self):
        agent = self.start_agent()
        for _ in range(3):
            self.push(LargeBatch(5000))
        self.assertEqual(agent.ask_to_end(), 0)
        self.announcements.wait_for("PlenzoAlarm Quit")

    def test_whose_answer_would_break_the_bus_are_answered_with_an_error(self):
        agent = self.start_agent()
        long = "x" * 40_000
        for number in range(20):
            self.link.push([event(f"{number}-{part}", in_seconds(3600 + number * 100 + part), title=long)
                            for part in range(100)], delta=True)
        with self.assertRaises(GLib.Error) as caught:
            self.link.pending()
        self.assertIn("org.freedesktop.DBus.Error.LimitsExceeded", str(caught.exception))
        self.assertTrue(agent.is_running())
        self.link.push([event("only", in_seconds(60))])
        self.assertEqual(self.link.pending_uids(), ["only"])


if __name__ == "__main__":
    unittest.main()
