"""Uses the program as an assistive tool does, over the accessibility bus that the environment leads to:
assistive.py press NAME, assistive.py toggle NAME, assistive.py write NAME TEXT, or assistive.py tell, which prints
role, name and description of everything that is shown, scrolled out of sight or not, and what has the focus."""

import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def shown(node):
    if node is None:
        return
    if node.get_role() != Atspi.Role.APPLICATION and not node.get_component_iface():
        return
    yield node
    for index in range(node.get_child_count()):
        yield from shown(node.get_child_at_index(index))


def is_in_sight(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def everything():
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        yield from shown(desktop.get_child_at_index(index))


def actions(node):
    action = node.get_action_iface()
    return [action.get_action_name(index) for index in range(action.get_n_actions())] if action else []


def until(answer, complaint):
    deadline = time.monotonic() + 10
    while time.monotonic() < deadline:
        try:
            if found := answer():
                return found
        except GLib.Error:
            pass  # it went while it was looked at
        time.sleep(0.05)
    sys.exit(complaint)


def find(name, is_right):
    return until(lambda: next((node for node in everything() if node.get_name() == name and is_right(node)), None),
                 f"nothing is called {name}")


def click(node):
    place = node.get_extents(Atspi.CoordType.SCREEN)
    Atspi.generate_mouse_event(place.x + place.width // 2, place.y + place.height // 2, "b1c")


def main(verb, name="", text=""):
    if verb in ("press", "toggle"):
        action = verb.capitalize()
        node = find(name, lambda node: action in actions(node))
        if not is_in_sight(node):
            node.get_component_iface().grab_focus()
            until(lambda: is_in_sight(node), f"{name} is not scrolled into sight")
        node.get_action_iface().do_action(actions(node).index(action))
    elif verb == "write":
        node = find(name, lambda node: node.get_role() == Atspi.Role.TEXT)
        until(lambda: click(node) or node.get_state_set().contains(Atspi.StateType.FOCUSED),
              f"{name} does not take the focus")
        Atspi.generate_keyboard_event(0, text, Atspi.KeySynthType.STRING)
        until(lambda: Atspi.Text.get_text(node, 0, -1) == text, f"{name} does not take the text")
    else:
        for node in everything():
            focus = ["focused"] if node.get_state_set().contains(Atspi.StateType.FOCUSED) else []
            print(node.get_role_name(), node.get_name(), node.get_description(), *focus, sep="\t")


main(*sys.argv[1:])
