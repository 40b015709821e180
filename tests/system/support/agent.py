"""The program under test, as its host and a user see it."""
import os
import signal
import subprocess

from gi.repository import Gio, GLib

from support.private_bus import program
from support.values import dictionaries, dictionary
from support.waiting import wait_for_end, wait_until

NAME = "org.plenzo.PlenzoAlarm"
PATH = "/org/plenzo/PlenzoAlarm"
PROTOCOL = "org.plenzo.PlenzoAlarmProtocol"
INSPECTOR = "org.plenzo.PlenzoAlarm.Inspector"
NOTIFICATIONS = "org.plenzo.DistributedNotifications"

# The largest answers take long with a program that is built for debugging.
CALL_LIMIT_SECONDS = 240


class Announcements:
    """What the agent announces and who owns its name, in the order in which the bus tells it:
    "PlenzoAlarm Launched", "name taken", "name released"."""

    def __init__(self, connection):
        self.heard = []
        self._connection = connection
        connection.signal_subscribe(None, NOTIFICATIONS, "Posted", PATH, None,
                                    Gio.DBusSignalFlags.NONE, self._note_announcement)
        connection.signal_subscribe("org.freedesktop.DBus", "org.freedesktop.DBus",
                                    "NameOwnerChanged", None, NAME, Gio.DBusSignalFlags.NONE,
                                    self._note_owner)
        # The subscriptions are sent without waiting; after an answer of the bus they stand.
        call(connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId")

    def _note_announcement(self, _connection, _sender, _path, _interface, _signal, arguments):
        self.heard.append(arguments.unpack()[0])

    def _note_owner(self, _connection, _sender, _path, _interface, _signal, arguments):
        self.heard.append("name taken" if arguments.unpack()[2] else "name released")

    def wait_for(self, announcement, count=1):
        wait_until(lambda: self.heard.count(announcement) >= count,
                   f"{announcement!r} {count} times; heard {self.heard}")


def call(connection, name, path, interface, method, arguments=None, descriptors=()):
    """The answer as a GLib.Variant. Raises GLib.Error for an error reply."""
    files = Gio.UnixFDList()
    for descriptor in descriptors:
        files.append(descriptor)
    answer, _ = connection.call_with_unix_fd_list_sync(
        name, path, interface, method, arguments, None, Gio.DBusCallFlags.NO_AUTO_START,
        CALL_LIMIT_SECONDS * 1000, files, None)
    return answer


class Link:
    """A host's connection to whichever agent runs."""

    def __init__(self, connection):
        self.connection = connection

    def call(self, method, arguments=None, descriptors=()):
        """Waits until the agent has read the message; what it makes of it may still be under way,
        but comes before whatever is sent or asked next."""
        return call(self.connection, NAME, PATH, PROTOCOL, method, arguments, descriptors)

    def send(self, method, arguments=None):
        """As a host does: without waiting for anything."""
        message = Gio.DBusMessage.new_method_call(NAME, PATH, PROTOCOL, method)
        message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
        if arguments is not None:
            message.set_body(arguments)
        self.connection.send_message(message, Gio.DBusSendMessageFlags.NONE)

    def version(self, version):
        self.call("Version", GLib.Variant("(s)", (version,)))

    def push(self, records, delta=False):
        self.call("AlarmsUpdated", batch(records, delta))

    def push_file(self, descriptor, delta=False):
        self.call("AlarmsUpdatedFromFile", GLib.Variant("(hb)", (0, delta)), [descriptor])

    def set_preferences(self, preferences):
        self.call("PrefsUpdated", GLib.Variant.new_tuple(dictionary(preferences)))

    def deliver_alarms(self):
        """Alarms reach the user, as notifications."""
        self.set_preferences({"alarmsIssueAlarms": True, "alarmsUseNotificationCenter": True})

    def pending_rows(self):
        """The pending alarms as a GLib.Variant of type aa{sv}."""
        return call(self.connection, NAME, PATH, INSPECTOR, "PendingAlarms").get_child_value(0)

    def pending(self):
        return self.pending_rows().unpack()

    def displayed(self):
        """The rows of the alarm window."""
        return call(self.connection, NAME, PATH, INSPECTOR, "DisplayedAlarms").unpack()[0]

    def delivered(self):
        """The notifications that are still there."""
        return call(self.connection, NAME, PATH, INSPECTOR, "DeliveredNotifications").unpack()[0]

    def pending_uids(self):
        return [row.get("uid") for row in self.pending()]


def batch(records, delta=False):
    """The arguments of AlarmsUpdated."""
    return GLib.Variant.new_tuple(dictionaries(records), GLib.Variant("b", delta))


class AgentProcess:
    """One run of the program, from its start to its end."""

    def __init__(self, session, environment=None, options=()):
        self._errors_path = session.folder / "standard-error"
        with open(self._errors_path, "w") as errors:
            self.process = session.start([program(), *options], environment,
                                         stdout=subprocess.DEVNULL, stderr=errors)

    def is_running(self):
        return self.process.poll() is None

    def errors(self):
        return self._errors_path.read_text()

    def wait_for_end(self):
        """The exit code; negative for a signal."""
        return wait_for_end(self.process)

    def ask_to_end(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        return self.wait_for_end()

    def open_descriptors(self):
        return len(os.listdir(self._descriptors()))

    def open_pipes(self):
        """Among them the inhibitors of the login manager; the standard streams are none."""
        return [self._target(number) for number in os.listdir(self._descriptors())].count("pipe")

    def _descriptors(self):
        return f"/proc/{self.process.pid}/fd"

    def _target(self, number):
        """Such as "pipe" or "socket"; empty for a descriptor that was closed meanwhile."""
        try:
            return os.readlink(f"{self._descriptors()}/{number}").split(":")[0]
        except FileNotFoundError:
            return ""
