"""A session of the test's own: folders, environment and message bus that nobody else knows of."""
import os
import pathlib
import shutil
import subprocess
import tempfile

from gi.repository import Gio

from support.waiting import wait_for_end

# The limits are those of a session bus; the defaults would refuse messages above 32 MiB.
_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <servicedir>{folder}/services</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <limit name="max_incoming_bytes">1000000000</limit>
  <limit name="max_outgoing_bytes">1000000000</limit>
  <limit name="max_message_size">1000000000</limit>
  <limit name="reply_timeout">600000</limit>
</busconfig>
"""


def program():
    """The agent program under test."""
    return os.environ["PLENZOALARM"]


class PrivateSession:
    """Owns a temporary folder with HOME and the XDG folders in it, and a dbus-daemon."""

    def __init__(self, zone="Pacific/Chatham"):
        self._temporary = tempfile.TemporaryDirectory(prefix="plenzo-system-")
        self.folder = pathlib.Path(self._temporary.name)
        for name in ("home", "config", "data", "runtime", "services"):
            (self.folder / name).mkdir(mode=0o700)
        self.address = f"unix:path={self.folder}/bus"
        self.environment = {
            "PATH": os.environ["PATH"],
            "LC_ALL": "C.UTF-8",
            "TZ": zone,
            "HOME": str(self.folder / "home"),
            "XDG_CONFIG_HOME": str(self.folder / "config"),
            "XDG_DATA_HOME": str(self.folder / "data"),
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "DBUS_SESSION_BUS_ADDRESS": self.address,
            # The machine's own services are none of a test's business.
            "DBUS_SYSTEM_BUS_ADDRESS": self.address,
            "CANBERRA_DRIVER": "null",
        }
        for name, value in os.environ.items():
            if name.endswith("SAN_OPTIONS"):
                self.environment[name] = value
        self._bus = self._start_bus()

    def _start_bus(self):
        configuration = self.folder / "bus.conf"
        configuration.write_text(_CONFIGURATION.format(folder=self.folder))
        with open(self.folder / "bus-errors", "w") as errors:
            bus = self.start(["dbus-daemon", "--nofork", "--nopidfile", "--print-address=1",
                              f"--config-file={configuration}"],
                             stdout=subprocess.PIPE, stderr=errors)
        with bus.stdout:
            if not bus.stdout.readline():
                raise AssertionError("no dbus-daemon")
        return bus

    def offer_activation(self):
        """From now on the bus starts the agent for whoever calls it, by the program's own file."""
        shutil.copy(os.environ["PLENZO_SERVICE_FILE"], self.folder / "services")
        bus = self.connect()
        bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                      "ReloadConfig", None, None, Gio.DBusCallFlags.NONE, -1, None)
        bus.close_sync(None)

    def start(self, command, environment=None, **options):
        """A process that ends with the test at the latest, even when that is killed."""
        return subprocess.Popen(["setpriv", "--pdeathsig=KILL", *command],
                                env=environment or self.environment, cwd=self.folder, **options)

    def connect(self):
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        return Gio.DBusConnection.new_for_address_sync(self.address, flags, None, None)

    def stop_bus(self):
        """Ends the bus at once, as when a session falls apart."""
        self._bus.kill()
        wait_for_end(self._bus)

    def close(self):
        self.stop_bus()
        self._temporary.cleanup()
