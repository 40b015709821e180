#!/usr/bin/python3
"""Compares the components that quick entries become, as python3-icalendar reads them, with what the
table of entries says.

Usage: quick_components.py PROGRAM TABLE
"""
import datetime
import subprocess
import sys

import icalendar


def expected_rows(path):
    """The fields of each entry by the number of its line, and its zone."""
    zone = ""
    rows = {}
    with open(path, encoding="utf-8") as table:
        for number, line in enumerate(table, 1):
            if line.startswith("now "):
                zone = line.split()[2]
            elif line.strip() and not line.startswith("#"):
                fields = [field.strip() for field in line.split("|")]
                rows[number] = (fields[1:7], zone)
    return rows


def time_text(component, name, zone):
    if name not in component:
        return ""
    value = component[name].dt
    if not isinstance(value, datetime.datetime):
        return value.strftime("%Y-%m-%d")
    assert component[name].params["TZID"] == zone, component[name].params
    return value.strftime("%Y-%m-%dT%H:%M")


def fields_of(component, zone):
    is_event = component.name == "VEVENT"
    start = time_text(component, "DTSTART", zone)
    end = time_text(component, "DTEND" if is_event else "DUE", zone)
    rule = component["RRULE"].to_ical().decode() if "RRULE" in component else ""
    return ["event" if is_event else "to-do", str(component["SUMMARY"]), start,
            end or start, parts_of(rule), str(component.get("LOCATION", ""))]


def parts_of(rule):
    """The parts of a rule in one order."""
    return sorted(rule.split(";")) if rule else []


program, table = sys.argv[1:]
calendar = icalendar.Calendar.from_ical(subprocess.run([program], check=True, capture_output=True).stdout)
rows = expected_rows(table)
components = {int(component["UID"]): component for component in calendar.subcomponents}
assert components.keys() == rows.keys() and len(rows) > 100
faults = 0
for number, (fields, zone) in rows.items():
    fields[4] = parts_of(fields[4])
    found = fields_of(components[number], zone)
    if found != fields:
        faults += 1
        print(f"line {number}: {found}, and not {fields}")
print(f"{len(rows)} entries compared, {faults} differ")
sys.exit(1 if faults else 0)
