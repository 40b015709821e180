"""A session manager of the test's own, as several desktops have it."""
from gi.repository import Gio, GLib

from support.waiting import wait_until

NAME = "org.gnome.SessionManager"
PATH = "/org/gnome/SessionManager"
CLIENT = "org.gnome.SessionManager.ClientPrivate"

_NODE = Gio.DBusNodeInfo.new_for_xml("""
<node>
  <interface name="org.gnome.SessionManager">
    <method name="RegisterClient">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="o" direction="out"/>
    </method>
  </interface>
  <interface name="org.gnome.SessionManager.ClientPrivate">
    <method name="EndSessionResponse">
      <arg type="b" direction="in"/><arg type="s" direction="in"/>
    </method>
  </interface>
</node>""")


class SessionManager:
    """Knows one client, the one that registered last."""

    def __init__(self, connection):
        self.registered = []
        self.responses = []
        self._client = None
        self._path = None
        self._connection = connection
        connection.register_object(PATH, _NODE.interfaces[0], self._note_call, None, None)
        connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", "RequestName",
                             GLib.Variant("(su)", (NAME, 0)), None, Gio.DBusCallFlags.NONE, -1,
                             None)

    def _note_call(self, connection, sender, _path, _interface, method, arguments, invocation):
        if method == "EndSessionResponse":
            self.responses.append(arguments.unpack())
            invocation.return_value(None)
            return
        self.registered.append(arguments.unpack())
        self._client = sender
        self._path = f"{PATH}/Client{len(self.registered)}"
        connection.register_object(self._path, _NODE.interfaces[1], self._note_call, None, None)
        invocation.return_value(GLib.Variant("(o)", (self._path,)))

    def wait_for_client(self):
        wait_until(lambda: self.registered, "a client of the session manager")

    def tell(self, signal, arguments=None):
        self._connection.emit_signal(self._client, self._path, CLIENT, signal, arguments)

    def wait_for_responses(self, count):
        wait_until(lambda: len(self.responses) >= count, f"{count} responses")

    def vanish(self):
        """As when the session manager's process ends."""
        self._connection.close_sync(None)
