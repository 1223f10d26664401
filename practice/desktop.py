"""A virtual display with a person in front of it: finds what is to be seen on it by role and text,
as a screen reader does, and works it with real mouse clicks and key presses."""
import os
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

SECONDS = 20  # that anything awaited may take
DESCRIPTOR = "{descriptor}"
BUTTONS = ("push button", "radio button", "check box", "toggle button")
EDITS = ("text", "password text", "entry")
TEXTS = ("label", "text", "document frame", "paragraph")


class Missing(Exception):
    """What was awaited did not come; the message says what that was."""


class Desktop:
    """Xvfb with a window manager; ends with the `with` block."""

    def __init__(self, width=1000, height=760):
        self.geometry = f"{width}x{height}x24"
        self.processes = []

    def __enter__(self):
        display = self.start_server("Xvfb", "-screen", "0", self.geometry, "-wr", "-noreset",
                                    "-nolisten", "tcp", "-displayfd", DESCRIPTOR)
        os.environ["DISPLAY"] = f":{display}"
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.start_server(
            "dbus-daemon", "--session", "--nofork", f"--print-address={DESCRIPTOR}")
        os.environ["QT_QPA_PLATFORM"] = "xcb"
        # Qt looks for the address here first; over the session bus it misses one that is there
        # before the program.
        subprocess.run(["xprop", "-root", "-format", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS",
                        screen_reader_bus()], check=True)
        self.start("openbox")
        Atspi.set_timeout(500, 5000)
        return self

    def __exit__(self, *unused):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()

    def start(self, *command, **options):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   **options)
        self.processes.append(process)
        return process

    def await_window(self, title):
        """For windows that are not read, but typed into: they take the keyboard when they open."""
        return self.await_that(f"no window {title}", lambda: subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"],
            stdout=subprocess.PIPE, check=False).stdout)

    def start_server(self, *command):
        """Starts a server that writes its address as one line to a descriptor, which stands in its
        command as DESCRIPTOR; returns the line."""
        reading, writing = os.pipe()
        self.start(*[word.replace(DESCRIPTOR, str(writing)) for word in command],
                   pass_fds=[writing])
        os.close(writing)
        with open(reading, encoding="ascii") as address:
            return address.readline().strip()

    # Seeing

    def visible(self):
        """Every widget that is shown in the active window now, outer ones first."""
        while GLib.MainContext.default().iteration(False):
            pass  # the events by which the tree of widgets is kept current
        pending = [Atspi.get_desktop(0)]
        while pending:
            widget = pending.pop(0)
            try:
                states = widget.get_state_set()
                if is_window(widget) and not states.contains(Atspi.StateType.ACTIVE):
                    continue
                children = [widget.get_child_at_index(i) for i in range(widget.get_child_count())]
                pending += [child for child in children if child is not None]
                if states.contains(Atspi.StateType.SHOWING):
                    yield widget
            except GLib.Error:
                pass  # it has gone meanwhile, or its program is busy

    def find(self, roles, text=None):
        return [widget for widget in self.visible()
                if widget.get_role_name() in roles and text in (None, widget.get_name().strip())]

    def await_that(self, what, condition):
        """Returns the condition's value once it is true."""
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            try:
                value = condition()
                if value:
                    return value
            except GLib.Error:
                pass  # what was looked at has gone meanwhile: look again
            time.sleep(0.05)
        raise Missing(what)

    def await_widget(self, roles, text=None):
        return self.await_that(f"no {' or '.join(roles)} {text or ''}",
                               lambda: self.find(roles, text))[0]

    def read(self, starting):
        """Awaits a text with this start and returns the whole of it."""
        def shown():
            for widget in self.visible():
                if widget.get_role_name() in TEXTS:
                    text = content(widget)
                    if text.startswith(starting):
                        return text
            return None
        return self.await_that(f"nothing reads “{starting}…”", shown)

    def nearest(self, roles, caption):
        """The widget of these roles nearest to a caption, as the eye finds it: rather in its row
        than below it."""
        def search():
            captions = self.find(BUTTONS + ("label",), caption)
            if not captions:
                return None
            x, y, width, height = area(captions[0])

            def distance(widget):
                left, top, _, extent = area(widget)
                return 3 * abs(top + extent / 2 - y - height / 2) + abs(left - x - width)
            return min(self.find(roles), key=distance, default=None)
        return self.await_that(f"nothing beside {caption}", search)

    def edit_beside(self, caption):
        return self.nearest(EDITS, caption)

    # Acting

    def click(self, widget):
        x, y, width, height = area(widget)
        if widget.get_role_name() in ("radio button", "check box"):
            width = min(width, height)  # on its mark: the caption's end may be empty space
        xdotool("mousemove", str(x + width // 2), str(y + height // 2), "click", "1")

    def press(self, caption):
        self.click(self.await_widget(BUTTONS, caption))

    def type_into(self, caption, text):
        self.click(self.edit_beside(caption))
        self.key("ctrl+a")
        self.type(text)

    def type(self, text):
        xdotool("type", "--delay", "5", text)

    def key(self, name):
        xdotool("key", name)

    def picture(self, path):
        time.sleep(0.3)  # the last repaint
        subprocess.run(["import", "-window", "root", "-trim", "+repage", "-strip", "+dither",
                        "-colors", "256", f"PNG8:{path}"], check=True)


def screen_reader_bus():
    """The address at which programs offer their widgets to be read."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    return session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None,
                             None, Gio.DBusCallFlags.NONE, SECONDS * 1000).unpack()[0]


def xdotool(*arguments):
    subprocess.run(["xdotool", *arguments], check=True)


def is_window(widget):
    parent = widget.get_parent()
    return parent is not None and parent.get_role_name() == "application"


def area(widget):
    extents = widget.get_extents(Atspi.CoordType.SCREEN)
    return extents.x, extents.y, extents.width, extents.height


def content(widget):
    """The text in an edit or a text browser, or that of a label."""
    text = widget.get_text_iface()
    if text is None:
        return widget.get_name()
    return Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text)) or widget.get_name()
