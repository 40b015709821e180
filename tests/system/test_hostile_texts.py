"""Texts that mean something to a shell, a markup reader, a terminal or a file system, on their way to
the user, to the host and to the program that opens a file. What arrives is exact, or nothing does."""
import html
import os
import plistlib
import unittest

from gi.repository import GLib

from support.audio import SOUND
from support.host_commands import HostCommands
from support.memory_files import sealed_file
from support.notification_test import NotificationTest, soon
from support.values import event, property_list, reminder

OPEN_FILE = 4
TEXTS = ["<b>a</b><img src='x'/>", "&lt;&#10;&amp;", "a\nb\r\nc\td", "\"a\" 'b' \\ `c`", "$(touch executed)",
         "; touch executed #", "-rf --help", "%s%n%d%@", "\u202egnp.exe\u202c \u200f\u2066x\u2069",
         "\U0001f4c5 e\u0301\u200d", "\x1b[2J\x07\x7f", "../../../etc/passwd", "file:///etc/passwd"]
LONG = "ä" * 500_000


class HostileTexts(NotificationTest):
    def setUp(self):
        super().setUp()
        self.host = HostCommands(self.session)
        self.executed = self.session.folder / "executed"

    def push_all(self, records):
        """Waits until each of them is on the screen, after those that were."""
        count = len(self.server.delivered) + len(records)
        self.link.push(records, delta=True)
        self.wait_until(lambda: len(self.server.delivered) == count, f"{count} delivered")

    def invoke(self, number, action):
        self.server.emit("ActionInvoked", GLib.Variant("(us)", (number, action)))

    def check_that_nothing_else_happened(self):
        self.assertFalse(self.executed.exists())
        self.assertFalse((self.session.folder / "home" / "executed").exists())

    def test_reach_the_user_as_they_stand(self):
        self.start("actions", "body-markup")
        due = soon()
        self.push_all([event(f"{number:02}", due, title=text, location=text)
                       for number, text in enumerate(TEXTS)])
        self.assertEqual(sorted(one.summary for one in self.server.delivered), sorted(TEXTS))
        for one in self.server.delivered:
            self.assertTrue(one.body.startswith(html.escape(one.summary, quote=False) + "\n"), one.body)
        self.check_that_nothing_else_happened()

    def test_of_absurd_length_reach_the_user_cut_short(self):
        self.start("actions")
        self.push_all([event("long", soon(), title=LONG, location=LONG, notes=LONG)])
        one, = self.server.delivered
        for text in (one.summary, one.body.split("\n")[0]):
            self.assertTrue(text.endswith("…") and LONG.startswith(text[:-1]))
            self.assertLess(len(text.encode()), 5000)

    def test_that_no_message_can_hold_come_in_files_and_take_nothing_along(self):
        self.start("actions")
        due = soon()
        records = property_list([event("zero", due, title="a\0b", location="\0"),
                                 event("outside", due, title="ABCD"), event("good", due)])
        # A half of a character, which is no text.
        records = records.replace(b"\x54ABCD", b"\x62\xd8\x00\x00a")
        with sealed_file(records) as file:
            self.link.push_file(file.fileno())
        self.wait_until(lambda: "good" in self.server.summaries(), "the good one is delivered")
        for summary in self.server.summaries():
            self.assertNotIn("\0", summary)

    def test_in_identities_reach_the_host_as_they_stand_or_not_at_all(self):
        self.start("actions")
        accepted = ["$(touch%20executed)", "'a'&b*c?~;e", "%22%0A%00", "..//../-rf", "a#b?c=d"]
        refused = ["$(touch executed)", "a\nb", "`touch`", "<x>", "\"", "\x1b", "a\\b", "a|b"]
        due = soon()
        self.push_all([event(f"{uid}", due, reminder(uid), title=f"{number:02}")
                       for number, uid in enumerate(accepted + refused)])
        for number in range(1, len(accepted + refused) + 1):
            self.server.dismiss(number)
        self.wait_until(lambda: len(self.host.urls()) >= len(accepted), "the host has heard")
        self.deliver("sentinel")
        self.server.dismiss(len(self.server.delivered))
        expected = sorted(f"plenzoevent://acknowledge/{uid}" for uid in [*accepted, "sentinel-at-start"])
        self.wait_until(lambda: expected[-1] in self.host.urls() and len(self.host.urls()) >= len(expected),
                        "the host has heard of the last one")
        self.assertEqual(self.host.urls(), expected)
        self.check_that_nothing_else_happened()

    def test_as_names_of_sounds_name_no_file(self):
        self.start("sound")
        names = ["../../../etc/passwd", "/etc/passwd", "%2Fetc%2Fpasswd", "$(touch executed)", "a\nb", LONG, ".."]
        for name in names:
            due = soon()
            self.push_all([event(str(len(self.server.delivered)), due, reminder("r", kind=SOUND, url=name))])
        for one in self.server.delivered:
            self.assertNotIn("sound-file", one.hints)
            self.assertIn(one.hints.get("sound-name", "alarm-clock-elapsed"), ["alarm-clock-elapsed"])
        self.check_that_nothing_else_happened()

    def test_as_paths_open_the_one_file_that_is_meant(self):
        self.start()
        notes = self.session.folder / "opened"
        opener = self.session.folder / "opener"
        opener.write_text(f"#!/bin/sh\nprintf '%s\\0' \"$@\" >>'{notes}'\n")
        opener.chmod(0o700)
        (self.session.folder / "data" / "applications" / "opener.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Opener\nExec={opener} %f\nMimeType=inode/directory;\n")
        with open(self.session.folder / "config" / "mimeapps.list", "a") as defaults:
            defaults.write("inode/directory=opener.desktop\n")
        names = ["$(touch executed)", "a b;c&d", "'q' \"q\"", "a\nb", "%20%f", "-rf", "\u202eabc", "#?*"]
        records = []
        for number, name in enumerate(names):
            folder = self.session.folder / name
            folder.mkdir()
            status = os.stat(folder)
            book = plistlib.dumps({"version": 1, "path": os.fsencode(folder), "device": status.st_dev,
                                   "inode": status.st_ino}, fmt=plistlib.FMT_BINARY)
            records.append(event(str(number), soon(), reminder("r", kind=OPEN_FILE, book=book)))
        self.link.push(records)
        paths = sorted(str(self.session.folder / name) for name in names)
        self.wait_until(lambda: notes.exists() and notes.read_text().count("\0") >= len(names), "all opened")
        self.assertEqual(sorted(notes.read_text().split("\0")[:-1]), paths)
        self.check_that_nothing_else_happened()


if __name__ == "__main__":
    unittest.main()
