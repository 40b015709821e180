"""What the system's services announce, as it reaches the agent: in order and once."""
import os
import subprocess
import unittest

from support.login_manager import HELD, LoginManager
from support.settings_services import LocaleService, TimeService
from support.system_test import SystemTest

ZONES = "/usr/share/zoneinfo"


class Notices(SystemTest):
    def setUp(self):
        super().setUp()
        self.localtime = self.session.folder / "localtime"
        self.link_zone("Europe/Berlin")

    def link_zone(self, name):
        new = self.session.folder / "localtime.new"
        new.symlink_to(f"{ZONES}/{name}")
        new.rename(self.localtime)

    def start_tool(self, **environment):
        """Without TZ and LC_ALL, which would pin what is to change."""
        environment = {**self.session.environment, "LANG": "en_GB.UTF-8", **environment}
        del environment["TZ"], environment["LC_ALL"]
        self.output = self.session.folder / "notices"
        with open(self.output, "w") as output:
            tool = self.session.start([os.environ["PLENZO_NOTICES_TOOL"], str(self.localtime)],
                                      environment, stdout=output, stderr=subprocess.STDOUT)
        self.addCleanup(self._end, tool)
        self.wait_for("ready")

    def _end(self, tool):
        tool.terminate()
        self.assertEqual(tool.wait(), 0)

    def wait_for(self, *lines):
        """Everything that was said."""
        self.wait_until(lambda: self.lines() == list(lines), f"{lines}; now {self.lines()}")

    def lines(self):
        return self.output.read_text().splitlines()

    def start_service(self, kind):
        service = kind(self.session, self.link.connection)
        self.addCleanup(service.vanish)
        return service


class ALoginManager(Notices):
    def test_is_heard_in_order_and_across_its_restart(self):
        self.start_tool()
        manager = self.start_service(LoginManager)
        manager.wait_for_inhibitors(HELD)
        for signal, start in (("PrepareForSleep", True), ("PrepareForSleep", True),
                              ("PrepareForSleep", False), ("PrepareForShutdown", True),
                              ("PrepareForShutdown", False), ("PrepareForSleep", True)):
            manager.announce(signal, start)
        heard = ["ready", "going to sleep", "awake from sleep", "shutting down",
                 "shutdown canceled", "going to sleep"]
        self.wait_for(*heard)
        manager.vanish()
        self.wait_for(*heard, "awake from sleep")
        manager = self.start_service(LoginManager)
        manager.wait_for_inhibitors(HELD)
        manager.announce("PrepareForShutdown", True)
        self.wait_for(*heard, "awake from sleep", "shutting down")


class AZone(Notices):
    def test_changes_by_the_service_which_may_come_late_and_restart(self):
        self.start_tool()
        service = self.start_service(TimeService)
        service.set_zone("Asia/Tokyo")
        service.set_zone("Asia/Tokyo")
        service.set_zone("Nowhere/Nothing")
        service.vanish()
        service = self.start_service(TimeService)
        service.set_zone("Europe/London")
        self.wait_for("ready", "zone Asia/Tokyo after Europe/Berlin",
                      "zone Europe/London after Asia/Tokyo")

    def test_changes_by_the_link_alone(self):
        self.start_tool()
        self.link_zone("Asia/Tokyo")
        self.wait_for("ready", "zone Asia/Tokyo after Europe/Berlin")
        self.localtime.unlink()
        self.link_zone("Europe/London")
        self.wait_for("ready", "zone Asia/Tokyo after Europe/Berlin",
                      "zone Europe/London after Asia/Tokyo")


class ALocale(Notices):
    def test_changes_by_the_service_which_may_come_late_and_restart(self):
        self.start_tool()
        for locale, count in (("de_DE", 2), ("fr_FR", 3)):
            service = LocaleService(self.session.connect())
            service.set_locale(f"LANG={locale}.UTF-8")
            self.wait_until(lambda: len(self.lines()) == count, f"{count} lines")
            service.vanish()
        self.wait_for("ready", "locale de_DE", "locale fr_FR")

    def test_stays_when_only_another_part_of_it_changes(self):
        # A zone that changes afterwards shows that the locale's announcement has been heard.
        self.start_tool(LC_TIME="nl_NL.UTF-8")
        locales = LocaleService(self.session.connect())
        locales.set_locale("LC_TIME=nl_NL.UTF-8", "LANG=de_DE.UTF-8")
        self.start_service(TimeService).set_zone("Asia/Tokyo")
        self.wait_for("ready", "zone Asia/Tokyo after Europe/Berlin")


if __name__ == "__main__":
    unittest.main()
