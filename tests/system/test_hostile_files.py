"""Batches by descriptor that no host would send. The agent takes nothing from them, and lives."""
import fcntl
import os
import plistlib
import socket
import struct
import tempfile
import unittest

from gi.repository import GLib

from support.memory_files import ALL_SEALS, sealed_file
from support.system_test import SystemTest
from support.values import Date, event, in_seconds, property_list


def file_of(objects):
    """A property list with these objects, each in its binary form; the first is the whole."""
    body, offsets = bytearray(b"bplist00"), bytearray()
    for one in objects:
        offsets += struct.pack(">I", len(body))
        body += one
    return trailer(bytes(body + offsets), len(objects), len(body), offset_size=4, reference_size=4)


def list_of(*references):
    return bytes([0xa0 + len(references)]) + struct.pack(f">{len(references)}I", *references)


def trailer(head, objects, table, top=0, offset_size=1, reference_size=1):
    return head + struct.pack(">6xBBQQQ", offset_size, reference_size, objects, top, table)


class HostileFiles(SystemTest):
    def setUp(self):
        super().setUp()
        self.agent = self.start_agent()
        self.link.push([event("there", in_seconds(3600))])
        self.good = property_list([event("taken", in_seconds(3600))])

    def assert_not_taken(self, descriptor):
        self.link.push_file(descriptor)
        self.assertEqual(self.link.pending_uids(), ["there"])
        self.assertTrue(self.agent.is_running())

    def test_are_refused_when_they_hold_no_list_of_records(self):
        good = self.good
        xml = plistlib.dumps([{"uid": "taken"}])
        contents = {
            "garbage": b"garbage" * 1000, "one byte": b"b", "magic alone": b"bplist00",
            "other version": good.replace(b"bplist00", b"bplist16"), "truncated": good[:-1],
            "no trailer": good[:-32], "cut in front": good[1:], "zeros": bytes(100_000), "text form": xml,
            "a record": property_list(event("taken", in_seconds(3600))), "text": property_list("taken"),
            "loop": file_of([list_of(0)]), "long loop": file_of([list_of(1), list_of(2), list_of(0)]),
            "deep": file_of([list_of(number + 1) for number in range(1_000_000)] + [list_of()]),
            "no such object": trailer(good[:-32], objects=5, table=len(good) - 32, top=2**63),
            "more objects than bytes": trailer(good[:-32], objects=2**60, table=8),
            "table beyond the end": trailer(good[:-32], objects=5, table=2**40),
            "long beyond the end": trailer(b"bplist00" + b"\xaf\x13" + b"\xff" * 8 + b"\x08", 1, 18)}
        for case, damaged in contents.items():
            with self.subTest(case), sealed_file(damaged) as file:
                self.assert_not_taken(file.fileno())

    def test_are_refused_when_they_can_still_change(self):
        for name in ("F_SEAL_SHRINK", "F_SEAL_WRITE"):
            seals = ALL_SEALS & ~getattr(fcntl, name)
            with self.subTest(name), sealed_file(self.good, seals) as file:
                self.assert_not_taken(file.fileno())
        with self.subTest("no seals"), sealed_file(self.good, 0) as file:
            self.assert_not_taken(file.fileno())

    def test_are_refused_when_they_are_no_memory_files(self):
        pipe, pipe_end = os.pipe()
        one, other = socket.socketpair()
        with tempfile.NamedTemporaryFile() as file, one, other:
            file.write(self.good)
            file.flush()
            os.write(pipe_end, self.good[:4096])
            one.sendall(self.good[:4096])
            descriptors = {"file": file.fileno(), "pipe": pipe, "writing end": pipe_end,
                           "socket": other.fileno(), "folder": os.open("/", os.O_RDONLY),
                           "path": os.open("/", os.O_PATH), "zeros": os.open("/dev/zero", os.O_RDONLY),
                           "null": os.open("/dev/null", os.O_RDONLY), "process": os.pidfd_open(os.getpid()),
                           "endless": os.open("/proc/self/mem", os.O_RDONLY)}
            for case, descriptor in descriptors.items():
                with self.subTest(case):
                    self.assert_not_taken(descriptor)

    def test_are_refused_when_they_claim_more_than_they_hold(self):
        with sealed_file(b"", 0) as file:
            self.assert_not_taken(file.fileno())
        with sealed_file(b"", ALL_SEALS) as file:
            self.assert_not_taken(file.fileno())
        with sealed_file(self.good, 0) as file:
            os.ftruncate(file.fileno(), 2**40)
            fcntl.fcntl(file.fileno(), fcntl.F_ADD_SEALS, ALL_SEALS)
            self.assert_not_taken(file.fileno())
        self.assertLess(self.peak_kilobytes(), 500_000)

    def test_with_lists_shared_over_and_over_take_no_more_than_they_hold(self):
        doubling = [list_of(number + 1, number + 1) for number in range(100)] + [list_of()]
        with sealed_file(file_of(doubling)) as file:
            self.link.push_file(file.fileno())
        self.link.push([event("after", in_seconds(3600))])
        self.assertEqual(self.link.pending_uids(), ["after"])
        self.assertLess(self.peak_kilobytes(), 500_000)

    def peak_kilobytes(self):
        with open(f"/proc/{self.agent.process.pid}/status") as status:
            peak = next(line for line in status if line.startswith("VmHWM"))
        return int(peak.split()[1])

    def test_are_refused_when_the_message_has_no_such_descriptor(self):
        for index, count in ((1, 1), (7, 1), (-1, 1), (0, 0)):
            with self.subTest(index=index, count=count), sealed_file(self.good) as file:
                try:
                    self.link.call("AlarmsUpdatedFromFile", GLib.Variant("(hb)", (index, False)),
                                   [file.fileno()] * count)
                except GLib.Error:
                    pass  # An error says that nothing was taken; so does an empty answer.
                self.assertEqual(self.link.pending_uids(), ["there"])

    def test_are_not_kept_open(self):
        before = self.agent.open_descriptors()
        for _ in range(50):
            with sealed_file(b"garbage") as file:
                self.assert_not_taken(file.fileno())
                # Descriptors along with an operation that has none.
                self.link.call("Version", GLib.Variant("(s)", ("x",)), [file.fileno()] * 10)
        self.wait_until(lambda: self.agent.open_descriptors() == before, "all of them closed")

    def test_give_their_records_and_nothing_else(self):
        soon = in_seconds(3600)
        mixed = [1, "text", [], {}, b"data", True, event("taken", soon), {"uid": "no reminders"},
                 {**event("undated", soon), "date": "tomorrow"}, event("old", Date(0.0)),
                 [event("nested", soon)]]
        with sealed_file(property_list(mixed)) as file:
            self.link.push_file(file.fileno())
        self.assertEqual(self.link.pending_uids(), ["taken"])


if __name__ == "__main__":
    unittest.main()
