"""What the host does with the commands of the agent: in the files, and when it cannot."""
import pathlib
import subprocess
import unittest

from support.calendar_host import CalendarHost, program
from support.notification_server import NotificationServer
from support.system_test import SystemTest
from support.values import now_seconds

HOUR = 3600

_CONFIGURATION = """[[calendar]]
path = "{folder}/work.ics"
default = true

[[calendar]]
path = "{folder}/holidays.ics"
read-only = true
"""

_CALENDAR = """BEGIN:VCALENDAR\r
VERSION:2.0\r
PRODID:-//test//EN\r
X-KEPT;VALUE=TEXT:as it  stands\r
BEGIN:VEVENT\r
UID:{uid}\r
DTSTAMP:20260101T000000Z\r
DTSTART:{start}\r
SUMMARY:{uid}\r
BEGIN:VALARM\r
UID:bell\r
ACTION:DISPLAY\r
TRIGGER:-PT5M\r
END:VALARM\r
END:VEVENT\r
BEGIN:VTODO\r
UID:{uid}-todo\r
DTSTAMP:20260101T000000Z\r
DUE:{start}\r
SUMMARY:{uid} to do\r
BEGIN:VALARM\r
ACTION:DISPLAY\r
TRIGGER:-PT6M\r
END:VALARM\r
END:VTODO\r
END:VCALENDAR\r
"""


def _utc(seconds):
    """A moment of the agent's records as an iCalendar file has it."""
    date = subprocess.run(["date", "--utc", f"--date=@{int(seconds) + 978307200}", "+%Y%m%dT%H%M%SZ"],
                          check=True, capture_output=True, text=True)
    return date.stdout.strip()


