"""What the host pushed outlives the end of the session, whoever announces it, and the loss of power
after that."""
import os
import random
import signal
import unittest

from gi.repository import GLib

from support.login_manager import HELD, LoginManager
from support.notification_test import NOTIFYING, NotificationTest, soon
from support.saved_files import NAMES, SavedFiles, holds_key
from support.session_manager import SessionManager
from support.values import dictionaries, dictionary, event, in_seconds, now_seconds

NO_FLAGS = GLib.Variant("(u)", (0,))
RED = 0xFF0000
CALENDARS = [{"uid": "group", "title": "Group", "children": [
    {"uid": "work", "title": "Work", "colInt": RED}, {"uid": "home", "title": "Home"}]}]
WEATHER = {"forecast": [{"high": 21, "low": 12, "text": "Sunny"}]}


class Persistence(NotificationTest):
    """An agent that a login manager waits for."""

    def setUp(self):
        super().setUp()
        self.files = SavedFiles(self.session)
        self.server = self.start_server()

    def start_login_manager(self):
        self.manager = LoginManager(self.session, self.link.connection)
        self.addCleanup(self.manager.vanish)

    def start_agent_of_login_manager(self):
        agent = self.start_agent()
        self.manager.wait_for_inhibitors(HELD)
        self.link.set_preferences(NOTIFYING)
        return agent

    def push_all(self, records):
        self.link.call("SourceListUpdated", GLib.Variant.new_tuple(dictionaries(CALENDARS)))
        self.link.call("WeatherUpdated", GLib.Variant.new_tuple(dictionary(WEATHER)))
        self.link.push(records)
        self.link.pending()  # announcements come on another way, and could be faster

    def announce_shutdown(self):
        """Waits until the agent lets go of it."""
        self.manager.announce("PrepareForShutdown", True)
        self.manager.wait_for_inhibitors([("sleep", "delay")])

    def cut_power(self, agent):
        agent.process.kill()
        self.assertEqual(agent.wait_for_end(), -signal.SIGKILL)
        self.announcements.wait_for("name released",
                                    self.announcements.heard.count("name taken"))

    def assert_saved(self, *uids):
        self.assertEqual(self.files.names(), sorted(NAMES))
        records, calendars, weather = (self.files.read(name) for name in NAMES)
        self.assertEqual([record["uid"] for record in records], list(uids))
        self.assertEqual([calendar["uid"] for calendar in calendars[0]["children"]],
                         ["work", "home"])
        self.assertEqual(calendars[0]["children"][0]["colInt"], RED)
        self.assertEqual(weather, WEATHER)
        self.assertFalse(holds_key([records, calendars, weather], "color"))


class APowerOff(Persistence):
    def setUp(self):
        super().setUp()
        self.start_login_manager()

    def test_costs_no_alarm(self):
        agent = self.start_agent_of_login_manager()
        before, meanwhile = soon(), soon(later_by=2)
        self.push_all([event("before", before), event("meanwhile", meanwhile, colInt=RED),
                       event("later", in_seconds(3600))])
        self.wait_for("before")
        self.announce_shutdown()
        self.assert_saved("before", "meanwhile", "later")
        self.cut_power(agent)
        self.wait_until(lambda: now_seconds() > meanwhile.seconds, "the alarm's time")
        self.assertEqual(self.server.summaries(), ["before"])
        agent = self.start_agent_of_login_manager()
        self.wait_for("before", "meanwhile")
        self.assertEqual(self.link.pending_uids(), ["later"])
        self.assertEqual(self.files.names(), [])
        self.announce_shutdown()
        self.assert_saved("before", "meanwhile", "later")
        self.cut_power(agent)
        self.start_agent_of_login_manager()
        self.assertEqual(self.link.pending_uids(), ["later"])
        self.assertEqual(self.server.summaries(), ["before", "meanwhile"])

    def test_that_does_not_come_leaves_no_files(self):
        agent = self.start_agent_of_login_manager()
        self.push_all([event("e", in_seconds(3600))])
        self.announce_shutdown()
        self.manager.announce("PrepareForShutdown", False)
        self.manager.wait_for_inhibitors(HELD)
        self.assertEqual(self.files.names(), [])
        self.cut_power(agent)
        self.start_agent_of_login_manager()
        self.assertEqual(self.link.pending_uids(), [])

    def test_is_saved_again_for_what_comes_late(self):
        agent = self.start_agent_of_login_manager()
        self.push_all([event("first", in_seconds(3600))])
        self.announce_shutdown()
        self.link.push([event("second", in_seconds(1800))], delta=True)
        self.assertEqual(self.link.pending_uids(), ["second", "first"])
        self.assert_saved("first", "second")
        self.cut_power(agent)
        self.start_agent_of_login_manager()
        self.assertEqual(self.link.pending_uids(), ["second", "first"])

    def test_without_weather_writes_none(self):
        self.start_agent_of_login_manager()
        self.link.push([event("e", in_seconds(3600))])
        self.announce_shutdown()
        self.assertEqual(self.files.names(), ["Calendars.plist", "Reminders.plist"])
        self.assertEqual(self.files.read("Calendars.plist"), [])


