"""Waiting with a time limit: for a condition that the main context's events bring about, and for
the end of a process."""
import os
import select

from gi.repository import GLib

LIMIT_SECONDS = 60
RECHECK_MILLISECONDS = 20


class _Ticks:
    """Wakes the main context at an interval, and knows when the limit has passed."""

    def __init__(self, limit_seconds):
        self.passed = False
        self._sources = [self._attached(GLib.timeout_source_new(RECHECK_MILLISECONDS), self._tick),
                         self._attached(GLib.timeout_source_new(int(limit_seconds * 1000)), self._pass)]

    @staticmethod
    def _attached(source, callback):
        source.set_callback(callback)
        source.attach(GLib.MainContext.default())
        return source

    @staticmethod
    def _tick(*_):
        return GLib.SOURCE_CONTINUE

    def _pass(self, *_):
        self.passed = True
        return GLib.SOURCE_REMOVE

    def stop(self):
        for source in self._sources:
            source.destroy()


def wait_until(condition, what, limit_seconds=LIMIT_SECONDS):
    """Serves the main context until the condition holds. `what`, or what it gives when called then,
    completes "not within N s: "."""
    ticks = _Ticks(limit_seconds)
    try:
        while not condition():
            if ticks.passed:
                reason = what() if callable(what) else what
                raise AssertionError(f"not within {limit_seconds} s: {reason}")
            GLib.MainContext.default().iteration(True)
    finally:
        ticks.stop()


def wait_for_end(process, limit_seconds=LIMIT_SECONDS):
    """The exit code of a subprocess.Popen; negative for a signal."""
    if process.returncode is None:
        descriptor = os.pidfd_open(process.pid)
        try:
            if not select.select([descriptor], [], [], limit_seconds)[0]:
                raise AssertionError(f"process {process.args} has not ended within {limit_seconds} s")
        finally:
            os.close(descriptor)
    return process.wait()
