"""A notification server of the test's own (Desktop Notifications Specification 1.2)."""
import time

from gi.repository import Gio, GLib

NAME = "org.freedesktop.Notifications"
PATH = "/org/freedesktop/Notifications"

_INTERFACE = Gio.DBusNodeInfo.new_for_xml("""
<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in" name="app_name"/><arg type="u" direction="in" name="replaces_id"/>
    <arg type="s" direction="in" name="app_icon"/><arg type="s" direction="in" name="summary"/>
    <arg type="s" direction="in" name="body"/><arg type="as" direction="in" name="actions"/>
    <arg type="a{sv}" direction="in" name="hints"/><arg type="i" direction="in" name="expire"/>
    <arg type="u" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
  <method name="GetServerInformation">
    <arg type="s" direction="out"/><arg type="s" direction="out"/>
    <arg type="s" direction="out"/><arg type="s" direction="out"/>
  </method>
</interface></node>""").interfaces[0]


class Delivered:
    """The arguments of one Notify, and when it came."""

    def __init__(self, identifier, arguments):
        self.identifier = identifier
        (self.application, self.replaces, self.icon, self.summary, self.body, self.actions,
         self.hints, self.expire) = arguments
        self.seconds_since_1970 = time.time()


class NotificationServer:
    """Records what reaches it, and answers as a server does, at once or when the test lets it."""

    def __init__(self, connection, capabilities=("body",), replaces_another=False):
        self.delivered = []
        self.closed = []
        self.unanswered = []
        self._holds_answers = False
        self._capabilities = list(capabilities)
        self._connection = connection
        connection.register_object(PATH, _INTERFACE, self._note_call, None, None)
        self._request_name(replaces_another)

    def _request_name(self, replaces_another):
        allow_replacement, replace_existing = 1, 2
        flags = allow_replacement | (replace_existing if replaces_another else 0)
        answer = self._connection.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            GLib.Variant("(su)", (NAME, flags)), None, Gio.DBusCallFlags.NONE, -1, None)
        if answer.unpack() != (1,):
            raise AssertionError("another notification server is on the bus")

    def vanish(self):
        """As when the server's process ends."""
        self._connection.close_sync(None)

    def summaries(self):
        return [delivered.summary for delivered in self.delivered]

    def dismiss(self, identifier):
        """The user closes a notification."""
        self.emit("NotificationClosed", GLib.Variant("(uu)", (identifier, 2)))

    def emit(self, signal, arguments):
        self._connection.emit_signal(None, PATH, NAME, signal, arguments)

    def hold_answers(self):
        """From now on calls are recorded, and wait for their answers."""
        self._holds_answers = True

    def release_answers(self):
        """Answers all that wait, in their order, and the later ones at once."""
        self._holds_answers = False
        for _, respond in self.unanswered:
            respond()
        self.unanswered.clear()

    def unanswered_methods(self):
        return [method for method, _ in self.unanswered]

    def _note_call(self, _connection, _sender, _path, _interface, method, arguments, invocation):
        if method == "Notify":
            self.delivered.append(Delivered(len(self.delivered) + 1, arguments.unpack()))
        if method == "CloseNotification":
            self.closed.append(arguments.unpack()[0])
        answer = self.answer(method)
        if self._holds_answers:
            self.unanswered.append((method, lambda: self.respond(invocation, answer)))
        else:
            self.respond(invocation, answer)

    def respond(self, invocation, answer):
        invocation.return_value(answer)

    def answer(self, method):
        """The answer to the latest call."""
        return {"GetCapabilities": GLib.Variant("(as)", (self._capabilities,)),
                "Notify": GLib.Variant("(u)", (len(self.delivered),)),
                "GetServerInformation": GLib.Variant("(ssss)", ("test", "test", "1", "1.2")),
                "CloseNotification": None}[method]


class RefusingServer(NotificationServer):
    """Answers every call with an error."""

    def respond(self, invocation, answer):
        invocation.return_dbus_error("org.freedesktop.DBus.Error.Failed", "out of order")


class ConfusedServer(NotificationServer):
    """Answers every call with something that is no answer to it."""

    def respond(self, invocation, answer):
        reply = invocation.get_message().new_method_reply()
        reply.set_body(GLib.Variant("(sas)", ("confused", ["body-markup"])))
        self._connection.send_message(reply, Gio.DBusSendMessageFlags.NONE)
