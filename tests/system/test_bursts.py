"""Very many alarms at once, and servers that take their time over them."""
import unittest

from support.audio import SOUND, Recording, audio, samples
from support.host_commands import HostCommands
from support.notification_test import NOTIFYING, NotificationTest, soon
from support.values import Date, absolute_reminder, deletion_notice, event, in_seconds

COUNT = 500
TITLES = [f"{number:03}" for number in range(COUNT)]
SOUND_PAUSE_SECONDS = 3


class ABurst(NotificationTest):
    def start_with_audio(self, *capabilities):
        self.recording = Recording(self.session)
        self.server = self.start_server("actions", *capabilities)
        self.start_agent(environment=audio(self.session, self.recording.settings))
        self.link.set_preferences(NOTIFYING)

    def deliver_burst(self):
        """One alarm after the other within a second, each with a sound."""
        first = soon(later_by=1)
        due = [Date(first.seconds + number / COUNT) for number in range(COUNT)]
        self.link.push([event(title, in_seconds(86400), absolute_reminder(title, moment, SOUND))
                        for title, moment in zip(TITLES, due)])
        self.wait_for(*TITLES)
        self.wait_until(lambda: all(row["shown"] for row in self.link.delivered()), "all known to be shown")

    def most_sounds(self):
        """As many as there were turns for in the time that it took on this machine."""
        moments = [delivered.seconds_since_1970 for delivered in self.server.delivered]
        return 1 + int((max(moments) - min(moments)) / SOUND_PAUSE_SECONDS)

    def test_is_delivered_whole_with_one_sound(self):
        self.start_with_audio()
        self.deliver_burst()
        possible = [samples("Basso") * count for count in range(1, self.most_sounds() + 1)]
        self.wait_until(lambda: self.recording.heard() in possible, f"1 to {len(possible)} sounds")

    def test_has_one_sound_at_a_server_that_plays_it(self):
        self.start_with_audio("sound")
        self.deliver_burst()
        sounding = [delivered.summary for delivered in self.server.delivered
                    if "sound-file" in delivered.hints]
        self.assertEqual(sounding[0], TITLES[0])
        self.assertLessEqual(len(sounding), self.most_sounds())
        self.assertEqual(self.recording.heard(), b"")

    def test_is_answered_and_taken_back_one_by_one(self):
        host = HostCommands(self.session)
        self.start_with_audio()
        self.deliver_burst()
        for number in range(0, 100):
            self.server.dismiss(number + 1)
        self.wait_until(lambda: len(host.heard()) == 100, "the host has heard of each")
        self.assertEqual(host.heard(), [f"acknowledge/{title}" for title in TITLES[:100]])
        self.link.push([deletion_notice(title) for title in TITLES[100:]], delta=True)
        self.wait_until(lambda: len(self.server.closed) == COUNT - 100, "the others are closed")
        self.assertEqual(self.server.closed, list(range(101, COUNT + 1)))
        self.assertEqual(self.link.delivered(), [])


class ASlowServer(NotificationTest):
    def test_does_not_make_the_next_alarm_late(self):
        self.start()
        self.deliver("answered")
        self.server.hold_answers()
        first, second = soon(), soon(later_by=0.5)
        self.link.push([event("unanswered", first), event("next", second)], delta=True)
        self.wait_for("answered", "unanswered", "next")
        self.assertEqual(self.server.unanswered_methods(), ["Notify", "Notify"])
        self.assertEqual([row["shown"] for row in self.link.delivered()], [True, False, False])
        self.server.release_answers()
        self.wait_until(lambda: [row["shown"] for row in self.link.delivered()] == [True] * 3,
                        "its late answers count")
        self.link.call("PrepareToStop")
        self.wait_until(lambda: self.server.closed == [1, 2, 3], "all closed")


if __name__ == "__main__":
    unittest.main()
