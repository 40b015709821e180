"""Where the alarm window appears on a desktop, and that it leaves other programs the keyboard."""
import os
import unittest

from support.alarm_window import AlarmWindowTest, TypingWindow
from support.notification_test import soon
from support.values import event, now_seconds

FOCUS_DELAY_SECONDS = 3.2
ALL_DESKTOPS = "4294967295"


class TheKeyboard(AlarmWindowTest):
    def setUp(self):
        super().setUp()
        self.other = TypingWindow(self.session, os.environ["PLENZO_TYPING_TOOL"])
        self.addCleanup(self.other.close)
        self.wait_until(self.other.is_active, "the other window has the keyboard")

    def type(self, text):
        self.screen.xdotool("type", "--delay", "5", text)

    def test_stays_where_it_is_while_alarms_appear(self):
        typed = ""
        for count, uid in enumerate("abcde", start=1):
            self.link.push([event(uid, soon())], delta=True)
            while len(self.link.displayed()) < count or not self.window.is_visible():
                self.type("nothing is lost ")
                typed += "nothing is lost "
            self.type("and all comes in order. ")
            typed += "and all comes in order. "
        self.wait_until(lambda: self.other.text() == typed,
                        lambda: f"{typed!r} is typed; now {self.other.text()!r}")
        self.assertEqual(self.other.states(), ["active"])
        self.assertFalse(self.window.is_active())
        self.assertEqual(self.host.heard(), [])

    def test_stays_where_it_is_while_a_minimized_window_comes_back(self):
        self.add_events("a")
        before = self.window.frame()[:3]
        self.screen.xdotool("windowminimize", self.window.identifier())
        self.wait_until(lambda: not self.window.is_visible(), "the window is minimized")
        self.add_events("b")
        self.wait_until(lambda: self.window.frame()[:3] == before, "the window is at its place again")
        self.wait_until(lambda: "_NET_WM_STATE_ABOVE" in self.window.property("_NET_WM_STATE"),
                        "the window is above the others")
        self.type("on")
        self.wait_until(lambda: self.other.text() == "on", "the user goes on typing")
        self.assertEqual(self.other.states(), ["active"])
        self.window.click_row(0)
        self.window.click("dismissButton")
        self.wait_for_rows("b")

    def test_goes_to_the_window_after_a_while_when_the_settings_say_so(self):
        self.link.set_preferences({"alarmsTakeFocus": True})
        due = soon()
        self.link.push([event("a", due)], delta=True)
        self.wait_until(self.window.is_visible, "the window")
        self.wait_until(lambda: not self.other.is_active(), "the other window has lost the keyboard")
        self.assertGreaterEqual(now_seconds() - due.seconds, FOCUS_DELAY_SECONDS)
        self.wait_until(self.window.is_active, "the alarm window has the keyboard")
        self.window.press("ctrl+d")
        self.wait_for_commands("acknowledge/a-at-start")

    def test_comes_back_when_the_last_alarm_is_dealt_with(self):
        self.add_events("a", "b")
        self.window.activate()
        self.window.press("ctrl+d")
        self.wait_for_rows("a")
        self.assertFalse(self.other.is_active())
        self.window.press("ctrl+d")
        self.wait_for_rows()
        self.wait_until(self.other.is_active, "the other window has the keyboard again")
        self.type("thanks")
        self.wait_until(lambda: self.other.text() == "thanks", "the user goes on typing")


class ThePlaceOfTheWindow(AlarmWindowTest):
    WIDTH, HEIGHT = 1000, 800

    def lies_on_the_screen(self, left=0, right=WIDTH):
        """With its title bar, at which it can be moved."""
        x, y, width, height = self.window.frame()
        return (x >= left and x + width <= right
                and y >= self.window.title_bar_height() and y + height <= self.HEIGHT)

    def dismiss_all(self):
        self.window.activate_from_outside()
        self.window.press("ctrl+shift+d")
        self.wait_for_rows()

    def test_is_above_the_others_on_all_workspaces_and_in_no_task_bar(self):
        for uid in ("first", "again"):
            self.add_events(uid)
            self.wait_until(lambda: self.window.property("_NET_WM_DESKTOP").endswith(ALL_DESKTOPS),
                            lambda: f"on all workspaces; now {self.window.property('_NET_WM_DESKTOP')}")
            states = ("_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER")
            self.wait_until(lambda: all(state in self.window.property("_NET_WM_STATE") for state in states),
                            lambda: f"{states}; now {self.window.property('_NET_WM_STATE')}")
            self.dismiss_all()

    def test_keeps_its_upper_edge_as_it_grows(self):
        self.add_events("a")
        before = self.window.frame()
        self.add_events("b", "c", "d", "e", "f", "g")
        self.assertEqual(self.window.frame()[:3], before[:3])
        self.assertEqual(self.window.frame()[3], self.window.height_of_rows(5))

    def test_grows_upwards_where_there_is_no_room_below(self):
        self.add_events("a")
        self.window.move(200, self.HEIGHT - 150)
        self.add_events("b", "c", "d", "e")
        self.wait_until(self.lies_on_the_screen, lambda: f"all on the screen; now {self.window.frame()}")

    def test_stays_where_the_user_has_put_it(self):
        self.add_events("a")
        self.window.move(123, 234)
        before = self.window.frame()
        self.dismiss_all()
        self.add_events("b")
        self.wait_until(lambda: self.window.frame() == before,
                        lambda: f"{before}; now {self.window.frame()}")

    def test_is_on_the_screen_again_when_it_was_moved_off_it(self):
        for x, y in ((-300, 100), (900, 300), (300, 760), (200, -20)):
            self.add_events("a")
            self.window.move(x, y)
            self.dismiss_all()
            self.add_events("b")
            self.wait_until(self.lies_on_the_screen,
                            lambda: f"all on the screen after {x}, {y}; now {self.window.frame()}")
            self.dismiss_all()

    def test_is_on_the_screen_where_the_mouse_is(self):
        half = self.WIDTH // 2
        self.screen.xrandr("--setmonitor", "left", f"{half}/200x{self.HEIGHT}/200+0+0", "screen")
        self.screen.xrandr("--setmonitor", "right", f"{half}/200x{self.HEIGHT}/200+{half}+0", "none")
        for x, left, right in ((100, 0, half), (half + 100, half, self.WIDTH)):
            self.screen.xdotool("mousemove", x, 700)
            self.add_events("a")
            self.wait_until(lambda: self.lies_on_the_screen(left, right),
                            lambda: f"between {left} and {right}; now {self.window.frame()}")
            self.dismiss_all()


if __name__ == "__main__":
    unittest.main()
