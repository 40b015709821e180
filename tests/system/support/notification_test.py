"""The frame of the tests in which alarms come due."""
from support.notification_server import NotificationServer
from support.system_test import SystemTest
from support.values import Date, event, now_seconds

SOON_SECONDS = 1.0
NOTIFYING = {"alarmsIssueAlarms": True, "alarmsUseNotificationCenter": True}


def soon(later_by=0.0):
    """A moment ahead by what a push takes on a busy machine."""
    return Date(now_seconds() + SOON_SECONDS + later_by)


class NotificationTest(SystemTest):
    def start(self, *capabilities):
        """A server and an agent that delivers alarms to it."""
        self.server = self.start_server(*capabilities)
        self.start_agent()
        self.link.set_preferences(NOTIFYING)

    def start_server(self, *capabilities, kind=NotificationServer, **options):
        return kind(self.session.connect(), ("body", *capabilities), **options)

    def wait_for(self, *summaries, server=None):
        server = server or self.server
        self.wait_until(lambda: server.summaries() == list(summaries),
                        f"{summaries} delivered; now {server.summaries()}")

    def deliver(self, *uids):
        """Delivers alarms with these titles, after those that were there."""
        before = self.server.summaries()
        due = soon()
        self.link.push([event(uid, due) for uid in uids], delta=True)
        self.wait_for(*before, *sorted(uids))
