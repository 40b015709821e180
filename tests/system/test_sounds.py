"""The sounds of alarms, as the machine's audio gets them. ALSA, which writes them into a file, plays
its part."""
import pathlib
import unittest
import wave

from support.notification_test import NOTIFYING, NotificationTest, soon
from support.values import absolute_reminder, event

SOUND = 1
SOUNDS = pathlib.Path(__file__).resolve().parents[2] / "resources" / "sounds"


def samples(name):
    with wave.open(str(SOUNDS / f"{name}.wav")) as file:
        return file.readframes(file.getnframes())


class TheSoundOfAnAlarm(NotificationTest):
    def start_with_audio(self, settings, *capabilities):
        configuration = self.session.folder / "asound.conf"
        configuration.write_text(settings)
        self.server = self.start_server(*capabilities)
        self.start_agent(environment={**self.session.environment, "CANBERRA_DRIVER": "alsa",
                                      "ALSA_CONFIG_PATH": str(configuration)})
        self.link.set_preferences(NOTIFYING)

    def start_with_recording(self, *capabilities):
        self.recording = self.session.folder / "recording"
        self.recording.write_bytes(b"")
        self.start_with_audio('pcm.!default { type file  format raw  file "%s"  slave.pcm { type null } }'
                              % self.recording, *capabilities)

    def deliver_sound(self, uid, **more):
        due = soon()
        self.link.push([event(uid, due, absolute_reminder(uid, due, SOUND, **more))])
        self.wait_for(uid)

    def test_is_played_by_the_agent_for_a_server_that_cannot(self):
        self.start_with_recording()
        self.deliver_sound("tea", url="Doorbell")
        self.wait_until(lambda: self.recording.read_bytes() == samples("Doorbell"), "it has been played")

    def test_is_a_file_for_a_server_that_plays_sounds(self):
        self.start_with_recording("sound")
        self.deliver_sound("tea")
        self.assertEqual(pathlib.Path(self.server.delivered[0].hints["sound-file"]).resolve(),
                         SOUNDS / "Basso.wav")
        self.assertEqual(self.recording.read_bytes(), b"")

    def test_is_missed_without_a_word_on_a_machine_without_audio(self):
        self.start_with_audio("pcm.!default { type no_such_device }")
        self.deliver_sound("tea")


if __name__ == "__main__":
    unittest.main()
