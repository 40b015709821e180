"""E-mail alarms, which go through the script of the user's mail client."""
import signal
import time
import unittest

from support.host_commands import HostCommands
from support.notification_server import NotificationServer
from support.system_test import SystemTest
from support.values import event, in_seconds, now_seconds, reminder

MAIL = 2
SIX_ITEMS_AND_THE_NAME = 7
REFERENCE_SECONDS_SINCE_1970 = time.time() - now_seconds()


class MailAlarms(SystemTest):
    def setUp(self):
        super().setUp()
        self.host = HostCommands(self.session)
        self.notes = self.session.folder / "mails"
        self.scripts = self.session.folder / "data" / "PlenzoAlarm" / "Scripts"
        self.scripts.mkdir(parents=True)

    def program(self, path, *lines):
        path.write_text("\n".join(["#!/bin/sh", f"cd '{self.session.folder}'", *lines, ""]))
        path.chmod(0o700)

    def install_client(self, name, terminal, *lines):
        """The default for mail."""
        program = self.session.folder / name
        self.program(program, *lines)
        self.install_default(name, program, terminal)

    def install_default(self, name, program, terminal):
        applications = self.session.folder / "data" / "applications"
        (applications / f"{name}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName={name}\nExec={program} %u\n"
            f"Terminal={str(terminal).lower()}\nMimeType=x-scheme-handler/mailto;\n")
        with open(self.session.folder / "config" / "mimeapps.list", "a") as defaults:
            defaults.write(f"x-scheme-handler/mailto={name}.desktop\n")

    def install_script(self, name, *lines):
        """The user's own; it notes its arguments."""
        self.program(self.scripts / name, "printf '%s\\0' \"$@\" >>mails",
                     'echo "$PLENZO_MAIL_CLIENT" >>clients', *lines)

    def mails(self):
        """The arguments of each call."""
        texts = self.notes.read_bytes().decode().split("\0")[:-1] if self.notes.exists() else []
        size = SIX_ITEMS_AND_THE_NAME
        return [texts[start:start + size] for start in range(0, len(texts), size)]

    def start_with_notifications(self):
        self.server = NotificationServer(self.session.connect())
        agent = self.start_agent()
        self.link.deliver_alarms()
        return agent

    def push_mail(self, uid, recipients, seconds=2, **more):
        due = in_seconds(seconds)
        self.link.push([event(uid, due, reminder(uid, kind=MAIL, to=recipients), **more),
                        event("shown", due, reminder("shown"))])
        return due

    def wait_for_acknowledgement(self, uid):
        self.wait_until(lambda: self.acknowledged(uid),
                        f"{uid} is acknowledged; heard {self.host.heard()}")

    def test_run_the_users_script_once_for_each_recipient(self):
        self.install_client("birdmail", True)
        self.install_script("birdmail.desktop")
        self.start_with_notifications()
        title = "$(touch touched) `touch touched`; 'a' \"b\" \\ \u202eüber"
        notes = "first\nBcc: x@y\n.\n" + "€" * 50_000
        self.push_mail("review", ["ana@example.org", "", "-x@example.org", "bo@example.org"],
                       title=title, notes=notes)
        self.wait_until(lambda: len(self.mails()) == 2, "two mails")
        self.wait_for_acknowledgement("review")
        first, second = self.mails()
        self.assertEqual(first[:2], ["mail_attachment", f"Plenzo Alarm - {title}"])
        self.assertIn(f"\n\n{title}\n\nfirst\nBcc: x@y\n.\n€€€", first[2])
        self.assertTrue(first[2].endswith("€…"), first[2][-5:])
        self.assertEqual(first[3:], ["", "1", "ana@example.org", ""])
        self.assertEqual(second, first[:5] + ["bo@example.org", ""])
        self.assertEqual((self.session.folder / "clients").read_text(), "birdmail\nbirdmail\n")
        self.assertFalse((self.session.folder / "touched").exists())

    def test_go_to_a_client_that_wrote_the_entry_of_the_default_itself(self):
        programs = self.session.folder / "elsewhere"
        programs.mkdir()
        self.program(programs / "thunderbird", "printf '%s\\0' \"$@\" >>calls")
        self.install_default("userapp-Thunderbird-7AB1C2", programs / "thunderbird", False)
        self.start_with_notifications()
        self.push_mail("review", ["ana@example.org"])
        calls = self.session.folder / "calls"
        self.wait_until(lambda: calls.exists() and "-compose" in calls.read_text(), "a composer")
        self.assertIn("mailto:ana@example.org?", calls.read_text())

    def test_hold_up_neither_other_alarms_nor_the_agents_end_when_the_script_hangs(self):
        self.install_client("birdmail", True)
        folder = self.session.folder
        self.install_script("birdmail", f"trap '' TERM; while [ -d '{folder}' ]; do sleep 1; done")
        agent = self.start_with_notifications()
        due = self.push_mail("review", ["ana@example.org", "bo@example.org"])
        self.wait_until(lambda: "shown" in self.server.summaries(), "the other alarm")
        shown = next(one for one in self.server.delivered if one.summary == "shown")
        late = shown.seconds_since_1970 - REFERENCE_SECONDS_SINCE_1970 - due.seconds
        self.assertLess(late, 1)
        self.wait_for_acknowledgement("review")
        self.wait_until(lambda: len(self.mails()) == 1, "the script runs")
        begin = time.monotonic()
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertLess(time.monotonic() - begin, 10)
        self.assertEqual(len(self.mails()), 1)

    def test_give_a_client_that_is_launched_five_seconds(self):
        self.install_client("birdmail", False, "date +%s.%N >>launches",
                            f"while [ -d '{self.session.folder}' ]; do sleep 1; done")
        self.install_script("birdmail", "date +%s.%N >>calls")
        self.start_with_notifications()
        self.push_mail("review", ["ana@example.org", "bo@example.org"])
        self.wait_until(lambda: len(self.mails()) == 2, "two mails")
        launch, = self.times("launches")
        self.wait_until(lambda: len(self.times("calls")) == 2, "two calls")
        self.assertGreater(self.times("calls")[0] - launch, 4.5)
        self.push_mail("retro", ["cy@example.org"])
        self.wait_until(lambda: len(self.mails()) == 3, "the third mail")
        self.assertEqual(len(self.times("launches")), 1)

    def test_that_had_not_begun_at_the_sessions_end_go_out_in_the_next_once(self):
        self.install_client("birdmail", False, "date +%s.%N >>launches",
                            f"while [ -d '{self.session.folder}' ]; do sleep 1; done")
        self.install_script("birdmail")
        agent = self.start_with_notifications()
        due = in_seconds(2)
        self.link.push([
            event("review", due,
                  reminder("review", kind=MAIL, to=["ana@example.org", "bo@example.org"])),
            event("retro", due, reminder("retro", kind=MAIL, to=["cy@example.org"]))])
        self.wait_until(lambda: self.times("launches"), "the client starts")
        self.assertEqual(self.acknowledged("review"), [])
        self.assertEqual(agent.ask_to_end(signal.SIGHUP), 0)
        self.assertEqual(self.mails(), [])
        agent = self.start_agent()
        self.wait_until(lambda: len(self.mails()) == 3, "three mails")
        self.wait_for_acknowledgement("review")
        self.wait_for_acknowledgement("retro")
        self.assertEqual(agent.ask_to_end(signal.SIGHUP), 0)
        self.start_agent()
        self.push_mail("plan", ["dan@example.org"])
        self.wait_for_acknowledgement("plan")
        self.wait_until(lambda: len(self.mails()) == 4, "the fourth mail")
        self.assertEqual([mail[5].split("@")[0] for mail in self.mails()], ["cy", "ana", "bo", "dan"],
                         "in the order of the titles, once")
        for uid in ("review", "retro", "plan"):
            self.assertEqual(len(self.acknowledged(uid)), 1, uid)

    def test_that_had_begun_at_the_sessions_end_go_to_everybody_at_once(self):
        self.install_client("birdmail", True)
        self.install_script("birdmail", f"while [ -d '{self.session.folder}' ]; do sleep 1; done")
        agent = self.start_with_notifications()
        self.push_mail("review", ["ana@example.org", "bo@example.org", "cy@example.org"])
        self.wait_until(lambda: len(self.mails()) == 1, "the script runs")
        self.wait_for_acknowledgement("review")
        self.assertEqual(agent.ask_to_end(signal.SIGHUP), 0)
        self.wait_until(lambda: len(self.mails()) == 3, "three mails")
        self.assertEqual(sorted(mail[5].split("@")[0] for mail in self.mails()), ["ana", "bo", "cy"])

    def acknowledged(self, uid):
        return [command for command in self.host.heard()
                if "acknowledge" in command and uid in command]

    def times(self, name):
        path = self.session.folder / name
        return [float(line) for line in path.read_text().split()] if path.exists() else []

    def test_are_done_also_without_a_client_or_a_script(self):
        agent = self.start_with_notifications()
        self.push_mail("nobody", ["ana@example.org"])
        self.wait_for_acknowledgement("nobody")
        self.install_client("birdmail", True)
        self.push_mail("unknown", ["ana@example.org"])
        self.wait_for_acknowledgement("unknown")
        self.wait_until(lambda: "shown" in self.server.summaries(), "the agent lives on")
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(agent.errors(), "")


if __name__ == "__main__":
    unittest.main()