class AHost(SystemTest):
    def setUp(self):
        super().setUp()
        self.folder = self.session.folder / "calendars"
        self.folder.mkdir()
        self.work = self.folder / "work.ics"
        self.start = round(now_seconds()) + 24 * HOUR
        self.work.write_bytes(_CALENDAR.format(uid="work", start=_utc(self.start)).encode())
        (self.folder / "holidays.ics").write_bytes(
            _CALENDAR.format(uid="holiday", start=_utc(self.start)).encode())
        configuration = self.session.folder / "config" / "plenzohost"
        configuration.mkdir()
        (configuration / "config.toml").write_text(_CONFIGURATION.format(folder=self.folder))
        self.server = NotificationServer(self.session.connect())
        self.start_agent()
        self.host = self.start_host()
        self.wait_for_rows("work", "work to do", "holiday", "holiday to do")

    def start_host(self, *arguments, **options):
        host = CalendarHost(self.session, self.link.connection, *arguments, **options)
        self.addCleanup(lambda: host.process.returncode is None and self.assertEqual(host.end(), 0))
        return host

    def rows(self):
        return {row["title"]: row for row in self.link.pending()}

    def wait_for_rows(self, *titles):
        self.wait_until(lambda: sorted(row["title"] for row in self.link.pending()) == sorted(titles),
                        lambda: f"{titles} pending; now {sorted(self.rows())}")

    def text(self):
        return self.work.read_bytes().decode()

    def check_told(self, *parts):
        """On standard error, and by a notification."""
        self.wait_until(lambda: self.server.summaries(), "a notification")
        shown = self.server.delivered[-1].summary + self.server.delivered[-1].body
        for part in parts:
            self.assertIn(part, shown)
            self.assertIn(part, self.host.errors())

    def test_writes_a_snooze_that_comes_back_as_an_alarm(self):
        until = self.start - 2 * HOUR
        self.host.open(f"plenzoevent://snooze/{self.rows()['work']['reminderUid']}/{until}")
        self.assertIn(f"TRIGGER;VALUE=DATE-TIME:{_utc(until)}\r\n", self.text())
        self.assertIn("X-KEPT;VALUE=TEXT:as it  stands\r\n", self.text())
        self.wait_until(lambda: self.rows()["work"]["fireDate"][0] == until, "the snoozed alarm")

    def test_acknowledges_and_completes(self):
        self.host.open(f"plenzoevent://acknowledge/{self.rows()['work']['reminderUid']}",
                       f"plenzoevent://edit/{self.rows()['work to do']['uid']}/completed/YES")
        self.wait_for_rows("holiday", "holiday to do")
        for line in ("ACKNOWLEDGED:", "STATUS:COMPLETED\r\n", "PERCENT-COMPLETE:100\r\n", "COMPLETED:"):
            self.assertIn(line, self.text())

    def test_makes_items_of_quick_entries(self):
        self.host.open("plenzoevent://new/Lunch%20with%20Ana%20tomorrow%20at%2012%3A30",
                       "plenzoevent://new/todo%20pay%20rent%20friday")
        self.assertIn("SUMMARY:Lunch with Ana\r\n", self.text())
        self.assertIn("T123000\r\n", self.text())
        self.assertIn("SUMMARY:pay rent\r\n", self.text())
        self.assertEqual(self.text().count("BEGIN:VTODO"), 2)

    def test_gets_the_urls_of_a_second_start(self):
        second = subprocess.run([program(), "plenzoevent://new/Tea"], env=self.session.environment,
                                cwd=self.session.folder, capture_output=True, text=True, check=True)
        self.assertEqual(second.stdout + second.stderr, "")
        self.assertIn("SUMMARY:Tea\r\n", self.text())
        third = subprocess.run([program()], env=self.session.environment, cwd=self.session.folder,
                               capture_output=True, text=True, check=False)
        self.assertEqual(third.returncode, 1)
        self.assertIn("already running", third.stderr)

    def test_carries_out_the_url_that_it_is_started_with(self):
        self.host.end()
        self.start_host("plenzoevent://new/Tea")
        self.wait_until(lambda: "SUMMARY:Tea\r\n" in self.text(), "the new item")

    def test_tells_what_a_read_only_calendar_cannot_take(self):
        before = (self.folder / "holidays.ics").read_bytes()
        self.host.open(f"plenzoevent://edit/{self.rows()['holiday to do']['uid']}/completed/YES")
        self.check_told("could not be completed", "\"holidays\" is read-only")
        self.assertEqual((self.folder / "holidays.ics").read_bytes(), before)

    def test_snoozes_alarms_of_a_read_only_calendar_beside_it(self):
        """Also when it is downloaded anew, and in the next run."""
        holidays = self.folder / "holidays.ics"
        before = holidays.read_bytes()
        until = self.start - 2 * HOUR
        self.host.open(f"plenzoevent://snooze/{self.rows()['holiday']['reminderUid']}/{until}")
        self.wait_until(lambda: self.rows()["holiday"]["fireDate"][0] == until, "the snoozed alarm")
        self.assertEqual(holidays.read_bytes(), before)
        beside = self.folder / "download"
        beside.write_bytes(before.replace(b"SUMMARY:holiday\r\n", b"SUMMARY:free\r\n"))
        beside.rename(holidays)
        self.wait_until(lambda: self.rows().get("free", {}).get("fireDate") == (until,), "the new text")
        self.host.end()
        self.host = self.start_host()
        self.wait_for_rows("work", "work to do", "free", "holiday to do")
        self.assertEqual(self.rows()["free"]["fireDate"][0], until)
        self.host.open(f"plenzoevent://acknowledge/{self.rows()['free']['reminderUid']}")
        self.wait_for_rows("work", "work to do", "holiday to do")

    def test_says_what_is_no_command(self):
        before = self.text()
        for url in ("plenzoevent://", "plenzoevent://snooze/x", "plenzoevent://new/%20", "http://a",
                    "plenzoevent://edit/x/title/YES", "plenzoevent://new/" + "x" * 70000):
            self.host.open(url)
        self.assertEqual(self.host.errors().count("no command: "), 6)
        self.assertEqual(self.text(), before)
        self.assertEqual(self.server.summaries(), [])

    def test_keeps_a_command_over_its_own_end_until_the_calendar_is_there_again(self):
        url = f"plenzoevent://acknowledge/{self.rows()['work']['reminderUid']}"
        away = self.folder / "away"
        self.work.rename(away)
        self.wait_for_rows("holiday", "holiday to do")
        self.host.open(url)
        self.check_told("kept and tried again")
        told = len(self.server.summaries())
        self.host.kill()
        self.host = self.start_host()
        away.rename(self.work)
        self.wait_until(lambda: "ACKNOWLEDGED:" in self.text(), "the acknowledgement")
        self.wait_for_rows("work to do", "holiday", "holiday to do")
        self.assertLessEqual(len(self.server.summaries()), 2 * told)

    def test_ends_nothing_that_it_opened(self):
        """The program lives on, and can be ended by others."""
        notes = self.session.folder / "viewer"
        applications = self.session.folder / "data" / "applications"
        applications.mkdir()
        viewer = self.session.folder / "view"
        viewer.write_text(f"#!/bin/sh\ngrep SigBlk /proc/self/status >'{notes}'\n"
                          f"echo \"$1 $XDG_ACTIVATION_TOKEN\" >>'{notes}'\n")
        viewer.chmod(0o700)
        (applications / "viewer.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=V\nExec={viewer} %f\n"
            "MimeType=text/calendar;text/html;text/plain;\n")
        (self.session.folder / "config" / "mimeapps.list").write_text(
            "[Default Applications]\ntext/calendar=viewer.desktop\ntext/html=viewer.desktop\n"
            "text/plain=viewer.desktop\n")
        uid = self.rows()["work"]["uid"]
        for url, suffix in ((f"show/{uid}", "/work.ics"), (f"info/{uid}", ".html"),
                            ("prefs/general", "/config.toml")):
            with self.subTest(url):
                notes.unlink(missing_ok=True)
                self.host.open("plenzoevent://" + url)
                self.wait_until(lambda: notes.exists() and notes.read_text().count("\n") == 2,
                                "the viewer")
                blocked, path = notes.read_text().splitlines()
                self.assertEqual(int(blocked.split()[1], 16), 0)
                self.assertTrue(path.split()[0].endswith(suffix), path)
                self.assertTrue(pathlib.Path(path.split()[0]).exists())

    def test_shows_an_item_in_a_notification_where_no_program_does(self):
        """Whatever programs the machine has."""
        self.assertEqual(self.host.end(), 0)
        self.host = self.start_host(
            environment={**self.session.environment, "XDG_DATA_DIRS": str(self.session.folder / "none")})
        self.wait_for_rows("work", "work to do", "holiday", "holiday to do")
        self.host.open(f"plenzoevent://info/{self.rows()['work']['uid']}")
        self.wait_until(lambda: self.server.summaries() == ["work"], "the item")
        self.assertIn("work", self.server.delivered[0].body)


if __name__ == "__main__":
    unittest.main()
