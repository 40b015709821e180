"""The scripts of the mail clients: with programs in the clients' places that note what they are
called with, and, where it is installed, with a real client that sends."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import urllib.parse

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "resources" / "scripts"
HELPERS = "common.sh"
COMPOSERS = ("thunderbird", "evolution", "geary", "claws-mail", "sylpheed")
SENDERS = ("mutt", "neomutt", "s-nail")
SUBJECT = "Größe & \"Q\"; 'x', y=1? %41 $(touch touched)\nBcc: evil@example.org"
HEADER = SUBJECT.replace("\n", " ")
BODY = "ü €, `touch touched` <b> 50%\n~!touch touched\n.\n'q' \u202eright"


class MailScripts(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="plenzo-scripts-")
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.environment = {"PATH": f"{self.programs}:{os.environ['PATH']}", "LC_ALL": "C",
                            "HOME": str(self.folder), "MAILRC": str(self.folder / "rc")}

    def put(self, name, *lines):
        path = self.programs / name
        path.write_text("\n".join(["#!/bin/sh", f"cd '{self.folder}'", *lines, ""]))
        path.chmod(0o700)

    def put_client(self, name, exit_status=0):
        self.put(name, "printf '%s\\0' \"$@\" >arguments", "cat >input", f"exit {exit_status}")

    def arguments(self):
        return (self.folder / "arguments").read_bytes().decode().split("\0")[:-1]

    def run_script(self, name, subject=SUBJECT, body=BODY, attachment="", send="1",
                   address="ana@example.org", recipient=""):
        run = subprocess.run([SCRIPTS / name, "mail_attachment", subject, body, attachment, send,
                              address, recipient], env=self.environment, cwd=self.folder,
                             stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=False)
        self.assertFalse((self.folder / "touched").exists())
        return run.returncode

    def message_of(self, url):
        address, _, query = url.removeprefix("mailto:").partition("?")
        fields = dict(urllib.parse.parse_qsl(query, keep_blank_values=True, strict_parsing=True))
        return urllib.parse.unquote(address, errors="strict"), fields

    def test_are_known_to_this_test(self):
        there = {path.name for path in SCRIPTS.iterdir() if os.access(path, os.X_OK)}
        self.assertEqual(there, {*COMPOSERS, *SENDERS, "kmail"})
        self.assertFalse(os.access(SCRIPTS / HELPERS, os.X_OK))

    def test_of_composers_hand_over_a_url_of_the_message(self):
        for name in COMPOSERS:
            with self.subTest(name):
                self.put_client(name)
                self.assertEqual(self.run_script(name), 0)
                address, fields = self.message_of(self.arguments()[-1])
                self.assertEqual(address, "ana@example.org")
                self.assertEqual(fields, {"subject": HEADER, "body": BODY.replace("\n", "\r\n")})

    def test_of_composers_shorten_what_no_argument_could_hold(self):
        self.put_client("evolution")
        self.assertEqual(self.run_script("evolution", body="€" * 40_000, subject="ü" * 40_000), 0)
        url = self.arguments()[-1]
        self.assertLess(len(url), 131_072)
        _, fields = self.message_of(url)
        for text in fields.values():
            self.assertTrue(text.endswith("…") and text[:-1].strip("€ü") == "", text[-5:])

    def test_fail_when_the_client_does_or_is_missing(self):
        self.environment["PATH"] = str(self.programs)
        for name in ("sh", "tr", "od", "awk", "sed", "cat", "sleep", "setsid"):
            (self.programs / name).symlink_to(shutil.which(name))
        for name in ("evolution", "mutt", "s-nail"):
            with self.subTest(name):
                self.assertNotEqual(self.run_script(name), 0)
                self.put_client(name, exit_status=3)
                self.assertNotEqual(self.run_script(name), 0)
                self.put_client(name)
                self.assertEqual(self.run_script(name), 0)

    def test_call_no_client_for_what_is_no_address(self):
        for name in (*COMPOSERS, *SENDERS, "kmail"):
            self.put_client(name)
            for address in ("", "-x", "--", "|touch touched", "/etc/x", "+f", "a@b\nBcc: c@d", "a\x7f"):
                with self.subTest((name, address)):
                    self.assertNotEqual(self.run_script(name, address=address), 0)
        self.assertFalse((self.folder / "arguments").exists())

    def test_of_senders_hand_the_body_to_their_input(self):
        for name in SENDERS:
            with self.subTest(name):
                self.put_client(name)
                attachment = "/tmp/a, b.txt"
                self.assertEqual(self.run_script(name, attachment=attachment,
                                                 recipient='"Bo" <x@y>, Bear\n'), 0)
                arguments = self.arguments()
                self.assertEqual(arguments[arguments.index("-s") + 1], HEADER)
                self.assertEqual(arguments[arguments.index("-a") + 1], attachment)
                self.assertEqual(" ".join(arguments[-1].split()), "Bo x y Bear <ana@example.org>")
                self.assertEqual((self.folder / "input").read_text(), BODY + "\n")

    def test_of_senders_open_a_terminal_for_what_is_to_be_left_open(self):
        self.put_client("xdg-terminal-exec")
        for name in SENDERS:
            with self.subTest(name):
                self.put_client(name)
                self.assertEqual(self.run_script(name, send="0"), 0)
                self.assertEqual(pathlib.Path(self.arguments()[0]).name, name)

    def test_of_kmail_opens_a_composer(self):
        self.put_client("kmail")
        for send in ("1", "0"):
            self.assertEqual(self.run_script("kmail", attachment="/tmp/a, b", send=send,
                                             recipient="Bo: Bear"), 0)
            self.assertEqual(self.arguments(),
                             ["--composer", "--subject", HEADER, "--body", BODY, "--attach",
                              "file:///tmp/a%2C%20b", "--", "Bo  Bear <ana@example.org>"])
        self.assertNotEqual(self.run_script("kmail", address="file:///etc/passwd"), 0)

    def test_of_mutt_sends_with_the_real_one(self):
        if shutil.which("mutt") is None:
            self.skipTest("mutt is not installed")
        self.put("sendmail", "printf '%s\\n' \"$*\" >envelope", "cat >sent")
        (self.folder / ".muttrc").write_text(
            f"set sendmail={self.programs}/sendmail\nset from=me@example.org\nset send_charset=utf-8\n")
        self.assertEqual(self.run_script("mutt"), 0)
        self.assertEqual((self.folder / "envelope").read_text().split()[-1], "ana@example.org")
        headers, _, body = (self.folder / "sent").read_text().partition("\n\n")
        self.assertEqual(body, BODY + "\n")
        self.assertNotIn("\nBcc", headers)
        self.put("sendmail", "exit 1")
        self.assertNotEqual(self.run_script("mutt"), 0)


if __name__ == "__main__":
    unittest.main()
