"""The whole way of an alarm on a real desktop: a screen, the notification server dunst, and the host
as the default program of its scheme."""
import unittest

from support.host_commands import HostCommands
from support.notification_test import NOTIFYING, soon
from support.real_desktop import Dunst, Screen, skip_without
from support.system_test import SystemTest
from support.values import absolute_reminder, deletion_notice, event, in_seconds, now_seconds, reminder


class ARealServer(SystemTest):
    def setUp(self):
        skip_without("Xvfb", "dunst", "xdotool")
        super().setUp()
        screen = Screen(self.session)
        self.addCleanup(screen.close)
        self.screen = screen
        self.host = HostCommands(self.session)
        self.dunst = self.start_server()
        self.start_agent()
        self.link.set_preferences(NOTIFYING)

    def start_server(self):
        server = Dunst(self.session, self.screen, self.session.connect())
        self.addCleanup(server.kill)
        return server

    def show(self, *records):
        """Brings all of them on the screen, and waits until the agent knows."""
        self.link.push(list(records), delta=True)
        self.dunst.wait_for_count(len(records))
        self.wait_until(lambda: [row["shown"] for row in self.link.delivered()] == [True] * len(records),
                        "all are known to be shown")

    def wait_for_urls(self, *urls):
        self.wait_until(lambda: self.host.urls() == sorted(urls), f"{urls} heard; now {self.host.urls()}")

    def check_that_nothing_is_left(self):
        self.dunst.wait_for_count(0)
        self.wait_until(lambda: self.link.delivered() == [], "nothing is delivered any more")

    def test_shows_an_alarm_whose_closing_acknowledges_it(self):
        self.show(event("tea", soon(), title="<b>Tea</b> & cake", location="Room <4>"))
        self.assertEqual(self.host.urls(), [])
        self.dunst.close_last()
        self.wait_for_urls("plenzoevent://acknowledge/tea-at-start")
        self.check_that_nothing_is_left()
        (program, title, body), = self.dunst.past()
        self.assertEqual((program, title), ("Plenzo Alarm", "<b>Tea</b> & cake"))
        self.assertRegex(body, r"\ARoom &lt;4&gt;\nToday at .+\Z")

    def test_hands_over_a_click_as_showing_and_acknowledging(self):
        self.show(event("tea/4%20o'clock", soon(), reminder("$(r)&1")))
        self.dunst.click()
        self.wait_for_urls("plenzoevent://info/tea/4%20o'clock", "plenzoevent://acknowledge/$(r)&1")
        self.check_that_nothing_is_left()

    def test_hands_over_the_default_action_of_the_keyboard_like_a_click(self):
        self.show(event("tea", soon()))
        self.dunst.invoke_default_action()
        self.wait_for_urls("plenzoevent://info/tea", "plenzoevent://acknowledge/tea-at-start")
        self.check_that_nothing_is_left()

    def test_hands_over_the_other_button_of_the_mouse_as_acknowledging(self):
        self.show(event("tea", soon()))
        self.dunst.click(button=3)
        self.wait_for_urls("plenzoevent://acknowledge/tea-at-start")
        self.check_that_nothing_is_left()

    def test_offers_to_snooze_until_before_the_start(self):
        self.link.set_preferences({"alarmsSnoozeSeconds": -600})
        start = in_seconds(86400)
        self.show(event("tea", start, absolute_reminder("r", soon())))
        self.dunst.choose("Snooze")
        self.wait_for_urls(f"plenzoevent://snooze/r/{int(start.seconds) - 600}")
        self.check_that_nothing_is_left()

    def test_offers_to_snooze_from_now(self):
        self.show(event("tea", soon()))
        before = now_seconds()
        self.dunst.choose("Snooze")
        self.wait_until(self.host.urls, "a command")
        command, until = self.host.urls()[0].rsplit("/", 1)
        self.assertEqual(command, "plenzoevent://snooze/tea-at-start")
        self.assertTrue(int(before) <= int(until) - 300 <= now_seconds())
        self.check_that_nothing_is_left()

    def test_lets_go_of_what_the_host_deletes_without_an_answer(self):
        self.show(event("deleted", soon()), event("kept", soon(later_by=0.2)))
        self.link.push([deletion_notice("deleted")], delta=True)
        self.dunst.wait_for_count(1)
        self.dunst.close_last()
        self.wait_for_urls("plenzoevent://acknowledge/kept-at-start")
        self.check_that_nothing_is_left()

    def test_that_is_killed_and_started_again_shows_what_is_unanswered(self):
        self.show(event("answered", soon()), event("open", soon(later_by=0.2)))
        self.link.push([deletion_notice("answered")], delta=True)
        self.dunst.wait_for_count(1)
        self.dunst.kill()
        self.link.push([event("meanwhile", soon())], delta=True)
        self.wait_until(lambda: len(self.link.delivered()) == 2, "an alarm without a server")
        self.dunst = self.start_server()
        self.dunst.wait_for_count(2)
        self.dunst.close_all()
        self.wait_for_urls("plenzoevent://acknowledge/open-at-start",
                           "plenzoevent://acknowledge/meanwhile-at-start")
        self.check_that_nothing_is_left()
        self.assertEqual(sorted(title for _, title, _ in self.dunst.past()), ["meanwhile", "open"])


if __name__ == "__main__":
    unittest.main()
