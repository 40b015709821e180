"""An agent that only writes down what it is told."""
from gi.repository import Gio, GLib

from support.agent import NAME, PATH, call

_INTERFACES = """<node>
<interface name="org.plenzo.PlenzoAlarmProtocol">
  <method name="Version"><arg type="s" direction="in"/></method>
  <method name="AlarmsUpdated"><arg type="aa{sv}" direction="in"/><arg type="b" direction="in"/></method>
  <method name="AlarmsUpdatedFromFile"><arg type="h" direction="in"/><arg type="b" direction="in"/></method>
  <method name="SourceListUpdated"><arg type="aa{sv}" direction="in"/></method>
  <method name="PrefsUpdated"><arg type="a{sv}" direction="in"/></method>
  <method name="WeatherUpdated"><arg type="a{sv}" direction="in"/></method>
  <method name="PrepareToStop"/>
</interface>
</node>"""


class RecordingAgent:
    """Owns the agent's name from its making on. What it hears is (operation, arguments)."""

    def __init__(self, connection):
        self.heard = []
        self._connection = connection
        node = Gio.DBusNodeInfo.new_for_xml(_INTERFACES)
        connection.register_object(PATH, node.interfaces[0], self._note, None, None)
        Gio.bus_own_name_on_connection(connection, NAME, Gio.BusNameOwnerFlags.NONE, None, None)
        # The name is asked for without waiting; after an answer of the bus it is there.
        call(connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId")

    def _note(self, _connection, _sender, _path, _interface, method, arguments, invocation):
        self.heard.append((method, arguments.unpack()))
        invocation.return_value(None)

    def announce(self):
        """As an agent does that has just been launched."""
        self._connection.emit_signal(None, PATH, "org.plenzo.DistributedNotifications", "Posted",
                                     GLib.Variant("(s)", ("PlenzoAlarm Launched",)))

    def operations(self):
        return [method for method, _ in self.heard]

    def arguments_of(self, operation):
        """The only argument of each call of an operation."""
        return [arguments[0] for method, arguments in self.heard if method == operation]
