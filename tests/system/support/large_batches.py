"""Batches as large as hosts push them: realistic records with two alarms each, made fast."""
import random
import struct
from typing import NamedTuple

from gi.repository import GLib

from support.values import Date, dictionary, in_seconds, property_list, reminder

_NUMBER_OF_NONE = "0000000"
_DATE_OF_NONE = Date(123456789.0)
_LEAD_SECONDS = (-900.0, -300.0)
_EARLIEST_SECONDS, _LATEST_SECONDS = 3600, 13 * 86400


class Row(NamedTuple):
    """What is compared of a pending alarm: when it fires, and which one it is."""
    fire_date: float
    reminder_uid: str


class LargeBatch:
    """Owns the numbers from which its records and the alarms expected of them are made. Several
    records share a date, but no two alarms agree in date, type and title."""

    def __init__(self, count, seed=20260310):
        numbers = random.Random(seed)
        base = in_seconds(_EARLIEST_SECONDS).seconds
        self._dates = [base + 60.0 * numbers.randrange((_LATEST_SECONDS - _EARLIEST_SECONDS) // 60)
                       for _ in range(count)]
        self._types = [numbers.randrange(2) for _ in range(count)]

    def as_property_list(self):
        return property_list([self._record(f"{number:07}", Date(date), kind) for number, (date, kind)
                              in enumerate(zip(self._dates, self._types))])

    def as_records(self):
        """A GLib.Variant of type aa{sv}. Each record is a copy of one, with its number, date and
        type written over; making each from its values would take minutes."""
        templates = [dictionary(self._record(_NUMBER_OF_NONE, _DATE_OF_NONE, kind)) for kind in (0, 1)]
        copies = [_Copies(template) for template in templates]
        elements = [copies[kind].copy(number, date) for number, (date, kind)
                    in enumerate(zip(self._dates, self._types))]
        return _array_of(elements)

    def expected_rows(self):
        """In the order of the queue: by fire date, type and title."""
        alarms = sorted((date + lead, kind, number, lead)
                        for number, (date, kind) in enumerate(zip(self._dates, self._types))
                        for lead in _LEAD_SECONDS)
        return [Row(date, f"reminder-{number:07}{lead}") for date, _, number, lead in alarms]

    @staticmethod
    def _record(number, date, kind):
        long_ago = Date(0.0)
        return {"uid": f"event-{number}", "title": f"Meeting {number}", "type": kind, "date": date,
                "location": "Room 4, second floor", "notes": "Bring the plan and the figures.",
                "url": "https://calendar.example/e", "allDay": False, "floating": False,
                "read": False, "completed": False, "cuid": "calendar-1", "cal": "Work", "colInt": 0x3366CC,
                "rem": [reminder(f"reminder-{number}{lead}", lead, ack=long_ago)
                        for lead in _LEAD_SECONDS]}


class _Copies:
    """Copies of one record, by its bytes."""

    def __init__(self, template):
        self._bytes = bytearray(template.get_data_as_bytes().get_data())
        self._bytes.extend(bytes(-len(self._bytes) % 8))
        self._size = template.get_size()
        self._numbers = self._positions(_NUMBER_OF_NONE.encode())
        self._date, = self._positions(struct.pack("=d", _DATE_OF_NONE.seconds))

    def _positions(self, sample):
        positions, position = [], self._bytes.find(sample)
        while position >= 0:
            positions.append(position)
            position = self._bytes.find(sample, position + 1)
        return positions

    def copy(self, number, date):
        """The bytes, filled up to the alignment of the next, and their number without that."""
        digits = f"{number:07}".encode()
        for position in self._numbers:
            self._bytes[position:position + len(digits)] = digits
        struct.pack_into("=d", self._bytes, self._date, date)
        return bytes(self._bytes), self._size


def _array_of(elements):
    """An array as GVariant lays it out: the elements, and then where each of them ends."""
    ends, position = [], 0
    for contents, size in elements:
        ends.append(position + size)
        position += len(contents)
    body = b"".join(contents for contents, _ in elements[:-1]) + elements[-1][0][:elements[-1][1]]
    layout = GLib.Bytes.new(body + struct.pack(f"<{len(ends)}I", *ends))
    records = GLib.Variant.new_from_bytes(GLib.VariantType("aa{sv}"), layout, False)
    if not records.is_normal_form() or records.n_children() != len(elements):
        raise AssertionError("the batch is laid out wrongly")
    return records


def row_of(answer):
    """A row of the answer, without unpacking what is not compared."""
    return Row(answer.lookup_value("fireDate", None).get_child_value(0).get_double(),
               answer.lookup_value("reminderUid", None).get_string())
