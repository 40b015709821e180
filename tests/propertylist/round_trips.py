#!/usr/bin/env python3
"""Sends random property lists on the round through other programs and compares what arrives.

Usage: round_trips.py ROUND_TRIP_TOOL PLISTUTIL

The rounds:
  1. plistlib writes, our reader reads, our writer writes, plistlib reads;
  2. what our writer wrote, plistutil turns into XML, which plistlib reads;
  3. plistutil turns that XML into a binary file, our reader and writer turn it over, plistlib reads.

Exit status: 0 when everything arrived whole, 1 otherwise.
"""
import datetime
import math
import pathlib
import plistlib
import random
import subprocess
import sys
import tempfile

FILE_COUNT = 400
SEED = 20010101
EPOCH = datetime.datetime(2001, 1, 1)

RECORD_KEYS = ["uid", "type", "title", "location", "notes", "date", "end", "allDay", "colInt", "rem", "cal"]
LETTERS = "abcdefghijklmnopqrstuvwxyz ABC-0123456789\n\t<&>\"'"
WIDE_LETTERS = LETTERS + "äöüß€Ωжだ漢字🚮👩\u200d🔬\ufffd\u0080"


class Generator:
    """Random values of every kind. XML cannot carry some of them, and so the plain ones are without
    those: no NUL, carriage return, other control character or U+FFFF in texts; dates in whole
    seconds, and not before the year 1000, whose digits plistutil does not fill up to four."""

    def __init__(self, seed, plain):
        self.random = random.Random(seed)
        self.plain = plain

    def text(self):
        letters = WIDE_LETTERS if self.random.random() < 0.4 else LETTERS
        if not self.plain:
            letters += "\uffff"
            if self.random.random() < 0.1:
                letters += "\0\r\x1b"
        length = self.random.choice([0, 1, 5, 13, 14, 15, 16, 40, 300])
        return "".join(self.random.choice(letters) for _ in range(length))

    def integer(self):
        bits = self.random.randrange(65)
        number = self.random.getrandbits(bits) if bits else 0
        return -number - 1 if number < 2**63 and self.random.random() < 0.4 else number

    def real(self):
        special = [0.0, -0.0, 1.5, math.inf, -math.inf, math.nan, 5e-324, 1.7976931348623157e308]
        return self.random.choice(special + [self.random.uniform(-1e9, 1e9)] * 8)

    def date(self):
        seconds = self.random.randrange(-3 * 10**10, 25 * 10**10)
        fraction = 0 if self.plain else self.random.choice([0, 500000, 250000, 15625])
        return EPOCH + datetime.timedelta(seconds=seconds, microseconds=fraction)

    def data(self):
        return self.random.randbytes(self.random.choice([0, 1, 14, 15, 100, 1000]))

    def key(self):
        return self.random.choice(RECORD_KEYS) if self.random.random() < 0.7 else self.text()

    def value(self, depth):
        makers = [self.text, self.integer, self.real, self.date, self.data,
                  lambda: self.random.random() < 0.5]
        if depth > 0 and self.random.random() < 0.35:
            return self.collection(depth)
        return self.random.choice(makers)()

    def collection(self, depth):
        size = self.random.choice([0, 1, 2, 5, 14, 15, 20])
        if self.random.random() < 0.5:
            return [self.value(depth - 1) for _ in range(size)]
        return {self.key(): self.value(depth - 1) for _ in range(size)}


def same(left, right):
    """Equal in worth and in type; NaN is the same as NaN."""
    if type(left) is not type(right):
        return False
    if isinstance(left, list):
        return len(left) == len(right) and all(map(same, left, right))
    if isinstance(left, dict):
        return left.keys() == right.keys() and all(same(left[key], right[key]) for key in left)
    if isinstance(left, float):
        return left == right or (math.isnan(left) and math.isnan(right))
    return left == right


class Rounds:
    def __init__(self, tool, plistutil, folder):
        self.tool = tool
        self.plistutil = plistutil
        self.folder = pathlib.Path(folder)
        self.failures = 0
        self.compared = 0

    def compare(self, name, expected, path):
        self.compared += 1
        try:
            arrived = plistlib.loads(path.read_bytes())
        except Exception as fault:  # whatever the other reader objects to is a failure
            arrived = fault
        if same(expected, arrived):
            return
        self.failures += 1
        if self.failures <= 5:
            print(f"{name}: {path.name} differs\n  sent    {expected!r:.400}\n  arrived {arrived!r:.400}")

    def turn_over(self, paths):
        result = subprocess.run([self.tool, *map(str, paths)], capture_output=True, text=True)
        if result.returncode != 0:
            self.failures += 1
            print("not read or not written:", result.stderr)
        return [path.with_name(path.name + ".again") for path in paths]

    def convert(self, source, target, form):
        command = [self.plistutil, "-i", str(source), "-o", str(target), "-f", form]
        result = subprocess.run(command, capture_output=True, text=True)
        if result.returncode != 0:
            self.failures += 1
            print(f"plistutil does not turn {source.name} into {form}:", result.stderr)
        return target

    def write(self, values, prefix):
        paths = [self.folder / f"{prefix}{number}.plist" for number in range(len(values))]
        for value, path in zip(values, paths):
            path.write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_BINARY, sort_keys=False))
        return paths

    def through_plistlib(self, values):
        for value, path in zip(values, self.turn_over(self.write(values, "any"))):
            self.compare("plistlib and back", value, path)

    def through_plistutil(self, values):
        ours = self.turn_over(self.write(values, "plain"))
        texts = [self.convert(path, path.with_suffix(".xml"), "xml") for path in ours]
        for value, path in zip(values, texts):
            self.compare("ours to XML", value, path)
        binaries = [self.convert(path, path.with_suffix(".binary"), "bin") for path in texts]
        for value, path in zip(values, self.turn_over(binaries)):
            self.compare("plistutil's binary to ours", value, path)


def main():
    anything = Generator(SEED, plain=False)
    plain = Generator(SEED + 1, plain=True)
    with tempfile.TemporaryDirectory() as folder:
        rounds = Rounds(sys.argv[1], sys.argv[2], folder)
        rounds.through_plistlib([anything.value(0) for _ in range(100)] +
                                [anything.collection(4) for _ in range(FILE_COUNT)])
        rounds.through_plistutil([plain.collection(3) for _ in range(FILE_COUNT // 2)])
    print(f"{rounds.compared} comparisons, {rounds.failures} failures")
    return 1 if rounds.failures else 0


sys.exit(main())
