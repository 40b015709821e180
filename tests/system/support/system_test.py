"""The frame of every test: a session, an observer on its bus, and the agent."""
import subprocess
import unittest

import gi

gi.require_version("Gio", "2.0")

# The version of the interface library has to be chosen before it is imported.
from support.agent import AgentProcess, Announcements, Link  # noqa: E402
from support.private_bus import PrivateSession, program  # noqa: E402
from support.waiting import LIMIT_SECONDS, wait_until  # noqa: E402


class SystemTest(unittest.TestCase):
    """Each test has a session of its own. An agent that still runs at the end of its test must end
    well when it is asked to, and must have written nothing to standard error."""

    def setUp(self):
        self.session = PrivateSession()
        self.addCleanup(self.session.close)
        self.announcements = Announcements(self.session.connect())
        self.link = Link(self.session.connect())

    def start_process(self, **options):
        agent = AgentProcess(self.session, **options)
        self.addCleanup(self._end_well, agent)
        return agent

    def start_agent(self, **options):
        """An agent that has announced itself."""
        count = self.announcements.heard.count("PlenzoAlarm Launched") + 1
        agent = self.start_process(**options)
        self.announcements.wait_for("PlenzoAlarm Launched", count)
        return agent

    def _end_well(self, agent):
        if agent.process.returncode is None:
            self.assertEqual(agent.ask_to_end(), 0, agent.errors())
            self.assertEqual(agent.errors(), "")

    def run_command(self, *options, environment=None):
        """The finished process, with what it wrote as text."""
        return subprocess.run([program(), *options], env=environment or self.session.environment,
                              cwd=self.session.folder, capture_output=True, text=True,
                              timeout=LIMIT_SECONDS, check=False)

    def wait_until(self, condition, what):
        wait_until(condition, what)
