"""The machine's sleep, and changes of zone and locale, as they change what fires and when."""
import time
import unittest

from support.login_manager import HELD, LoginManager
from support.notification_test import NOTIFYING, NotificationTest, soon
from support.settings_services import LocaleService, TimeService
from support.values import Date, event, in_seconds, now_seconds, reminder

ASLEEP_SECONDS = 3
DEFERRED_SECONDS = 1.0
HOUR = 3600


class Sleep(NotificationTest):
    def setUp(self):
        super().setUp()
        self.manager = LoginManager(self.session, self.link.connection)
        self.addCleanup(self.manager.vanish)
        self.start()
        self.manager.wait_for_inhibitors(HELD)

    def fall_asleep(self):
        """What was pushed before has to be there already: the sleep comes another way, which may be
        faster, and defers it."""
        self.manager.announce("PrepareForSleep", True)
        self.manager.wait_for_inhibitors([("shutdown", "delay")])

    def wake_up(self):
        self.manager.announce("PrepareForSleep", False)
        return now_seconds()

    def test_defers_what_is_pushed_until_a_second_after_waking(self):
        self.link.push([event("there", in_seconds(HOUR))])
        self.assertEqual(self.link.pending_uids(), ["there"])
        self.fall_asleep()
        self.link.push([event("pushed", in_seconds(HOUR))])
        time.sleep(ASLEEP_SECONDS)
        self.assertEqual(self.link.pending_uids(), ["there"])
        woken = self.wake_up()
        self.link.push([event("after", in_seconds(2 * HOUR))], delta=True)
        while self.link.pending_uids() == ["there"]:
            latest_seconds_without = now_seconds() - woken
            self.assertLess(latest_seconds_without, 60)
        self.assertEqual(self.link.pending_uids(), ["pushed", "after"])
        self.assertGreater(latest_seconds_without, DEFERRED_SECONDS - 0.25)
        self.assertLess(now_seconds() - woken, DEFERRED_SECONDS + 2)

    def test_delays_no_alarm_beyond_the_waking(self):
        """No machine here really sleeps, so its clock runs on, and with it the alarm's timer."""
        self.link.push([event("meanwhile", soon()), event("later", in_seconds(HOUR))])
        self.assertIn("later", self.link.pending_uids())
        self.fall_asleep()
        self.wait_for("meanwhile")
        self.wake_up()
        self.manager.wait_for_inhibitors(HELD)
        self.assertEqual(self.link.pending_uids(), ["later"])
        self.assertEqual(self.server.summaries(), ["meanwhile"])


class ASetting(NotificationTest):
    def start_in(self, **environment):
        """Without TZ and LC_ALL, which would pin what is to change."""
        environment = {**self.session.environment, "LANG": "en_GB.UTF-8", **environment}
        del environment["TZ"], environment["LC_ALL"]
        self.start_agent(environment=environment)

    def push_all_day_and_timed(self):
        """One at 09:00 of a day wherever the user is, one at a moment."""
        midnight = (now_seconds() // 86400 + 3) * 86400
        self.timed = midnight + 9 * HOUR + 60
        self.wall_clock_of_all_day = midnight + 9 * HOUR
        self.link.push([event("all day", Date(midnight), reminder("r", 9 * HOUR), allDay=True),
                        event("timed", Date(self.timed), reminder("s"))])

    def fire_dates(self):
        return {row["uid"]: row["fireDate"][0] for row in self.link.pending()}

    def test_of_the_zone_moves_what_is_on_the_wall_clock(self):
        service = TimeService(self.session, self.link.connection)
        self.addCleanup(service.vanish)
        self.start_in()
        self.push_all_day_and_timed()
        for name, hours in (("Asia/Tokyo", 9), ("Asia/Kathmandu", 5.75), ("Asia/Tokyo", 9)):
            service.set_zone(name)
            expected = {"all day": self.wall_clock_of_all_day - hours * HOUR, "timed": self.timed}
            self.wait_until(lambda: self.fire_dates() == expected,
                            f"{expected} in {name}; now {self.fire_dates()}")
            self.assertEqual(self.link.pending_uids(), ["all day", "timed"])

    def test_of_the_locale_disturbs_nothing(self):
        """A zone that changes afterwards shows that the locale's announcement has been heard."""
        service = TimeService(self.session, self.link.connection)
        self.addCleanup(service.vanish)
        locales = LocaleService(self.session.connect())
        self.addCleanup(locales.vanish)
        self.server = self.start_server()
        self.start_in()
        self.link.set_preferences(NOTIFYING)
        self.push_all_day_and_timed()
        self.link.push([event("soon", soon())], delta=True)
        locales.set_locale("LANG=de_DE.UTF-8")
        service.set_zone("Asia/Tokyo")
        self.wait_until(lambda: self.fire_dates().get("all day")
                        == self.wall_clock_of_all_day - 9 * HOUR, "the zone's change")
        self.wait_for("soon")
        self.assertEqual(self.link.pending_uids(), ["all day", "timed"])

    def test_of_the_zone_that_is_pinned_changes_nothing(self):
        service = TimeService(self.session, self.link.connection)
        self.addCleanup(service.vanish)
        self.start_agent()
        self.push_all_day_and_timed()
        before = self.fire_dates()
        service.set_zone("Asia/Tokyo")
        self.assertEqual(self.fire_dates(), before)


if __name__ == "__main__":
    unittest.main()
