"""Calendar folders with as many events as anybody has."""
import random

_HEAD = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//test//EN\r\n"
_ZONE = """BEGIN:VTIMEZONE
TZID:Europe/Berlin
BEGIN:DAYLIGHT
TZOFFSETFROM:+0100
TZOFFSETTO:+0200
TZNAME:CEST
DTSTART:19700329T020000
RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3
END:DAYLIGHT
BEGIN:STANDARD
TZOFFSETFROM:+0200
TZOFFSETTO:+0100
TZNAME:CET
DTSTART:19701025T030000
RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10
END:STANDARD
END:VTIMEZONE
""".replace("\n", "\r\n")
_RULES = ("FREQ=WEEKLY;BYDAY=MO,WE", "FREQ=YEARLY", "FREQ=MONTHLY;BYDAY=2TU", "FREQ=DAILY;COUNT=30")


class ManyEvents:
    """Events of twenty years, every tenth of them a series, half of them with an alarm."""

    def __init__(self, now_year, seed=1):
        self._years = (now_year - 18, now_year + 1)
        self._random = random.Random(seed)

    def event(self, number, title=None):
        chance = self._random
        day = f"{chance.randint(*self._years)}{chance.randint(1, 12):02}{chance.randint(1, 28):02}"
        lines = ["BEGIN:VEVENT", f"UID:event-{number}-{chance.getrandbits(64):x}@example.org",
                 "DTSTAMP:20260101T000000Z", *self._times(number, day)]
        if number % 10 == 0:
            lines.append("RRULE:" + _RULES[number // 10 % len(_RULES)])
        lines += [f"SUMMARY:{title or f'Meeting number {number} of the working group'}",
                  f"LOCATION:Room {number % 100}\\, second floor",
                  "DESCRIPTION:We talk about the things of last week\\, and then about those of",
                  "  the next one. Please bring your notes.", "CATEGORIES:Work"]
        if number % 2 == 0:
            lines += ["BEGIN:VALARM", "ACTION:DISPLAY", "DESCRIPTION:Reminder", "TRIGGER:-PT15M",
                      "END:VALARM"]
        return "\r\n".join(lines + ["END:VEVENT", ""])

    @staticmethod
    def _times(number, day):
        hour = 8 + number % 10
        if number % 10 < 6:
            return (f"DTSTART;TZID=Europe/Berlin:{day}T{hour:02}0000",
                    f"DTEND;TZID=Europe/Berlin:{day}T{hour:02}4500")
        if number % 10 < 8:
            return f"DTSTART:{day}T{hour:02}0000Z", "DURATION:PT1H"
        return (f"DTSTART;VALUE=DATE:{day}",)


def calendar_text(events, has_zone):
    return _HEAD + (_ZONE if has_zone else "") + "".join(events) + "END:VCALENDAR\r\n"


def write_single_files(folder, events, count, has_zone):
    """Ten folders of files with one event each."""
    for number in range(count):
        inner = folder / f"folder{number % 10}"
        inner.mkdir(parents=True, exist_ok=True)
        text = calendar_text([events.event(number)], has_zone)
        (inner / f"event{number}.ics").write_text(text, newline="", encoding="utf-8")


def write_big_files(folder, events, count):
    """Five files with all events, and beside them a small one."""
    folder.mkdir(parents=True)
    for number in range(5):
        text = calendar_text((events.event(index) for index in range(number, count, 5)), True)
        (folder / f"big{number}.ics").write_text(text, newline="", encoding="utf-8")
    (folder / "small.ics").write_text(calendar_text([events.event(count)], False), newline="",
                                      encoding="utf-8")
