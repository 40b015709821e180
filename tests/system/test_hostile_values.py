"""Messages with values that no host would send. The agent lives, and takes the rest."""
import unittest

from gi.repository import Gio, GLib

from support.agent import NAME, PATH, PROTOCOL, batch, call
from support.system_test import SystemTest
from support.values import (Date, absolute_reminder, dictionaries, dictionary, event, in_seconds, now_seconds,
                            reminder, variant)

NOT_A_NUMBER, INFINITE, ABSURD = float("nan"), float("inf"), 1e300


def values_of_every_type():
    path, signature = GLib.Variant("o", "/a"), GLib.Variant("g", "a{sv}")
    return {"text": "text", "number": 7, "large": 2**64 - 1, "real": -0.5, "flag": True, "date": Date(5.0),
            "data": b"\0\xff", "list": [1], "texts": ["a"], "records": [{"uid": "x"}], "record": {"uid": "x"},
            "empty list": [], "empty record": {}, "path": path, "signature": signature,
            "struct": GLib.Variant("(ii)", (1, 2)), "numbers": GLib.Variant("ai", [1, 2]),
            "map": GLib.Variant("a{is}", {1: "a"}), "variant": GLib.Variant("v", variant("inner")),
            "date in a struct": GLib.Variant("((d))", ((1.0,),))}


class HostileValues(SystemTest):
    def setUp(self):
        super().setUp()
        self.agent = self.start_agent()
        self.soon = in_seconds(3600)

    def assert_it_lives(self):
        """It still takes what is sent in order, and answers."""
        self.link.push([event("after", self.soon)])
        self.assertEqual(self.link.pending_uids(), ["after"])
        self.assertTrue(self.agent.is_running())

    def test_of_every_type_under_every_key_take_nothing_along(self):
        good = event("good", self.soon, reminder("r"))
        for key in ("uid", "del", "type", "title", "location", "notes", "date", "end", "allDay", "floating",
                    "carry", "completed", "completionDate", "colInt", "color", "rem", "cuid", "alarm"):
            records = [{**event("odd", self.soon), key: value} for value in values_of_every_type().values()]
            self.link.push([*records, good])
            rows = self.link.pending()
            self.assertIn(("good", "r"), [(row.get("uid"), row["reminderUid"]) for row in rows], key)
        self.assert_it_lives()

    def test_of_every_type_under_every_key_of_a_reminder_take_nothing_along(self):
        for key in ("uid", "type", "abs", "rel", "ack", "url", "to"):
            reminders = [{**reminder("odd"), key: value} for value in values_of_every_type().values()]
            self.link.push([event("e", self.soon, *reminders, reminder("good"))])
            self.assertIn("good", [row.get("reminderUid") for row in self.link.pending()], key)
        self.assert_it_lives()

    def test_among_the_reminders_are_left_out(self):
        odd = [value for value in values_of_every_type().values() if not isinstance(value, dict)]
        self.link.push([{**event("e", self.soon), "rem": [*odd, reminder("good", -60)]},
                        {**event("no list", self.soon), "rem": "rem"}])
        self.assertEqual([row["reminderUid"] for row in self.link.pending()], ["good"])

    def test_of_dates_that_no_calendar_has_make_no_alarm(self):
        odd = [Date(seconds) for seconds in
               (NOT_A_NUMBER, INFINITE, -INFINITE, ABSURD, -ABSURD, 1e18, -1e18, 5e-324)]
        now = now_seconds()
        records = [event("good", self.soon)]
        for date in odd:
            records += [event("date", date), event("all day", date, allDay=True),
                        event("floating", date, floating=True),
                        event("abs", date, absolute_reminder("r", date)),
                        event("done", self.soon, completionDate=date),
                        event("rel", self.soon, reminder("r", date.seconds))]
        self.link.push(records)
        rows = self.link.pending()
        self.assertIn("good", [row["uid"] for row in rows])
        for row in rows:
            self.assertTrue(now < row["fireDate"][0] < now + 14 * 86400, row)
        self.assert_it_lives()

    def test_of_dates_in_what_is_not_asked_for_change_nothing(self):
        odd = [Date(seconds) for seconds in (NOT_A_NUMBER, INFINITE, ABSURD, -ABSURD)]
        acknowledged = [date if number % 2 else Date(-ABSURD) for number, date in enumerate(odd)]
        self.link.push([event(f"e{number}", self.soon, reminder("r", ack=acknowledged[number]), end=date)
                        for number, date in enumerate(odd)])
        self.assertEqual([row["fireDate"][0] for row in self.link.pending()
                          if row["uid"] in ("e0", "e2")], [self.soon.seconds] * 2)
        self.assert_it_lives()

    def test_of_a_megabyte_are_taken_whole(self):
        long = "ä" * 500_000
        self.link.push([event(long, self.soon, reminder(long), title=long, location=long, **{long: long})])
        row, = self.link.pending()
        self.assertEqual((row["uid"], row["title"], row["reminderUid"]), (long, long, long))
        self.link.push([event("many", self.soon, **{f"key {number}": number for number in range(20_000)})])
        self.assertEqual(self.link.pending_uids(), ["many"])

    def test_with_the_same_keys_over_and_over_are_one_record(self):
        entries = [GLib.Variant.new_dict_entry(variant(key), GLib.Variant("v", variant(value)))
                   for _ in range(1000) for key, value in event("twice", self.soon).items()]
        record = GLib.Variant.new_array(GLib.VariantType("{sv}"), entries)
        records = GLib.Variant.new_array(GLib.VariantType("a{sv}"), [record])
        self.link.call("AlarmsUpdated", GLib.Variant.new_tuple(records, GLib.Variant("b", False)))
        self.assertEqual(self.link.pending_uids(), ["twice"])

    def test_in_the_other_byte_order_are_taken_too(self):
        message = Gio.DBusMessage.new_method_call(NAME, PATH, PROTOCOL, "AlarmsUpdated")
        message.set_body(batch([event("swapped", self.soon, data=b"bytes", numbers=[1, 2.0])]))
        message.set_byte_order(Gio.DBusMessageByteOrder.BIG_ENDIAN)
        self.link.connection.send_message(message, Gio.DBusSendMessageFlags.NONE)
        self.assertEqual(self.link.pending_uids(), ["swapped"])

    def test_for_the_other_operations_are_borne(self):
        odd = values_of_every_type()
        nested = [{"children": [{"children": value, "uid": value, "colInt": value}]}
                  for value in odd.values()]
        for arguments in (odd, {"children": nested}, {"alarmsOmitCalendars": [1, {}]}, {"": ""}):
            self.link.call("WeatherUpdated", GLib.Variant.new_tuple(dictionary(arguments)))
            self.link.call("SourceListUpdated", GLib.Variant.new_tuple(dictionaries([arguments, *nested])))
            self.link.set_preferences(arguments)
        self.assert_it_lives()


