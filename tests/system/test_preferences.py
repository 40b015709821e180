"""The settings that the host pushes, and the file in which they are kept."""
import datetime
import plistlib
import unittest

from gi.repository import GLib

from support.notification_server import NotificationServer
from support.system_test import SystemTest
from support.values import Date, event, in_seconds

NOTIFYING = {"alarmsIssueAlarms": True, "alarmsUseNotificationCenter": True}


class Preferences(SystemTest):
    def setUp(self):
        super().setUp()
        self.path = self.session.folder / "config" / "PlenzoAlarm" / "Preferences.plist"

    def stored(self):
        return plistlib.loads(self.path.read_bytes(), fmt=plistlib.FMT_BINARY)

    def push(self, preferences):
        """Returns when they are written."""
        self.link.set_preferences(preferences)
        self.link.pending()

    def restart(self, agent):
        self.assertEqual(agent.ask_to_end(), 0)
        return self.start_agent()

    def prepare_file(self, contents):
        self.path.parent.mkdir(exist_ok=True)
        self.path.write_bytes(contents)

    def kept_aside(self):
        return sorted(path.read_bytes() for path in self.path.parent.iterdir() if path != self.path)

    def assert_alarms_are_delivered(self):
        server = NotificationServer(self.session.connect())
        self.link.push([event("due", in_seconds(2))])
        self.wait_until(lambda: server.summaries() == ["due"], "the alarm is delivered")


class PushedPreferences(Preferences):
    def test_are_stored_blindly_whatever_their_type(self):
        self.start_agent()
        pushed = {
            "alarmsDaysToShow": 7, "alarmsSticky": "yes", "alarmsOmitCalendars": ["a", "b"],
            "unknown": "text", "": "no name", "näme 👋": "ü", "n" * 1000: "long", "false": False,
            "negative": -5, "large": 2**64 - 1, "small": -2**63, "real": 0.1, "data": bytes(range(256)),
            "date": Date(725760000.0), "nothing": [], "none": {},
            "nested": {"array": [1, "two", [3.0, {"four": True}]], "dictionary": {"dictionary": {}}},
            **{f"16 bits {kind}": GLib.Variant(kind, 9) for kind in "nqiuxty"}}
        self.push(pushed)
        expected = {**pushed, "date": datetime.datetime(2024, 1, 1),
                    **{f"16 bits {kind}": 9 for kind in "nqiuxty"}}
        self.assertEqual(self.stored(), expected)
        for key, value in self.stored().items():
            self.assertIs(type(value), type(expected[key]), key)

    def test_are_added_to_the_stored_ones_and_replace_them(self):
        self.start_agent()
        self.push({"a": 1, "b": [1, 2]})
        self.push({"b": {"c": 3}, "d": 4})
        self.assertEqual(self.stored(), {"a": 1, "b": {"c": 3}, "d": 4})

    def test_are_stored_without_the_defaults_of_the_others(self):
        agent = self.start_agent()
        self.push({"unknown": 1})
        self.link.call("PrepareToStop")
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(self.stored(), {"unknown": 1})

    def test_leave_out_what_no_property_list_holds(self):
        self.start_agent()
        path = GLib.Variant("o", "/object")
        pairs = GLib.Variant("a{si}", {"a": 1})
        self.push({"path": path, "pairs": pairs, "good": 1,
                   "list": GLib.Variant("av", [path, GLib.Variant("i", 2), pairs])})
        self.assertEqual(self.stored(), {"good": 1, "list": [2]})

    def test_are_readable_by_the_user_alone(self):
        self.start_agent()
        self.push({"a": 1})
        self.assertEqual(self.path.stat().st_mode & 0o777, 0o600)
        self.assertEqual([path.name for path in self.path.parent.iterdir()], ["Preferences.plist"])

    def test_are_in_force_after_a_restart_with_absurd_ones_among_them(self):
        agent = self.start_agent()
        self.push({**NOTIFYING, "far": Date(1e300), "never": Date(float("nan")),
                   "infinite": float("inf"), "alarmsSnoozeSeconds": {"not": "a number"},
                   "alarmsOmitCalendars": [1, ["x"], {}]})
        self.restart(agent)
        self.assert_alarms_are_delivered()


class AStoredFile(Preferences):
    def test_of_another_program_is_read(self):
        self.prepare_file(plistlib.dumps({**NOTIFYING, "own": [1, {"a": b"x"}]}, fmt=plistlib.FMT_BINARY))
        self.start_agent()
        self.assert_alarms_are_delivered()
        self.push({"new": 1})
        self.assertEqual(self.stored(), {**NOTIFYING, "own": [1, {"a": b"x"}], "new": 1})

    def test_that_is_damaged_counts_as_empty_and_is_kept_aside(self):
        whole = plistlib.dumps({"a": 1}, fmt=plistlib.FMT_BINARY)
        damaged = {"garbage": b"garbage", "empty": b"", "truncated": whole[:-5],
                   "an array": plistlib.dumps([1], fmt=plistlib.FMT_BINARY),
                   "text": plistlib.dumps({"a": 1}), "long": b"bplist00" + bytes(1_000_000)}
        for number, (case, contents) in enumerate(damaged.items(), start=1):
            with self.subTest(case):
                self.prepare_file(contents)
                agent = self.start_agent()
                self.assertEqual(self.path.read_bytes(), contents)
                self.push({"new": number})
                self.assertEqual(agent.ask_to_end(), 0)
                self.assertEqual(self.stored(), {"new": number})
                self.assertEqual(self.kept_aside(), sorted(list(damaged.values())[:number]))

    def test_that_is_damaged_stays_while_nothing_is_written(self):
        self.prepare_file(b"garbage")
        agent = self.start_agent()
        self.link.call("PrepareToStop")
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(self.path.read_bytes(), b"garbage")
        self.assertEqual(self.kept_aside(), [])

    def test_that_cannot_be_written_holds_nothing_up(self):
        self.path.mkdir(parents=True)
        (self.path / "something").write_text("in it")
        self.start_agent()
        self.push(NOTIFYING)
        self.assert_alarms_are_delivered()

    def test_that_is_a_link_stays_one(self):
        elsewhere = self.session.folder / "elsewhere.plist"
        elsewhere.write_bytes(plistlib.dumps({"a": 1}, fmt=plistlib.FMT_BINARY))
        self.path.parent.mkdir()
        self.path.symlink_to(elsewhere)
        self.start_agent()
        self.push({"b": 2})
        self.assertTrue(self.path.is_symlink())
        self.assertEqual(plistlib.loads(elsewhere.read_bytes()), {"a": 1, "b": 2})


if __name__ == "__main__":
    unittest.main()
