"""The machine's audio, whose part ALSA plays: it writes what it gets into a file."""
import pathlib
import wave

# The type of a reminder with a sound.
SOUND = 1
SOUNDS = pathlib.Path(__file__).resolve().parents[3] / "resources" / "sounds"


def samples(name):
    """Of one of the agent's own sounds."""
    with wave.open(str(SOUNDS / f"{name}.wav")) as file:
        return file.readframes(file.getnframes())


def audio(session, settings):
    """The session's environment, with these settings of ALSA."""
    configuration = session.folder / "asound.conf"
    configuration.write_text(settings)
    return {**session.environment, "CANBERRA_DRIVER": "alsa", "ALSA_CONFIG_PATH": str(configuration)}


class Recording:
    """Everything that is played with its settings, one sound after the other."""

    def __init__(self, session):
        self._path = session.folder / "recording"
        self._path.write_bytes(b"")
        self.settings = ('pcm.!default { type file  format raw  file "%s"  slave.pcm { type null } }'
                         % self._path)

    def heard(self):
        return self._path.read_bytes()
