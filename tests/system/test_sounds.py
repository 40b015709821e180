"""The sounds of alarms, as the machine's audio gets them."""
import pathlib
import unittest

from support.audio import SOUND, SOUNDS, Recording, audio, samples
from support.notification_test import NOTIFYING, NotificationTest, soon
from support.values import absolute_reminder, event


class TheSoundOfAnAlarm(NotificationTest):
    def start_with_audio(self, settings, *capabilities):
        self.server = self.start_server(*capabilities)
        self.start_agent(environment=audio(self.session, settings))
        self.link.set_preferences(NOTIFYING)

    def start_with_recording(self, *capabilities):
        self.recording = Recording(self.session)
        self.start_with_audio(self.recording.settings, *capabilities)

    def deliver_sound(self, uid, **more):
        due = soon()
        self.link.push([event(uid, due, absolute_reminder(uid, due, SOUND, **more))])
        self.wait_for(uid)

    def test_is_played_by_the_agent_for_a_server_that_cannot(self):
        self.start_with_recording()
        self.deliver_sound("tea", url="Doorbell")
        self.wait_until(lambda: self.recording.heard() == samples("Doorbell"), "it has been played")

    def test_is_a_file_for_a_server_that_plays_sounds(self):
        self.start_with_recording("sound")
        self.deliver_sound("tea")
        self.assertEqual(pathlib.Path(self.server.delivered[0].hints["sound-file"]).resolve(),
                         SOUNDS / "Basso.wav")
        self.assertEqual(self.recording.heard(), b"")

    def test_is_missed_without_a_word_on_a_machine_without_audio(self):
        self.start_with_audio("pcm.!default { type no_such_device }")
        self.deliver_sound("tea")


if __name__ == "__main__":
    unittest.main()
