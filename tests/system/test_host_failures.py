"""The host whose disk is full, whose folder cannot be written, and that is killed at any moment."""
import pathlib
import shutil
import subprocess
import unittest

from gi.repository import GLib

from support.calendar_host import CalendarHost
from support.notification_server import NotificationServer
from support.system_test import SystemTest

_CALENDAR = b"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//EN\r\n" + b"X-FILLER:%s\r\n" * 300 + b"END:VCALENDAR\r\n"
_TEXT = _CALENDAR % tuple(str(number).encode() * 10 for number in range(300))

# The file system of the test's own, which nobody else sees; root may make one.
_ON_SMALL_DISK = ["unshare", "--mount", "sh", "-c",
                  'mount -t tmpfs -o size=64k none "$0" && cp "$0.seed" "$0/work.ics" && exec "$@"']
_IN_LOCKED_FOLDER = ["unshare", "--mount", "sh", "-c",
                     'mount -t tmpfs none "$0" && cp "$0.seed" "$0/work.ics" && '
                     'mount -o remount,ro "$0" && exec "$@"']

# What a change of a file is made of, and how often at most.
_STEPS = {"openat": 40, "write": 12, "fchown": 3, "fchmod": 3, "fsync": 6, "rename": 4, "renameat2": 2, "unlink": 6}


def _can_mount():
    return subprocess.run(["unshare", "--mount", "mount", "-t", "tmpfs", "none", "/mnt"],
                          stderr=subprocess.DEVNULL, check=False).returncode == 0


def _can_trace():
    return shutil.which("strace") is not None and subprocess.run(
        ["strace", "-o", "/dev/null", "true"], stderr=subprocess.DEVNULL, check=False).returncode == 0


class AHostThatFails(SystemTest):
    def setUp(self):
        super().setUp()
        self.folder = self.session.folder / "calendars"
        self.folder.mkdir()
        pathlib.Path(f"{self.folder}.seed").write_bytes(_TEXT)
        configuration = self.session.folder / "config" / "plenzohost"
        configuration.mkdir()
        (configuration / "config.toml").write_text(
            f'[[calendar]]\npath = "{self.folder}/work.ics"\ndefault = true\n')
        self.server = NotificationServer(self.session.connect())
        self.start_agent()

    def start_host(self, command=()):
        host = CalendarHost(self.session, self.link.connection, command=command)
        self.addCleanup(lambda: host.process.returncode is None and host.kill())
        return host

    def check_waits_and_is_done_later(self, host, problem, mend):
        """`mend` gets the folder as the host has it."""
        folder = pathlib.Path(f"/proc/{host.process.pid}/root{self.folder}")
        host.open("plenzoevent://new/Tea")
        self.assertEqual((folder / "work.ics").read_bytes(), _TEXT)
        self.assertEqual([path.name for path in folder.iterdir() if path.name != "filler"], ["work.ics"])
        self.wait_until(lambda: self.server.summaries(), "a notification")
        for text in (host.errors(), self.server.delivered[0].body):
            self.assertIn(problem, text)
        mend(folder)
        self.wait_until(lambda: b"SUMMARY:Tea\r\n" in (folder / "work.ics").read_bytes(), "the item")
        self.assertEqual(len(self.server.summaries()), 1)
        self.assertTrue((folder / "work.ics").read_bytes().startswith(_TEXT[:-len(b"END:VCALENDAR\r\n")]))

    @unittest.skipUnless(_can_mount(), "needs the right to mount")
    def test_keeps_the_old_file_and_the_command_on_a_full_disk(self):
        host = self.start_host([*_ON_SMALL_DISK, str(self.folder)])
        folder = pathlib.Path(f"/proc/{host.process.pid}/root{self.folder}")
        with self.assertRaises(OSError), open(folder / "filler", "wb", buffering=0) as filler:
            while filler.write(bytes(4096)):
                pass
        self.check_waits_and_is_done_later(host, "No space left on device",
                                           lambda disk: (disk / "filler").unlink())

    @unittest.skipUnless(_can_mount(), "needs the right to mount")
    def test_keeps_the_command_where_the_folder_cannot_be_written(self):
        host = self.start_host([*_IN_LOCKED_FOLDER, str(self.folder)])
        self.check_waits_and_is_done_later(
            host, "is read-only",
            lambda _: subprocess.run(["nsenter", "--mount", f"--target={host.process.pid}", "mount",
                                      "-o", "remount,rw", str(self.folder)], check=True))

    @unittest.skipUnless(_can_trace(), "needs strace")
    def test_loses_nothing_wherever_it_is_killed(self):
        """A command that was answered, or written down, is carried out once; any other not at all."""
        work = self.folder / "work.ics"
        kills = []
        for step, most in _STEPS.items():
            for count in range(1, most + 1):
                with self.subTest(step=step, count=count):
                    work.write_bytes(_TEXT)
                    if not self._kill_at(step, count):
                        break
                    kills.append((step, count))
                    kept = (self.session.folder / "home/.local/state/plenzohost/commands").exists()
                    middle = work.read_bytes()
                    self.assertTrue(middle == _TEXT or middle.count(b"SUMMARY:Tea\r\n") == 1)
                    host = self.start_host()
                    self.assertEqual(host.end(), 0)
                    self.assertEqual(work.read_bytes().count(b"SUMMARY:Tea\r\n"),
                                     int(kept or middle != _TEXT))
        self.assertLessEqual({"openat", "write", "fsync", "rename"}, {step for step, _ in kills})

    def _kill_at(self, step, count):
        """Whether a host that carries out a command reached that call so often."""
        host = self.start_host()
        tracer = subprocess.Popen(
            ["strace", "-q", "-p", str(host.process.pid), "-e", f"trace={step}", "-o", "/dev/null",
             "-e", f"inject={step}:signal=KILL:when={count}"],
            stderr=subprocess.DEVNULL)
        status = pathlib.Path(f"/proc/{host.process.pid}/status")
        self.wait_until(lambda: "TracerPid:\t0\n" not in status.read_text(), "strace")
        try:
            host.open("plenzoevent://new/Tea")
            was_killed = False
        except GLib.Error:
            was_killed = True
        host.kill()
        tracer.wait()
        return was_killed


if __name__ == "__main__":
    unittest.main()
