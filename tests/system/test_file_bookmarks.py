"""Alarms that open a file, which the host names by a reference inside the record."""
import os
import plistlib
import unittest

from support.login_manager import HELD, LoginManager
from support.notification_server import NotificationServer
from support.system_test import SystemTest
from support.values import event, in_seconds, reminder

OPEN_FILE = 4


def reference(path):
    """As a program makes it that cannot tell when the file came into being."""
    status = os.stat(path)
    return plistlib.dumps({"version": 1, "path": os.fsencode(path), "device": status.st_dev,
                           "inode": status.st_ino}, fmt=plistlib.FMT_BINARY)


class FileBookmarks(SystemTest):
    def setUp(self):
        super().setUp()
        self.notes = self.session.folder / "opened"
        opener = self.session.folder / "opener"
        opener.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >>'{self.notes}'\n")
        opener.chmod(0o700)
        applications = self.session.folder / "data" / "applications"
        applications.mkdir()
        (applications / "opener.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Opener\nExec={opener} %f\n"
            "MimeType=inode/directory;\n")
        (self.session.folder / "config" / "mimeapps.list").write_text(
            "[Default Applications]\ninode/directory=opener.desktop\n")
        # A folder is opened like a file, and its type is known without a table of types.
        self.folder = self.session.folder / "Pläne 2026"
        self.folder.mkdir()

    def opening_event(self, uid, book, seconds):
        return event(uid, in_seconds(seconds), reminder(uid, kind=OPEN_FILE, book=book))

    def opened(self):
        return self.notes.read_text().splitlines() if self.notes.exists() else []

    def kept(self):
        path = self.session.folder / "config" / "PlenzoAlarm" / "Preferences.plist"
        return list(plistlib.loads(path.read_bytes()).get("secureBookmarks", {}))

    def test_are_kept_when_the_record_comes_and_used_when_its_alarm_fires(self):
        agent = self.start_agent()
        self.link.deliver_alarms()
        self.link.push([self.opening_event("plans", reference(self.folder), 2)])
        self.wait_until(lambda: self.opened() == [str(self.folder)], "the folder is opened")
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(agent.errors(), "")

    def test_are_written_at_the_end_of_the_session_without_those_of_missing_files(self):
        manager = LoginManager(self.session, self.link.connection)
        self.addCleanup(manager.vanish)
        self.start_agent()
        manager.wait_for_inhibitors(HELD)
        gone = self.session.folder / "gone"
        gone.mkdir()
        self.link.push([self.opening_event("plans", reference(self.folder), 3600),
                        self.opening_event("gone", reference(gone), 3600)])
        self.link.set_preferences({"unknown": 1})
        self.link.pending()
        self.assertEqual(sorted(self.kept()), sorted([str(self.folder), str(gone)]))
        gone.rmdir()
        later = self.session.folder / "later"
        later.mkdir()
        self.link.push([self.opening_event("later", reference(later), 3600)], delta=True)
        manager.announce("PrepareForShutdown", True)
        manager.wait_for_inhibitors([("sleep", "delay")])
        self.assertEqual(sorted(self.kept()), sorted([str(self.folder), str(later)]))

    def test_open_nothing_when_another_file_has_the_place_or_the_reference_is_none(self):
        self.start_agent()
        self.link.deliver_alarms()
        server = NotificationServer(self.session.connect())
        replaced = self.session.folder / "replaced"
        replaced.mkdir()
        old = reference(replaced)
        replaced.rename(self.session.folder / "elsewhere")
        replaced.mkdir()
        whole = reference(self.folder)
        books = [old, b"", b"bplist00", whole[:-1], bytes(range(256)), "text", 7, [whole],
                 plistlib.dumps({"path": "/"}, fmt=plistlib.FMT_BINARY)]
        records = [self.opening_event(f"bad-{number}", book, 2) for number, book in enumerate(books)]
        self.link.push(records + [event("heard", in_seconds(3)),
                                  self.opening_event("good", whole, 4)])
        self.wait_until(lambda: "heard" in server.summaries(), "the agent lives on")
        self.wait_until(lambda: self.opened() == [str(self.folder)], "only the good one is opened")
        self.link.set_preferences({"unknown": 1})
        self.link.pending()
        self.assertEqual(self.kept(), [str(self.folder)])


if __name__ == "__main__":
    unittest.main()
