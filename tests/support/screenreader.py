"""Presses buttons as a screen reader's user does, over the accessibility bus. Reads commands, one a
line, and answers each with a line once it has been done:

await CAPTION   waits until a button with this caption is shown and can be pressed, and keeps it
press CAPTION   sends a press to the button that was kept under this caption, whatever its caption is
                by now, and does not wait for its effect"""
import pathlib
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

sys.path.append(str(pathlib.Path(__file__).parents[2] / "practice"))
from reading import offer_to_read  # noqa: E402

kept = {}


def buttons(widget):
    if widget.get_role_name() in ("push button", "toggle button"):
        yield widget
    for i in range(widget.get_child_count()):
        child = widget.get_child_at_index(i)
        if child is not None:
            yield from buttons(child)


def find(caption):
    while GLib.MainContext.default().iteration(False):
        pass  # events of the bus, which keep what Atspi knows of the widgets up to date
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for button in buttons(desktop):
        states = button.get_state_set()
        if (button.get_name() == caption and states.contains(Atspi.StateType.SHOWING)
                and states.contains(Atspi.StateType.ENABLED)):
            return button
    return None


def await_button(caption):
    end = time.monotonic() + 20
    while time.monotonic() < end:
        try:
            button = find(caption)
            if button is not None:
                kept[caption] = button
                return "shown"
        except GLib.Error:
            pass  # its program is busy, or has gone
        time.sleep(0.005)
    return "not shown"


def press(caption):
    Atspi.set_timeout(1, 1)  # a busy program takes the press, and answers later
    try:
        kept[caption].do_action(0)
    except GLib.Error:
        pass
    Atspi.set_timeout(500, 5000)
    # The bus takes messages in their order: with this answer the press is on its way.
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    desktop.get_child_count()
    return "pressed"


offer_to_read()
Atspi.set_timeout(500, 5000)
print("ready", flush=True)
for line in sys.stdin:
    command, _, text = line.strip().partition(" ")
    print(await_button(text) if command == "await" else press(text), flush=True)
