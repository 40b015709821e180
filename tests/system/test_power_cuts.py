"""The agent is killed while it saves. The next one has all of what was saved, or nothing.

PLENZO_POWER_CUTS is the number of rounds. Every other one kills a little later than the one before,
somewhere in the whole saving; those in between kill during its shortest part, the writing."""
import collections
import os
import random
import signal
import time
import unittest

from gi.repository import GLib

from support.agent import INSPECTOR, NAME, PATH, call
from support.large_batches import LargeBatch
from support.login_manager import HELD, LoginManager
from support.memory_files import sealed_file
from support.saved_files import NAMES, SavedFiles
from support.system_test import SystemTest
from support.values import dictionaries, dictionary
from support.waiting import LIMIT_SECONDS

ROUNDS = int(os.environ.get("PLENZO_POWER_CUTS", "5"))
RECORDS = 20_000 // int(os.environ.get("PLENZO_BATCH_DIVISOR", "1"))
CALENDARS = [{"uid": f"calendar-{number}", "colInt": number} for number in range(50)]
WEATHER = {"forecast": [{"high": number, "text": "Sunny"} for number in range(7)]}

BEFORE, WRITING = "before the writing", "while writing"
PUTTING_IN_PLACE, AFTER = "while putting in place", "after the saving"

Outcome = collections.namedtuple("Outcome", "phase restored")
Saving = collections.namedtuple("Saving", "whole_seconds writing_seconds")


class PowerCuts(SystemTest):
    def setUp(self):
        super().setUp()
        self.files = SavedFiles(self.session)
        self.manager = LoginManager(self.session, self.link.connection)
        self.addCleanup(self.manager.vanish)
        self.batch = LargeBatch(RECORDS)
        self.contents = self.batch.as_property_list()

    def start_and_push(self):
        agent = self.start_agent()
        self.manager.wait_for_inhibitors(HELD)
        self.link.call("SourceListUpdated", GLib.Variant.new_tuple(dictionaries(CALENDARS)))
        self.link.call("WeatherUpdated", GLib.Variant.new_tuple(dictionary(WEATHER)))
        with sealed_file(self.contents) as file:
            self.link.push_file(file.fileno())
        self.assertEqual(self.pending_count(), 2 * RECORDS)
        return agent

    def pending_count(self):
        rows = call(self.link.connection, NAME, PATH, INSPECTOR, "PendingAlarms")
        return rows.get_child_value(0).n_children()

    def measured_saving(self):
        """A saving that nothing interrupts, from its announcement on."""
        agent = self.start_and_push()
        begun = time.monotonic()
        self.manager.announce("PrepareForShutdown", True)
        self.wait_for_writing()
        writing = time.monotonic()
        self.wait_for_files(lambda names: names == set(NAMES))
        ended = time.monotonic()
        self.manager.wait_for_inhibitors([("sleep", "delay")])
        self.end(agent)
        self.assertTrue(self.restored())
        return Saving(ended - begun, ended - writing)

    def wait_for_writing(self):
        self.wait_for_files(lambda names: names)

    def wait_for_files(self, condition):
        """Without the pauses of other waiting, since the writing is over soon."""
        limit = time.monotonic() + LIMIT_SECONDS
        while not condition(set(self.files.names())):
            self.assertLess(time.monotonic(), limit, "no files")

    def end(self, agent):
        agent.process.kill()
        self.assertEqual(agent.wait_for_end(), -signal.SIGKILL)
        self.announcements.wait_for("name released",
                                    self.announcements.heard.count("name taken"))

    def cut_power_after(self, seconds, since_writing):
        """The moment of the cut is what is tested."""
        agent = self.start_and_push()
        self.manager.announce("PrepareForShutdown", True)
        if since_writing:
            self.wait_for_writing()
        time.sleep(seconds)
        self.end(agent)
        phase = self.phase()
        return Outcome(phase, self.restored())

    def phase(self):
        """How far the saving had come, by what is left of it."""
        names = set(self.files.names())
        if not names:
            return BEFORE
        if "Saving" in names:
            return WRITING
        return AFTER if names == set(NAMES) else PUTTING_IN_PLACE

    def restored(self):
        """Whether all was restored: seen in the alarms, and in what the next end of the session
        saves of calendars and weather. The other choice is nothing at all."""
        agent = self.start_agent()
        self.manager.wait_for_inhibitors(HELD)
        count = self.pending_count()
        self.assertEqual(self.files.names(), [])
        self.manager.announce("PrepareForShutdown", True)
        self.manager.wait_for_inhibitors([("sleep", "delay")])
        records = self.files.read("Reminders.plist")
        calendars = [node["uid"] for node in self.files.read("Calendars.plist")]
        weather = (self.files.read("Weather.plist")
                   if self.files.path("Weather.plist").exists() else None)
        self.manager.announce("PrepareForShutdown", False)
        self.manager.wait_for_inhibitors(HELD)
        self.assertEqual(agent.ask_to_end(), 0)
        found = (count, len(records), calendars, weather)
        whole = (2 * RECORDS, RECORDS, [node["uid"] for node in CALENDARS], WEATHER)
        self.assertIn(found, [whole, (0, 0, [], None)])
        return found == whole

    def cut_power_in(self, number, saving):
        share = (number + random.random()) / ROUNDS
        if number % 2 == 0:
            return self.cut_power_after(1.1 * share * saving.whole_seconds, since_writing=False)
        return self.cut_power_after(share * saving.writing_seconds, since_writing=True)

    def test_while_saving_leave_all_or_nothing(self):
        saving = self.measured_saving()
        outcomes = collections.Counter(self.cut_power_in(number, saving)
                                       for number in range(ROUNDS))
        print(f"\nsaving {RECORDS} records takes {saving.whole_seconds * 1000:.0f} ms, the writing "
              f"{saving.writing_seconds * 1000:.1f} ms of it; {ROUNDS} cuts:", flush=True)
        for (phase, restored), count in sorted(outcomes.items()):
            print(f"  {count} {phase}: {'all' if restored else 'nothing'} restored", flush=True)
        for phase, restored in outcomes:
            self.assertEqual(restored, phase in (PUTTING_IN_PLACE, AFTER), phase)


if __name__ == "__main__":
    unittest.main()
