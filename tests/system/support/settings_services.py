"""The services of the system's zone and locale, on a bus of the test's own."""
from gi.repository import Gio, GLib

from support.agent import call
from support.mock_service import MockService

TIME_SERVICE = "org.freedesktop.timedate1"
LOCALE_SERVICE = "org.freedesktop.locale1"


class TimeService(MockService):
    def __init__(self, session, connection):
        super().__init__(session, connection, TIME_SERVICE, "timedated")

    def is_ready(self):
        return self.call("org.freedesktop.DBus.Properties", "GetAll",
                         GLib.Variant("(s)", (TIME_SERVICE,))).unpack()[0]

    def set_zone(self, name):
        self.call(TIME_SERVICE, "SetTimezone", GLib.Variant("(sb)", (name, False)))


class LocaleService:
    """There is no template of it; only what it announces is of interest."""

    def __init__(self, connection):
        self._connection = connection
        connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", "RequestName",
                             GLib.Variant("(su)", (LOCALE_SERVICE, 0)), None,
                             Gio.DBusCallFlags.NONE, -1, None)

    def set_locale(self, *assignments):
        changed = {"Locale": GLib.Variant("as", assignments)}
        self._connection.emit_signal(None, "/org/freedesktop/locale1",
                                     "org.freedesktop.DBus.Properties", "PropertiesChanged",
                                     GLib.Variant("(sa{sv}as)", (LOCALE_SERVICE, changed, [])))
        # Sent without waiting; after an answer of the bus it has been received there.
        call(self._connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId")

    def vanish(self):
        self._connection.close_sync(None)
