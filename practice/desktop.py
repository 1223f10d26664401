"""A virtual screen with a person in front of it: finds what is to be seen on it by role and text,
as a screen reader does, and works it with real mouse clicks and key presses."""
import contextlib
import math
import os
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from film import Film  # noqa: E402
from reading import offer_to_read  # noqa: E402
from screen import DESCRIPTOR, DESKTOP, HEIGHT, WIDTH, Screen  # noqa: E402

SECONDS = 20  # that anything awaited may take
BUTTONS = ("push button", "radio button", "check box", "toggle button")
EDITS = ("text", "password text", "entry")
KEY_NAMES = {"ctrl+a": "Ctrl A", "Right": "→"}  # as the film shows them, where that differs
TEXTS = ("label", "text", "document frame", "paragraph")


class Missing(Exception):
    """What was awaited did not come; the message says what that was."""


class Desktop(Screen):
    """The screen and the person, who is in no hurry while being filmed."""

    def __init__(self):
        super().__init__(scale=2)
        self.film = None
        # Its place in pixels; the server starts it in the middle.
        self.pointer = (WIDTH * self.scale // 2, HEIGHT * self.scale // 2)

    def __enter__(self):
        super().__enter__()
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.start_server(
            "dbus-daemon", "--session", "--nofork", f"--print-address={DESCRIPTOR}")
        offer_to_read()
        Atspi.set_timeout(500, 5000)
        return self

    @contextlib.contextmanager
    def filmed(self, path):
        """Films the `with` block."""
        try:
            with Film(self.path("Xvfb_screen0"), self.scale, path) as self.film:
                yield
        finally:
            self.film = None

    def await_window(self, title):
        """Awaits that the window with this title has the keyboard."""
        self.await_that(f"no window {title}", lambda: subprocess.run(
            ["xdotool", "getwindowfocus", "getwindowname"], stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL, text=True, check=False).stdout == f"{title}\n")

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
            if self.film:
                self.film.wait(0.05)
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
        place = (self.scale * (x + width // 2), self.scale * (y + height // 2))
        self.move_to(place)
        xdotool("click", "1")
        if self.film:
            self.film.click = place
            self.film.take(0.4)
            self.film.click = None

    def move_to(self, place):
        """Moves the pointer; when filmed, by degrees, and faster in the middle of the way."""
        steps = 10 if self.film else 1
        for step in range(1, steps + 1):
            part = (1 - math.cos(math.pi * step / steps)) / 2
            xdotool("mousemove", *(str(round(start + part * (end - start)))
                                   for start, end in zip(self.pointer, place)))
            self.linger(0.05)
        self.pointer = place

    def press(self, caption):
        self.click(self.await_widget(BUTTONS, caption))

    def type_into(self, caption, text, secret=False):
        edit = self.edit_beside(caption)
        self.click(edit)
        if content(edit):
            self.key("ctrl+a")
        self.type(text, secret)

    def type(self, text, secret=False):
        for end, character in enumerate(text, 1):
            xdotool("type", character)
            self.show_keys("•" * end if secret else text[:end], 0.1)
        self.linger(0.4)

    def type_at_once(self, text):
        """For a tree, in which the first key after a pause begins a new search."""
        xdotool("type", "--delay", "5", text)
        self.show_keys(text, 0.5)

    def key(self, name):
        xdotool("key", name)
        self.show_keys(KEY_NAMES.get(name, name), 0.5)

    def show_keys(self, keys, seconds):
        if self.film:
            self.film.keys = keys
            self.film.take(seconds)
            self.film.keys = None

    def linger(self, seconds):
        """Gives the film's viewer time to read."""
        if self.film:
            self.film.take(seconds)

    def picture(self, path):
        time.sleep(0.3)  # the last repaint
        self.linger(1.2)
        subprocess.run(["import", "-window", "root", path], check=True)
        subprocess.run(["mogrify", "-trim", "+repage", "-bordercolor", DESKTOP, "-border",
                        str(20 * self.scale), "-strip", path], check=True)


def xdotool(*arguments):
    subprocess.run(["xdotool", *arguments], check=True)


def is_window(widget):
    parent = widget.get_parent()
    return parent is not None and parent.get_role_name() == "application"


def area(widget):
    """Its place on the screen, in points."""
    extents = widget.get_extents(Atspi.CoordType.SCREEN)
    return extents.x, extents.y, extents.width, extents.height


def content(widget):
    """The text in an edit or a text browser, or that of a label."""
    text = widget.get_text_iface()
    if text is None:
        return widget.get_name()
    return Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text)) or widget.get_name()
