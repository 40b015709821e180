"""What the agent saves at the end of a session."""
import plistlib

NAMES = ("Reminders.plist", "Calendars.plist", "Weather.plist")


class SavedFiles:
    """The files in the agent's folder."""

    def __init__(self, session):
        self.folder = session.folder / "data" / "PlenzoAlarm"

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def path(self, name):
        return self.folder / name

    def read(self, name):
        """A binary property list."""
        return plistlib.loads(self.path(name).read_bytes(), fmt=plistlib.FMT_BINARY)

    def write(self, name, contents):
        self.folder.mkdir(parents=True, exist_ok=True)
        self.path(name).write_bytes(plistlib.dumps(contents, fmt=plistlib.FMT_BINARY))


def holds_key(value, key):
    """Whether a dictionary at any depth has the key."""
    if isinstance(value, dict):
        return key in value or any(holds_key(element, key) for element in value.values())
    return isinstance(value, list) and any(holds_key(element, key) for element in value)
