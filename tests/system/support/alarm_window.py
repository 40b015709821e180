"""The alarm window as its user has it: on a screen, with a window manager, a mouse and a keyboard."""
import pathlib
import subprocess
from xml.etree import ElementTree

from support.host_commands import HostCommands
from support.notification_test import soon
from support.real_desktop import Screen, WindowManager, skip_without
from support.system_test import SystemTest
from support.values import event
from support.waiting import wait_for_end, wait_until

RESOURCES = pathlib.Path(__file__).resolve().parents[3] / "resources"
SHOWING = {"alarmsIssueAlarms": True, "alarmsUseNotificationCenter": False, "alarmsSnoozeSeconds": 300}
GREATEST_VISIBLE_ROW_COUNT = 5


class Design:
    """Where an interface file puts its views, as it was designed."""

    def __init__(self, name):
        self._window = ElementTree.parse(RESOURCES / f"{name}.ui").getroot().find("widget")
        self.width, self.height = self._rect(self._window)[2:]

    def center(self, name, width, height):
        """In a window of that size; what is at the right or at the bottom stays there."""
        path = self._path(self._window, name)
        frames = [self._rect(view) for view in path]
        x = sum(frame[0] for frame in frames) + frames[-1][2] // 2
        y = sum(frame[1] for frame in frames) + frames[-1][3] // 2
        masks = " ".join(self._mask(view) for view in path)
        return (x + ("leftMargin" in masks) * (width - self.width),
                y + ("topMargin" in masks) * (height - self.height))

    @staticmethod
    def _rect(view):
        rect = view.find("property[@name='geometry']/rect")
        return [int(rect.find(side).text) for side in ("x", "y", "width", "height")]

    @staticmethod
    def _mask(view):
        return view.findtext("property[@name='autoresizingMask']/string", "")

    def _path(self, view, name):
        """From below the window down to the view; empty when it is not there."""
        for child in view.findall("widget"):
            if child.get("name") == name:
                return [child]
            below = self._path(child, name)
            if below:
                return [child, *below]
        return []


class AlarmWindow:
    """Found by its title."""

    def __init__(self, screen):
        self._screen = screen
        self._panel = Design("AlarmWindow")
        self._cells = {"event": Design("EventCellView"), "task": Design("TaskCellView")}
        self.row_height = self._cells["event"].height

    def identifier(self):
        """Empty while it is not to be seen."""
        return self._screen.xdotool("search", "--onlyvisible", "--name", "^Alarms").strip()

    def frame(self):
        """(x, y, width, height), without what the window manager puts around it; zeros without it."""
        lines = self._screen.window_information(self.identifier()).splitlines()
        values = dict(line.strip().split(":", 1) for line in lines if ":" in line)
        return tuple(int(values.get(key, 0))
                     for key in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def height_of_rows(self, count):
        return self._panel.height + (min(count, GREATEST_VISIBLE_ROW_COUNT) - 1) * self.row_height

    def is_visible(self):
        return self.identifier() != ""

    def is_active(self):
        return self.identifier() in self._screen.xdotool("getactivewindow").split()

    def is_list_of_units_open(self):
        """It is a window of its own."""
        windows = self._screen.xdotool("search", "--onlyvisible", "--class", "plenzoalarm").split()
        return len(windows) > 1

    def property(self, name):
        return self._screen.window_property(self.identifier(), name)

    def title_bar_height(self):
        """0 until the window manager has said it."""
        extents = self.property("_NET_FRAME_EXTENTS").partition("=")[2].split(",")
        return int(extents[2]) if len(extents) == 4 else 0

    def move(self, x, y):
        """About there; the window manager's frame counts."""
        before = self.frame()
        self._screen.xdotool("windowmove", self.identifier(), x, y)
        wait_until(lambda: self.frame() != before, "the window is moved")

    def click(self, name, *options):
        """A button, or the field, by its name in the interface file."""
        _, _, width, height = self.frame()
        self._click(self._panel.center(name, width, height), options)

    def click_row(self, index, *options):
        """Its title."""
        self._click((self._panel.width // 4, index * self.row_height + self.row_height // 4), options)

    def click_in_row(self, index, name, cell="event"):
        """A part of a row that has no location."""
        x, y = self._cells[cell].center(name, self.frame()[2], self.row_height)
        self._click((x, index * self.row_height + y), ())

    def _click(self, point, options):
        self._screen.xdotool("mousemove", "--window", self.identifier(), *point,
                             "click", *options, "1")

    def click_while_held(self, key, click, *arguments):
        self._screen.xdotool("keydown", key)
        click(*arguments)
        self._screen.xdotool("keyup", key)

    def press(self, *keys):
        self._screen.xdotool("key", "--delay", "5", *keys)

    def activate(self):
        """By its title bar, with the keyboard in the field."""
        self._click((self._panel.width // 2, -10), ())
        wait_until(self.is_active, "the alarm window is active")

    def activate_from_outside(self):
        """As by a task bar; its title bar may not be in reach."""
        self._screen.xdotool("windowactivate", self.identifier())
        wait_until(self.is_active, "the alarm window is active")

    def activate_list(self, row=0):
        """With the keyboard in the list."""
        self.activate()
        self.click_row(row)


class TypingWindow:
    """The window of another program, in which the user types."""

    def __init__(self, session, program):
        self._notes = session.folder / "typed"
        with open(self._notes, "w") as notes:
            self._process = session.start([program], stdout=notes, stderr=subprocess.DEVNULL)

    def notes(self):
        return self._notes.read_text().splitlines()

    def states(self):
        return [line for line in self.notes() if not line.startswith("text ")]

    def is_active(self):
        return self.states()[-1:] == ["active"]

    def text(self):
        return next((line[5:] for line in reversed(self.notes()) if line.startswith("text ")), "")

    def close(self):
        self._process.terminate()
        wait_for_end(self._process)


class AlarmWindowTest(SystemTest):
    """A desktop with an agent whose alarms appear in its window, and the host as the default program
    of its scheme."""

    def setUp(self):
        skip_without("Xvfb", "openbox", "xdotool", "xprop", "xrandr")
        super().setUp()
        self.screen = Screen(self.session, size="1000x800")
        self.addCleanup(self.screen.close)
        self.addCleanup(WindowManager(self.session).close)
        self.host = HostCommands(self.session)
        self.window = AlarmWindow(self.screen)
        self.start_agent()
        self.link.set_preferences(SHOWING)

    def displayed_titles(self):
        return [row["title"] for row in self.link.displayed()]

    def wait_for_rows(self, *titles):
        """Without any, there is no window."""
        self.wait_until(lambda: self.displayed_titles() == list(titles),
                        lambda: f"the rows {titles}; now {self.displayed_titles()}")
        self.wait_until(lambda: self.window.is_visible() == bool(titles), "the window comes or goes")

    def add(self, *records):
        """Brings them into the window, after what is there. The window grows."""
        titles = self.displayed_titles() + [record["title"] for record in records]
        self.link.push(list(records), delta=True)
        self.wait_for_rows(*titles)
        height = self.window.height_of_rows(len(titles))
        self.wait_until(lambda: self.window.frame()[3] >= height,
                        lambda: f"a window {height} high; now {self.window.frame()}")

    def add_events(self, *uids):
        due = soon()
        self.add(*(event(uid, due) for uid in uids))

    def wait_for_commands(self, *commands):
        self.wait_until(lambda: self.host.heard() == sorted(commands),
                        lambda: f"{commands} heard; now {self.host.heard()}")
