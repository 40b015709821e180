"""From the start of the program to its end."""
import signal
import unittest

from support.system_test import SystemTest


class Launch(SystemTest):
    def test_announces_itself_once_and_only_when_it_can_be_reached(self):
        agent = self.start_agent()
        self.link.version("unknown")
        self.announcements.wait_for("PlenzoAlarm Relaunch")
        self.assertEqual(agent.ask_to_end(), 0)
        self.announcements.wait_for("name released")
        self.assertEqual(self.announcements.heard,
                         ["name taken", "PlenzoAlarm Launched", "PlenzoAlarm Relaunch",
                          "PlenzoAlarm Quit", "name released"])

    def test_makes_its_folder_readable_by_the_user_alone(self):
        self.start_agent()
        folder = self.session.folder / "data" / "PlenzoAlarm"
        self.assertTrue(folder.is_dir())
        self.assertEqual(folder.stat().st_mode & 0o777, 0o700)

    def test_succeeds_without_a_folder_of_its_own(self):
        cases = {"a file in its place": {"XDG_DATA_HOME": "/dev/null"},
                 "a folder that nobody can write to": {"XDG_DATA_HOME": "/proc"}}
        for case, variables in cases.items():
            with self.subTest(case):
                agent = self.start_agent(environment={**self.session.environment, **variables})
                self.assertEqual(self.link.pending(), [])
                self.assertEqual(agent.ask_to_end(), 0)
                self.assertEqual(agent.errors(), "")

    def test_takes_relative_folders_for_unset_ones(self):
        relative = {"XDG_DATA_HOME": "relative-data", "XDG_CONFIG_HOME": "relative-config"}
        self.start_agent(environment={**self.session.environment, **relative})
        self.link.set_preferences({"alarmsDaysToShow": 5})
        self.assertEqual(self.link.pending(), [])
        self.assertEqual(list(self.session.folder.glob("relative-*")), [])
        home = self.session.folder / "home"
        self.assertTrue((home / ".local/share/PlenzoAlarm").is_dir())
        self.assertTrue((home / ".config/PlenzoAlarm/Preferences.plist").is_file())

    def test_writes_no_preferences(self):
        agent = self.start_agent()
        self.link.call("PrepareToStop")
        self.assertEqual(agent.ask_to_end(), 0)
        self.assertEqual(list((self.session.folder / "config").iterdir()), [])


class End(SystemTest):
    def test_follows_a_signal_and_is_announced(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal.Signals(number).name):
                self.announcements.heard.clear()
                agent = self.start_agent()
                self.assertEqual(agent.ask_to_end(number), 0)
                self.announcements.wait_for("name released")
                self.assertEqual(self.announcements.heard[-2:], ["PlenzoAlarm Quit", "name released"])
                self.assertEqual(self.announcements.heard.count("PlenzoAlarm Quit"), 1)
                self.assertEqual(agent.errors(), "")

    def test_is_announced_once_however_often_it_is_asked_for(self):
        agent = self.start_agent()
        for _ in range(20):
            agent.process.send_signal(signal.SIGTERM)
        # A signal that comes when all is done ends the process there and then.
        self.assertIn(agent.wait_for_end(), (0, -signal.SIGTERM))
        self.announcements.wait_for("name released")
        self.assertEqual(self.announcements.heard.count("PlenzoAlarm Quit"), 1)

    def test_follows_the_end_of_the_bus(self):
        agent = self.start_agent()
        self.session.stop_bus()
        self.assertEqual(agent.wait_for_end(), 0)
        self.assertEqual(agent.errors(), "")


class ASecondAgent(SystemTest):
    def test_gives_way_to_the_first(self):
        first = self.start_agent()
        heard = list(self.announcements.heard)
        second = self.run_command()
        self.assertEqual(second.returncode, 1)
        self.assertEqual(second.stdout, "")
        self.assertRegex(second.stderr, r"\Aplenzoalarm: .*already running.*\n\Z")
        self.assertEqual(self.link.pending(), [])
        self.assertTrue(first.is_running())
        self.assertEqual(self.announcements.heard, heard)

    def test_starts_when_the_first_has_gone(self):
        self.assertEqual(self.start_agent().ask_to_end(), 0)
        self.start_agent()
        self.assertEqual(self.link.pending(), [])


class WithoutABus(SystemTest):
    def test_the_agent_says_so_and_ends(self):
        without = {name: value for name, value in self.session.environment.items()
                   if name != "DBUS_SESSION_BUS_ADDRESS"}
        cases = {"no address": without,
                 "nobody there": {**without, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"},
                 "no address at all": {**without, "DBUS_SESSION_BUS_ADDRESS": "nonsense"}}
        for case, environment in cases.items():
            with self.subTest(case):
                run = self.run_command(environment=environment)
                self.assertEqual(run.returncode, 1)
                self.assertRegex(run.stderr, r"\Aplenzoalarm: .*bus.*\n\Z")


if __name__ == "__main__":
    unittest.main()
