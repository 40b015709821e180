"""The host over a folder of calendar files, and the agent that it feeds."""
import datetime
import os
import subprocess
import unittest

from support.system_test import SystemTest
from support.waiting import wait_for_end

_EVENT = """BEGIN:VEVENT
UID:{uid}
DTSTAMP:20260101T000000Z
DTSTART:{start}
SUMMARY:{title}
BEGIN:VALARM
ACTION:DISPLAY
TRIGGER:-PT5M
END:VALARM
END:VEVENT
"""


_TOMORROW = (datetime.datetime.now(datetime.timezone.utc)
             + datetime.timedelta(days=1)).strftime("%Y%m%dT%H%M%SZ")


def calendar(*titles):
    """Of events tomorrow, each with an alarm."""
    events = [_EVENT.format(uid=title, title=title, start=_TOMORROW) for title in titles]
    return f"BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:test\n{''.join(events)}END:VCALENDAR\n"


class AHost(SystemTest):
    def setUp(self):
        super().setUp()
        self.folder = self.session.folder / "calendars"
        (self.folder / "private").mkdir(parents=True)
        self.write("work.ics", calendar("a", "b"))
        self.agent = self.start_agent()
        self.start_host(str(self.folder))
        self.wait_for_titles("a", "b")

    def start_host(self, *arguments):
        self.host = self.session.start([os.environ["PLENZOHOST"], *arguments],
                                       stdout=subprocess.PIPE, text=True)
        self.addCleanup(self._end_host)

    def _end_host(self):
        if self.host.stdout.closed:
            return
        self.host.terminate()
        self.assertEqual(wait_for_end(self.host), 0)
        self.host.stdout.close()

    def write(self, name, text):
        """As careful programs do it: beside its place, then into it."""
        beside = self.folder / (name + ".new")
        beside.write_text(text)
        beside.rename(self.folder / name)

    def wait_for_titles(self, *titles):
        self.wait_until(lambda: sorted(row["title"] for row in self.link.pending()) == sorted(titles),
                        f"{titles} pending")

    def test_tells_the_agent_of_files_that_come_change_and_go(self):
        self.write("private/one.ics", calendar("c"))
        self.wait_for_titles("a", "b", "c")
        self.write("work.ics", calendar("a", "d"))
        self.wait_for_titles("a", "c", "d")
        (self.folder / "private" / "one.ics").unlink()
        self.wait_for_titles("a", "d")

    def test_notices_what_comes_in_a_new_folder(self):
        (self.folder / "new").mkdir()
        self.write("new/one.ics", calendar("c"))
        self.wait_for_titles("a", "b", "c")

    def test_tells_only_what_has_changed(self):
        self.write("work.ics", calendar("a", "b", "c"))
        self.wait_for_titles("a", "b", "c")
        self.assertIn("2 events handed", self.host.stdout.readline())
        self.assertIn(" 1 change handed", self.host.stdout.readline())

    def test_keeps_what_it_knows_while_a_file_is_half_written(self):
        with open(self.folder / "slow.ics", "w", encoding="utf-8") as slow:
            slow.write(calendar("slow")[:100])
            slow.flush()
            self.write("other.ics", calendar("c"))
            self.wait_for_titles("a", "b", "c")
            slow.seek(0)
            slow.write(calendar("slow"))
        self.wait_for_titles("a", "b", "c", "slow")

    def test_moves_from_one_event_in_a_file_to_several(self):
        """Two files of one event each are one calendar; other files are calendars by themselves."""
        self.write("private/one.ics", calendar("c"))
        self.write("private/two.ics", calendar("d"))
        self.wait_for_titles("a", "b", "c", "d")
        self.write("private/two.ics", calendar("d", "e"))
        self.wait_for_titles("a", "b", "c", "d", "e")
        (self.folder / "private").rename(self.folder / "renamed")
        self.write("renamed/two.ics", calendar("e"))
        self.wait_for_titles("a", "b", "c", "e")

    def test_takes_in_a_flood_of_changes(self):
        titles = [f"flood {number}" for number in range(300)]
        (self.folder / "flood").mkdir()
        for title in titles:
            self.write(f"flood/{title}.ics", calendar(title))
        self.wait_for_titles("a", "b", *titles)
        for title in titles[10:]:
            (self.folder / f"flood/{title}.ics").unlink()
        self.wait_for_titles("a", "b", *titles[:10])

    def test_notices_a_configuration_that_is_made_later(self):
        self._end_host()
        self.start_host()
        self.wait_for_titles()
        data = self.session.folder / "data" / "calendars"
        data.mkdir()
        (data / "default.ics").write_text(calendar("default"))
        self.wait_for_titles("default")
        configuration = self.session.folder / "config" / "plenzohost"
        configuration.mkdir()
        (configuration / "config.toml").write_text(f'[[calendar]]\npath = "{self.folder}"\n')
        self.wait_for_titles("a", "b")
        self.write("work.ics", calendar("a"))
        self.wait_for_titles("a")
        (configuration / "config.toml").unlink()
        self.wait_for_titles("default")

    def test_tells_everything_to_an_agent_that_starts_anew(self):
        self.agent.ask_to_end()
        self.write("private/one.ics", calendar("c"))
        self.start_agent()
        self.wait_for_titles("a", "b", "c")


if __name__ == "__main__":
    unittest.main()
