"""Property-list values for the bus and for files, and the records that a host sends."""
import datetime
import plistlib
import time
from typing import NamedTuple

from gi.repository import GLib

REFERENCE_DATE = datetime.datetime(2001, 1, 1)
REFERENCE_SECONDS_SINCE_1970 = 978307200


class Date(NamedTuple):
    """A moment, in seconds since 2001-01-01 00:00:00 UTC."""
    seconds: float


def now_seconds():
    return time.time() - REFERENCE_SECONDS_SINCE_1970


def in_seconds(seconds):
    """A moment so far ahead of the present, at a whole second so that every form can hold it."""
    return Date(float(round(now_seconds() + seconds)))


def variant(value):
    """The value as the bus carries it. A GLib.Variant stays what it is."""
    if isinstance(value, GLib.Variant):
        return value
    if isinstance(value, Date):
        return GLib.Variant("(d)", (value.seconds,))
    if isinstance(value, bool):
        return GLib.Variant("b", value)
    if isinstance(value, int):
        return GLib.Variant("x" if value < 2**63 else "t", value)
    if isinstance(value, float):
        return GLib.Variant("d", value)
    if isinstance(value, bytes):
        return GLib.Variant("ay", value)
    if isinstance(value, str):
        return GLib.Variant("s", value)
    return dictionary(value) if isinstance(value, dict) else _array(value)


def dictionary(entries):
    return GLib.Variant("a{sv}", {key: variant(value) for key, value in entries.items()})


def dictionaries(elements):
    children = [dictionary(element) for element in elements]
    return GLib.Variant.new_array(GLib.VariantType("a{sv}"), children)


def _array(elements):
    if elements and all(isinstance(element, dict) for element in elements):
        return dictionaries(elements)
    if elements and all(isinstance(element, str) for element in elements):
        return GLib.Variant("as", elements)
    return GLib.Variant("av", [variant(element) for element in elements])


def property_list(value):
    """The bytes of a binary property list."""
    return plistlib.dumps(_for_file(value), fmt=plistlib.FMT_BINARY, sort_keys=False)


def _for_file(value):
    if isinstance(value, Date):
        return REFERENCE_DATE + datetime.timedelta(seconds=value.seconds)
    if isinstance(value, dict):
        return {key: _for_file(element) for key, element in value.items()}
    if isinstance(value, list):
        return [_for_file(element) for element in value]
    return value


def reminder(uid, seconds_from_start=0.0, kind=0, **more):
    """A reminder relative to the start of its event."""
    return {"uid": uid, "type": kind, "rel": seconds_from_start, **more}


def absolute_reminder(uid, moment, kind=0, **more):
    return {"uid": uid, "type": kind, "abs": moment, **more}


def event(uid, start, *reminders, **more):
    """An event whose title is its uid, unless given. Without reminders, it has one at its start."""
    return {"uid": uid, "title": uid, "type": 0, "date": start,
            "rem": list(reminders) or [reminder(uid + "-at-start")], **more}


def deletion_notice(uid):
    return {"uid": uid, "del": True}