class TheEndOfASession(Persistence):
    def test_costs_no_alarm(self):
        manager = SessionManager(self.session.connect())
        agent = self.start_agent()
        manager.wait_for_client()
        self.push_all([event("e", in_seconds(3600))])
        manager.tell("EndSession", NO_FLAGS)
        manager.wait_for_responses(1)
        self.assert_saved("e")
        manager.tell("Stop")
        self.assertEqual(agent.wait_for_end(), 0)
        self.assert_saved("e")
        self.start_agent()
        self.assertEqual(self.link.pending_uids(), ["e"])
        self.assertEqual(self.files.names(), [])

    def test_that_is_cancelled_leaves_no_files(self):
        manager = SessionManager(self.session.connect())
        self.start_agent()
        manager.wait_for_client()
        self.push_all([event("e", in_seconds(3600))])
        manager.tell("EndSession", NO_FLAGS)
        manager.wait_for_responses(1)
        manager.tell("CancelEndSession")
        self.wait_until(lambda: self.files.names() == [], "no files")
        self.assertEqual(self.link.pending_uids(), ["e"])


class AHangUp(Persistence):
    """As systemd ends the agent with its session."""

    def test_costs_no_alarm(self):
        agent = self.start_agent()
        meanwhile = soon()
        self.link.set_preferences(NOTIFYING)
        self.push_all([event("meanwhile", meanwhile, colInt=RED), event("later", in_seconds(3600))])
        self.assertEqual(agent.ask_to_end(signal.SIGHUP), 0)
        self.assert_saved("meanwhile", "later")
        self.wait_until(lambda: now_seconds() > meanwhile.seconds, "the alarm's time")
        self.start_agent()
        self.wait_for("meanwhile")
        self.assertEqual(self.link.pending_uids(), ["later"])
        self.assertEqual(self.files.names(), [])

    def test_is_needed_for_that(self):
        """Who ends the agent by itself wants nothing kept."""
        agent = self.start_agent()
        self.push_all([event("e", in_seconds(3600))])
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(self.files.names(), [])


class DamagedFiles(Persistence):
    def good(self):
        """The bytes of a file with one record."""
        self.files.write("Good", [{"uid": "saved", "title": "saved"}])
        contents = self.files.path("Good").read_bytes()
        self.files.path("Good").unlink()
        return contents

    def assert_kept_and_ignored(self, names=sorted(NAMES)):
        """By an agent that works, and that ends well when the test does."""
        agent = self.start_agent()
        self.assertEqual(self.files.names(), list(names))
        self.assertEqual(self.link.pending_uids(), [])
        self.link.push([event("e", in_seconds(600))])
        self.assertEqual(self.link.pending_uids(), ["e"])
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(agent.errors(), "")
        self.assertEqual(self.files.names(), list(names))

    def test_are_kept_and_ignored(self):
        good = self.good()
        cases = {"cut short": good[:-7], "empty": b"", "random": random.Random(7).randbytes(5000),
                 "text form": b"<?xml version='1.0'?><plist><array/></plist>"}
        for case, contents in cases.items():
            with self.subTest(case):
                for name in NAMES:
                    self.files.path(name).write_bytes(contents)
                self.assert_kept_and_ignored()
                for name in NAMES:
                    self.assertEqual(self.files.path(name).read_bytes(), contents)

    def test_of_another_kind_are_kept_and_ignored(self):
        for name, contents in zip(NAMES, ({"uid": "e"}, "text", ["sunny"])):
            self.files.write(name, contents)
        self.assert_kept_and_ignored()

    def test_that_are_no_files_are_kept_and_ignored(self):
        self.files.folder.mkdir()
        os.mkfifo(self.files.path(NAMES[0]))
        self.files.path(NAMES[1]).mkdir()
        self.files.path(NAMES[2]).symlink_to("/dev/zero")
        self.assert_kept_and_ignored()

    @unittest.skipIf(os.geteuid() == 0, "the superuser can read everything")
    def test_that_cannot_be_read_are_kept_and_ignored(self):
        for name in NAMES:
            self.files.write(name, [])
            self.files.path(name).chmod(0)
        self.assert_kept_and_ignored()

    def test_do_not_cost_the_others(self):
        self.files.write("Reminders.plist", [1, "text", [], {"uid": []}, {
            "uid": "good", "title": "good", "rem": [{"uid": "r", "type": 0, "rel": 0}]}])
        self.files.path("Calendars.plist").write_bytes(b"garbage")
        self.start_agent()
        self.assertEqual(self.files.names(), ["Calendars.plist"])


class Folders(Persistence):
    def test_in_the_way_of_the_files_are_kept_beside_them(self):
        for name in NAMES:
            (self.files.path(name) / "users own").mkdir(parents=True)
        self.start_login_manager()
        agent = self.start_agent_of_login_manager()
        self.push_all([event("e", in_seconds(3600))])
        self.announce_shutdown()
        self.assertTrue(all(self.files.path(name).is_file() for name in NAMES))
        self.assertEqual(len(list(self.files.folder.glob("*/users own"))), len(NAMES))
        self.cut_power(agent)
        self.start_agent_of_login_manager()
        self.assertEqual(self.link.pending_uids(), ["e"])


if __name__ == "__main__":
    unittest.main()
