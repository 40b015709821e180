"""An agent to be measured, without the frame of a test."""
import contextlib
import os

import gi

gi.require_version("Gio", "2.0")

# The version of the interface library has to be chosen before it is imported.
from support.agent import AgentProcess, Announcements, Link  # noqa: E402
from support.private_bus import PrivateSession  # noqa: E402
from support.real_desktop import Screen, WindowManager  # noqa: E402


@contextlib.contextmanager
def measured_agent(root, programs, has_screen=False):
    """(session, link, agent) with the first of the programs, or the release build's."""
    os.environ["PLENZOALARM"] = os.path.abspath((programs or [root / "build/release/bin/plenzoalarm"])[0])
    session = PrivateSession()
    try:
        servers = [Screen(session), WindowManager(session)] if has_screen else []
        announcements = Announcements(session.connect())
        agent = AgentProcess(session)
        announcements.wait_for("PlenzoAlarm Launched")
        yield session, Link(session.connect()), agent
        if agent.ask_to_end() != 0:
            raise AssertionError(f"the agent did not end well: {agent.errors()}")
        for server in reversed(servers):
            server.close()
    finally:
        session.close()


def status_number(process, field):
    """A number of /proc/PID/status; memory in kB."""
    for line in (process / "status").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1])
    raise AssertionError(f"no {field} in {process}/status")