class DeepNests(SystemTest):
    """The bus breaks the connection over a message that is nested too deep for it, so each has a
    connection of its own."""

    def passes(self, nest, depth):
        value = variant("bottom")
        for _ in range(depth):
            value = nest(value)
        message = {"nest": value, "children": value, "uid": "x"}
        connection = self.session.connect()
        try:
            call(connection, NAME, PATH, PROTOCOL, "AlarmsUpdated",
                 batch([message, event("good", self.soon), {**event("y", self.soon), "rem": value}]))
            for operation in ("SourceListUpdated", "WeatherUpdated", "PrefsUpdated"):
                records = dictionaries([message]) if operation == "SourceListUpdated" else dictionary(message)
                call(connection, NAME, PATH, PROTOCOL, operation, GLib.Variant.new_tuple(records))
            self.assertIn("good", self.link.pending_uids(), f"depth {depth}")
            return True
        except GLib.Error:
            return not connection.is_closed()

    def test_are_borne_as_deep_as_the_bus_lets_them_through(self):
        self.soon = in_seconds(3600)
        agent = self.start_agent()
        nests = {"variants": lambda value: GLib.Variant("v", value),
                 "records": lambda value: GLib.Variant("a{sv}", {"children": value}),
                 "lists": lambda value: GLib.Variant("av", [value]),
                 "record lists": lambda value: GLib.Variant("aa{sv}", [{"rem": value}]),
                 "structs": lambda value: GLib.Variant.new_tuple(value, variant(1))}
        for name, nest in nests.items():
            with self.subTest(name):
                passing = [depth for depth in range(1, 64) if self.passes(nest, depth)]
                self.assertGreater(max(passing), 10)
                self.assertTrue(agent.is_running())
                self.link.push([event("after", self.soon)])
                self.assertEqual(self.link.pending_uids(), ["after"])


if __name__ == "__main__":
    unittest.main()
