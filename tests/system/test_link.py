"""The host's operations as calls over the bus."""
import os
import unittest

from gi.repository import Gio, GLib

from support.agent import INSPECTOR, NAME, PATH, PROTOCOL, batch, call
from support.system_test import SystemTest
from support.values import dictionaries, event, in_seconds

VERSION = os.environ["PLENZO_VERSION"]


class TheVersionHandshake(SystemTest):
    def test_knows_the_agents_own_version_from_every_other(self):
        agents_own = VERSION + "t"
        versions = [agents_own, VERSION, "", "t", agents_own + "t", " " + agents_own, agents_own + "\n",
                    agents_own.upper(), "9" * 1_000_000, "ver\ufdd0sion", agents_own]
        self.start_agent()
        for version in versions:
            self.link.send("Version", GLib.Variant("(s)", (version,)))
        expected = ["PlenzoAlarm Version" if version == agents_own else "PlenzoAlarm Relaunch"
                    for version in versions]
        self.announcements.wait_for("PlenzoAlarm Version", 2)
        self.assertEqual(self.announcements.heard[2:], expected)


class Operations(SystemTest):
    """On an agent that runs and has one alarm pending."""

    def setUp(self):
        super().setUp()
        self.start_agent()
        self.link.push([event("there", in_seconds(600))])

    def error_of(self, interface, method, arguments):
        with self.assertRaises(GLib.Error) as caught:
            call(self.link.connection, NAME, PATH, interface, method, arguments)
        return Gio.DBusError.get_remote_error(caught.exception)

    def test_are_refused_with_arguments_of_other_types(self):
        text, flag = GLib.Variant("s", ""), False
        wrong = {"Version": {"(i)": (1,), "(ss)": ("", ""), "()": (), "(v)": (text,), "(as)": ([],)},
                 "AlarmsUpdated": {"(aa{sv})": ([],), "(a{sv}b)": ({}, flag), "(aa{ss}b)": ([], flag),
                                   "(baa{sv})": (flag, []), "(aa{sv}i)": ([], 0), "(avb)": ([], flag)},
                 "AlarmsUpdatedFromFile": {"(ib)": (0, flag), "(s)": ("",), "(sb)": ("", flag), "()": ()},
                 "SourceListUpdated": {"(a{sv})": ({},), "(as)": ([],), "(aa{sv}b)": ([], flag)},
                 "PrefsUpdated": {"(aa{sv})": ([],), "(a{ss})": ({},), "(a{iv})": ({},), "(s)": ("",)},
                 "WeatherUpdated": {"(s)": ("",), "(aa{sv})": ([],)},
                 "PrepareToStop": {"(b)": (flag,), "(s)": ("",)}}
        for method, examples in wrong.items():
            for signature, values in examples.items():
                with self.subTest(method=method, signature=signature):
                    arguments = GLib.Variant(signature, values)
                    self.assertEqual(self.error_of(PROTOCOL, method, arguments),
                                     "org.freedesktop.DBus.Error.InvalidArgs")
        self.assertEqual(self.link.pending_uids(), ["there"])

    def test_are_known_by_their_names_alone(self):
        for interface, method in ((PROTOCOL, "version"), (PROTOCOL, "AlarmsDeleted"),
                                  (INSPECTOR, "Version"), ("org.plenzo.Unknown", "Version")):
            with self.subTest(interface=interface, method=method):
                self.assertIn(self.error_of(interface, method, GLib.Variant("(s)", ("1",))),
                              ("org.freedesktop.DBus.Error.UnknownMethod",
                               "org.freedesktop.DBus.Error.UnknownInterface"))

    def test_are_described_as_one_way(self):
        answer = call(self.link.connection, NAME, PATH, "org.freedesktop.DBus.Introspectable",
                      "Introspect")
        description = Gio.DBusNodeInfo.new_for_xml(answer.unpack()[0]).lookup_interface(PROTOCOL)
        operations = {method.name: ("".join(argument.signature for argument in method.in_args),
                                    len(method.out_args),
                                    Gio.DBusAnnotationInfo.lookup(
                                        method.annotations, "org.freedesktop.DBus.Method.NoReply"))
                      for method in description.methods}
        self.assertEqual(operations, {name: (signature, 0, "true") for name, signature in (
            ("Version", "s"), ("AlarmsUpdated", "aa{sv}b"), ("AlarmsUpdatedFromFile", "hb"),
            ("SourceListUpdated", "aa{sv}"), ("PrefsUpdated", "a{sv}"),
            ("WeatherUpdated", "a{sv}"), ("PrepareToStop", ""))})

    def test_answer_nothing_to_a_caller_that_waits(self):
        arguments = {"Version": GLib.Variant("(s)", ("1",)), "AlarmsUpdated": batch([], True),
                     "SourceListUpdated": GLib.Variant.new_tuple(dictionaries([])),
                     "PrefsUpdated": GLib.Variant("(a{sv})", ({},)),
                     "WeatherUpdated": GLib.Variant("(a{sv})", ({},)), "PrepareToStop": None}
        for method, values in arguments.items():
            with self.subTest(method):
                self.assertEqual(self.link.call(method, values).unpack(), ())
        self.assertEqual(self.link.pending_uids(), ["there"])

    def test_are_carried_out_for_callers_that_do_not_wait_and_are_gone(self):
        for method in ("PendingAlarms", "Unknown"):
            message = Gio.DBusMessage.new_method_call(NAME, PATH, INSPECTOR, method)
            message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
            for _ in range(10):
                connection = self.session.connect()
                connection.send_message(message.copy(), Gio.DBusSendMessageFlags.NONE)
                connection.flush_sync(None)
                connection.close_sync(None)
        self.assertEqual(self.link.pending_uids(), ["there"])

    def test_come_from_several_hosts_at_once(self):
        others = [self.session.connect() for _ in range(20)]
        for number, connection in enumerate(others):
            call(connection, NAME, PATH, PROTOCOL, "AlarmsUpdated",
                 batch([event(f"host {number:02}", in_seconds(700 + number))], True))
        for connection in others:
            connection.close_sync(None)
        self.assertEqual(self.link.pending_uids(),
                         ["there"] + [f"host {number:02}" for number in range(20)])


if __name__ == "__main__":
    unittest.main()
