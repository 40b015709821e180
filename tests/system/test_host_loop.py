"""The whole loop as its user has it: a calendar file, the alarm window, and what the file says then."""
import datetime
import re
import unittest

from support.alarm_window import AlarmWindow
from support.calendar_host import CalendarHost, make_default_handler
from support.real_desktop import Screen, WindowManager, skip_without
from support.system_test import SystemTest

_FORM = "%Y%m%dT%H%M%SZ"
_EVENT = """BEGIN:VCALENDAR
VERSION:2.0
PRODID:-//test//EN
BEGIN:VEVENT
UID:tea
DTSTAMP:20260101T000000Z
DTSTART:{start}
SUMMARY:Tea
BEGIN:VALARM
ACTION:DISPLAY
DESCRIPTION:Tea
TRIGGER;VALUE=DATE-TIME:{alarm}
END:VALARM
END:VEVENT
END:VCALENDAR
"""
ALARM_SECONDS = 3
# A minute before the start is some seconds after the alarm.
SNOOZE = "1 min before start"
START_SECONDS = ALARM_SECONDS + 60 + 5


class TheWholeLoop(SystemTest):
    def setUp(self):
        skip_without("Xvfb", "openbox", "xdotool", "xprop", "xrandr")
        super().setUp()
        self.screen = Screen(self.session, size="1000x800")
        self.addCleanup(self.screen.close)
        self.addCleanup(WindowManager(self.session).close)
        self.window = AlarmWindow(self.screen)
        make_default_handler(self.session)
        self.file = self.session.folder / "tea.ics"
        configuration = self.session.folder / "config" / "plenzohost"
        configuration.mkdir()
        (configuration / "config.toml").write_text(
            f'[[calendar]]\npath = "{self.file}"\n[preferences]\nsnooze = "{SNOOZE}"\n')

    def start_host(self):
        self.calendar_host = CalendarHost(self.session, self.link.connection)
        self.addCleanup(self.end_host)

    def end_host(self):
        if self.calendar_host.process.returncode is None:
            self.assertEqual(self.calendar_host.end(), 0)
        self.assertEqual(self.calendar_host.errors(), "")

    def wait_for_text(self, pattern):
        """What the pattern's group found."""
        self.wait_until(lambda: re.search(pattern, self.file.read_text()),
                        lambda: f"{pattern} in {self.file.read_text()}")
        return re.search(pattern, self.file.read_text()).group(1)

    def wait_for_window(self, is_there):
        self.wait_until(lambda: self.window.is_visible() == is_there, f"window {is_there}")

    def test_of_an_alarm_that_is_snoozed_and_dismissed(self):
        now = datetime.datetime.now(datetime.timezone.utc)
        self.file.write_text(_EVENT.format(
            start=(now + datetime.timedelta(seconds=START_SECONDS)).strftime(_FORM),
            alarm=(now + datetime.timedelta(seconds=ALARM_SECONDS)).strftime(_FORM)))
        agent = self.start_agent()
        self.start_host()

        self.wait_for_window(True)
        self.window.click("snoozeButton")
        self.wait_for_window(False)
        until = self.wait_for_text(r"TRIGGER;VALUE=DATE-TIME:(\w+)\nUID:.*\nRELATED-TO;RELTYPE=SNOOZE")
        self.wait_until(lambda: len(self.link.pending()) == 1, "the snoozed alarm")
        self.assertEqual(datetime.datetime.fromtimestamp(
            self.link.pending()[0]["fireDate"][0] + 978307200, datetime.timezone.utc).strftime(_FORM),
            until)

        self.wait_for_window(True)
        self.assertGreaterEqual(datetime.datetime.now(datetime.timezone.utc).strftime(_FORM), until)
        self.window.click("dismissButton")
        self.wait_for_window(False)
        acknowledged = self.wait_for_text(r"ACKNOWLEDGED:(\w+)")
        self.assertGreaterEqual(acknowledged, until)
        self.assertNotIn("SNOOZE", self.file.read_text())

        text = self.file.read_text()
        self.assertEqual(agent.ask_to_end(), 0)
        self.end_host()
        self.start_agent()
        self.start_host()
        self.assertIn("1 event handed", self.calendar_host.process.stdout.readline())
        self.assertEqual(self.link.pending(), [])
        self.assertEqual(self.link.displayed(), [])
        self.assertEqual(self.file.read_text(), text)


if __name__ == "__main__":
    unittest.main()
