"""The command line, apart from running the agent itself."""
import datetime
import os
import re
import unittest
import zoneinfo

from support.system_test import SystemTest
from support.values import REFERENCE_DATE, Date, absolute_reminder, event, in_seconds, reminder


def local_text(moment, zone):
    utc = (REFERENCE_DATE + datetime.timedelta(seconds=moment.seconds)).replace(tzinfo=datetime.timezone.utc)
    return utc.astimezone(zoneinfo.ZoneInfo(zone)).strftime("%Y-%m-%d %H:%M:%S")


class Information(SystemTest):
    def test_needs_no_bus(self):
        self.session.stop_bus()
        texts = {"--version": rf"\Aplenzoalarm {re.escape(os.environ['PLENZO_VERSION'])}t\n\Z",
                 "--help": r"(?s)--help.*--list.*--version|--help.*--version.*--list"}
        for option, text in texts.items():
            with self.subTest(option):
                run = self.run_command(option)
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                self.assertRegex(run.stdout, text)

    def test_is_refused_for_what_is_no_option(self):
        for options in (["--unknown"], ["-x"], ["surplus"], ["--list", "surplus"], ["--list=3"]):
            with self.subTest(options):
                run = self.run_command(*options)
                self.assertGreater(run.returncode, 0)
                self.assertEqual(run.stdout, "")
                self.assertNotEqual(run.stderr, "")
        self.assertNotIn("name taken", self.announcements.heard)


class TheList(SystemTest):
    def test_says_when_no_agent_runs_and_starts_none(self):
        self.session.offer_activation()
        run = self.run_command("--list")
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertRegex(run.stderr, r"\Aplenzoalarm: .*not running.*\n\Z")
        self.assertNotIn("name taken", self.announcements.heard)

    def test_says_when_there_is_no_bus(self):
        self.session.stop_bus()
        run = self.run_command("--list")
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertRegex(run.stderr, r"\Aplenzoalarm: .+\n\Z")

    def test_is_a_table_in_the_order_of_the_queue(self):
        self.start_agent()
        first, second, third = in_seconds(600), in_seconds(3600), in_seconds(86400)
        self.link.push([event("e-3", third, reminder("r3", kind=1), title="Größe prüfen"),
                        event("e-1", first, reminder("r1"), title="Tea"),
                        event("e-2", second, absolute_reminder("r2", second, kind=4), title="Report")])
        run = self.run_command("--list")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(run.stdout.splitlines(),
                         ["FIRES (Pacific/Chatham)  ACTION   TITLE         UID",
                          f"{local_text(first, 'Pacific/Chatham')}      display  Tea           e-1",
                          f"{local_text(second, 'Pacific/Chatham')}      open     Report        e-2",
                          f"{local_text(third, 'Pacific/Chatham')}      sound    Größe prüfen  e-3"])

    def test_neither_breaks_over_a_title_nor_lets_it_steer_the_terminal(self):
        self.start_agent()
        hostile = "a\nb\tc\x1b[2Jd\x7fe\u009b31mf\u2028g\u202eh"
        self.link.push([event("e\n1", in_seconds(600), reminder("r1"), title=hostile)])
        run = self.run_command("--list")
        self.assertEqual(run.returncode, 0)
        self.assertEqual(len(run.stdout.splitlines()), 2, run.stdout)
        self.assertEqual([character for character in run.stdout
                          if not character.isprintable() and character != "\n"], [])

    def test_stays_a_table_with_dates_that_no_calendar_has(self):
        self.start_agent()
        soon = in_seconds(600)
        self.link.push([event("far", soon, absolute_reminder("r1", Date(1e300))),
                        event("none", Date(float("nan")), absolute_reminder("r2", soon))])
        run = self.run_command("--list")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("none", run.stdout)

    def test_fails_when_its_output_goes_nowhere(self):
        self.start_agent()
        with open("/dev/full", "w") as full:
            process = self.session.start([os.environ["PLENZOALARM"], "--list"], stdout=full,
                                         stderr=full)
            self.assertEqual(process.wait(), 1)


if __name__ == "__main__":
    unittest.main()
