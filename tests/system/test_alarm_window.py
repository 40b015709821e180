"""What the alarm window hands over to the host, for the mouse and the keyboard of a user."""
import math
import unittest

from support.alarm_window import AlarmWindowTest
from support.notification_test import soon
from support.values import absolute_reminder, deletion_notice, event, in_seconds, now_seconds

TODO = 1
MINUTE, HOUR, DAY = 60, 3600, 86400


def todo(uid, due, **more):
    return event(uid, due, type=TODO, **more)


class TheAlarmWindow(AlarmWindowTest):
    def check_snoozed_for(self, seconds, *uids, by):
        """That `by` snoozes them all to one moment, so many seconds after it was called."""
        before = math.floor(now_seconds())
        by()
        self.wait_until(lambda: len(self.host.heard()) == len(uids), "the commands of a snooze")
        after = now_seconds()
        moments = {command.rsplit("/", 1)[1] for command in self.host.heard()}
        self.assertEqual(len(moments), 1, self.host.heard())
        moment = int(moments.pop())
        self.assertTrue(before <= moment - seconds <= after, f"{before} {moment - seconds} {after}")
        self.wait_for_commands(*(f"snooze/{uid}-at-start/{moment}" for uid in uids))

    def snooze_by_key(self):
        self.window.press("ctrl+s")

    def test_snoozes_by_its_button_from_the_click(self):
        self.add_events("a", "b")
        self.check_snoozed_for(5 * MINUTE, "b", by=lambda: self.window.click("snoozeButton"))
        self.wait_for_rows("a")

    def test_snoozes_all_with_shift(self):
        self.add_events("a", "b", "c")
        self.window.activate()
        self.check_snoozed_for(
            5 * MINUTE, "a", "b", "c",
            by=lambda: self.window.click_while_held("shift", self.window.click, "snoozeButton"))
        self.wait_for_rows()

    def test_snoozes_until_before_the_start(self):
        self.link.set_preferences({"alarmsSnoozeSeconds": -10 * MINUTE})
        start = in_seconds(DAY)
        self.add(event("a", start, absolute_reminder("r", soon())))
        self.window.click("snoozeButton")
        self.wait_for_commands(f"snooze/r/{int(start.seconds) - 10 * MINUTE}")
        self.wait_for_rows()

    def test_snoozes_each_until_its_start_without_an_amount(self):
        starts = [in_seconds(HOUR), in_seconds(DAY)]
        due = soon()
        self.add(event("a", starts[0], absolute_reminder("r", due)),
                 event("b", starts[1], absolute_reminder("s", due)))
        self.window.activate()
        self.window.press("BackSpace", "ctrl+shift+s")
        self.wait_for_commands(f"snooze/r/{int(starts[0].seconds)}", f"snooze/s/{int(starts[1].seconds)}")

    def test_dismisses_one_of_three(self):
        self.add_events("a", "b", "c")
        self.window.click_row(1)
        self.window.click("dismissButton")
        self.wait_for_commands("acknowledge/b-at-start")
        self.wait_for_rows("a", "c")

    def test_snoozes_and_dismisses_by_keys(self):
        self.add_events("a", "b", "c")
        self.window.activate()
        self.window.press("ctrl+d")
        self.wait_for_commands("acknowledge/c-at-start")
        self.window.press("ctrl+shift+d")
        self.wait_for_commands("acknowledge/a-at-start", "acknowledge/b-at-start", "acknowledge/c-at-start")
        self.wait_for_rows()

    def test_dismisses_with_return(self):
        self.link.set_preferences({"alarmsSnoozeDefault": False})
        self.add_events("a", "b")
        self.window.activate()
        self.window.press("Return")
        self.wait_for_commands("acknowledge/b-at-start")
        self.wait_for_rows("a")
        self.window.click_row(0)
        self.window.press("KP_Enter")
        self.wait_for_commands("acknowledge/a-at-start", "acknowledge/b-at-start")

    def test_snoozes_with_return_when_the_settings_say_so(self):
        self.link.set_preferences({"alarmsSnoozeDefault": True})
        self.add_events("a", "b")
        self.window.activate()
        self.check_snoozed_for(5 * MINUTE, "b", by=lambda: self.window.press("Return"))

    def test_takes_digits_typed_into_its_list(self):
        self.add_events("a", "b")
        self.window.activate_list()
        self.window.press("1", "5")
        self.check_snoozed_for(15 * MINUTE, "a", by=self.snooze_by_key)

    def test_takes_digits_and_units_typed_into_its_field(self):
        self.add_events("a")
        self.window.activate()
        self.window.press("1", "x", "2", "h")
        self.check_snoozed_for(12 * HOUR, "a", by=self.snooze_by_key)

    def test_selects_the_amount_with_its_field(self):
        self.add_events("a")
        self.window.activate()
        self.window.press("9", "ctrl+a", "7")
        self.check_snoozed_for(7 * MINUTE, "a", by=self.snooze_by_key)

    def test_lets_the_arrow_keys_choose_the_units(self):
        self.add_events("a")
        self.window.activate()
        self.window.press("Tab", "Down", "Down")
        self.check_snoozed_for(5 * DAY, "a", by=self.snooze_by_key)

    def test_lets_the_open_list_of_units_have_its_keys(self):
        self.add_events("a")
        self.window.activate()
        self.window.press("Tab", "space")
        self.wait_until(self.window.is_list_of_units_open, "the list of units is open")
        self.window.press("Down", "Return")
        self.wait_until(lambda: not self.window.is_list_of_units_open(), "the list of units is closed")
        self.check_snoozed_for(5 * HOUR, "a", by=self.snooze_by_key)

    def test_completes_a_todo_by_its_check_box(self):
        due = soon()
        self.add(event("a", due), todo("b", due))
        self.window.click_in_row(1, "checkBox", cell="task")
        self.wait_for_commands("edit/b/completed/YES", "acknowledge/b-at-start")
        self.wait_for_rows("a")

    def test_completes_what_is_selected_by_a_key(self):
        due = soon()
        self.add(todo("a", due, completed=True), todo("b", due))
        self.window.activate()
        self.window.press("ctrl+slash")
        self.wait_for_commands("edit/b/completed/YES", "acknowledge/b-at-start")
        self.window.press("ctrl+slash")
        self.wait_for_commands("edit/a/completed/NO", "acknowledge/a-at-start",
                               "edit/b/completed/YES", "acknowledge/b-at-start")
        self.wait_for_rows()

    def test_only_dismisses_a_todo_that_cannot_be_changed(self):
        self.add(todo("a", soon(), read=True))
        self.window.click_in_row(0, "checkBox", cell="task")
        self.wait_for_rows()
        self.wait_for_commands("acknowledge/a-at-start")

    def test_shows_an_event_by_a_double_click_and_by_its_button(self):
        self.add_events("a", "b")
        self.window.click_row(0, "--repeat", "2", "--delay", "40")
        self.wait_for_commands("info/a")
        self.window.click_in_row(1, "infoButton")
        self.wait_for_commands("info/a", "show/b")
        self.window.click("dismissButton")
        self.wait_for_commands("acknowledge/a-at-start", "info/a", "show/b")
        self.wait_for_rows("b")

    def test_acknowledges_everything_when_it_is_closed(self):
        self.add_events("a", "b", "c")
        self.window.activate()
        self.window.press("alt+F4")
        self.wait_for_commands("acknowledge/a-at-start", "acknowledge/b-at-start", "acknowledge/c-at-start")
        self.wait_for_rows()

    def test_does_nothing_for_escape_and_delete(self):
        self.add_events("a", "b")
        self.window.activate()
        self.window.press("Escape")
        self.window.click_row(0)
        self.window.press("Escape", "Delete", "BackSpace", "ctrl+d")
        self.wait_for_commands("acknowledge/a-at-start")
        self.wait_for_rows("b")

    def test_selects_several_rows(self):
        self.add_events("a", "b", "c", "d", "e")
        self.window.activate_list()
        self.window.click_while_held("ctrl", self.window.click_row, 2)
        self.window.click("dismissButton")
        self.wait_for_rows("b", "d", "e")
        self.window.click_row(0)
        self.window.click_while_held("shift", self.window.click_row, 1)
        self.window.click("dismissButton")
        self.wait_for_rows("e")
        self.wait_for_commands(*(f"acknowledge/{uid}-at-start" for uid in "abcd"))

    def test_selects_all_rows_by_a_key(self):
        self.add_events("a", "b", "c")
        self.window.activate_list()
        self.window.press("ctrl+a")
        self.window.click("dismissButton")
        self.wait_for_commands(*(f"acknowledge/{uid}-at-start" for uid in "abc"))
        self.wait_for_rows()

    def test_follows_the_host_and_keeps_the_selection(self):
        self.add_events("a", "b", "c", "d")
        self.window.activate_list(row=2)
        self.link.push([deletion_notice("a")], delta=True)
        self.wait_for_rows("b", "c", "d")
        due = in_seconds(-1)
        acknowledged = event("d", due, absolute_reminder("d-at-start", due, ack=in_seconds(1)))
        self.link.push([deletion_notice("d"), acknowledged], delta=True)
        self.wait_for_rows("b", "c")
        self.window.press("ctrl+d")
        self.wait_for_commands("acknowledge/c-at-start")
        self.link.push([deletion_notice("b")], delta=True)
        self.wait_for_rows()
        self.wait_for_commands("acknowledge/c-at-start")


if __name__ == "__main__":
    unittest.main()
