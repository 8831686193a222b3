"""Uses the program as an assistive tool does, over the accessibility bus that the environment leads to, and by no
other means: assistive.py press NAME, toggle NAME, set NAME NUMBER or write NAME TEXT, which wait until it can be
done; try NAME, which presses what is disabled too; where NAME, which prints its left, top, width and height; or tell,
which prints role, name, description, text or value, and states of everything that is shown, scrolled out of sight or
not."""

import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def shown(node):
    if node is None or (node.get_role() != Atspi.Role.APPLICATION and not node.get_component_iface()):
        return
    yield node
    for index in range(node.get_child_count()):
        yield from shown(node.get_child_at_index(index))


def states(node):
    held = node.get_state_set()
    told = [name for name in ("focused", "checked", "selected", "modal") if held.contains(getattr(Atspi.StateType, name.upper()))]
    return told if held.contains(Atspi.StateType.SENSITIVE) else [*told, "disabled"]


def content(node):
    if node.get_text_iface():
        return Atspi.Text.get_text(node, 0, -1)
    value = node.get_value_iface()
    return f"{value.get_current_value():g} of {value.get_minimum_value():g} to {value.get_maximum_value():g}" if value else ""


def everything():
    desktop = Atspi.get_desktop(0)
    for application in map(desktop.get_child_at_index, range(desktop.get_child_count())):
        try:
            application.get_role()
        except GLib.Error:
            continue  # it hangs
        yield from shown(application)


def actions(node):
    action = node.get_action_iface()
    return [action.get_action_name(index) for index in range(action.get_n_actions())] if action else []


def wait_until(answer, complaint):
    deadline = time.monotonic() + 10
    while time.monotonic() < deadline:
        try:
            if found := answer():
                return found
        except GLib.Error:
            pass  # it went while it was looked at
        time.sleep(0.05)
    sys.exit(complaint)


def find(name, is_right, usable=True):
    def is_wanted(node):
        return node.get_name() == name and is_right(node) and not (usable and "disabled" in states(node))
    return wait_until(lambda: next(filter(is_wanted, everything()), None), f"nothing of use is called {name}")


def role(node):
    """Newer assistive services call a button by another name."""
    return {"button": "push button"}.get(node.get_role_name(), node.get_role_name())


def main(verb, name="", text=""):
    if verb in ("press", "toggle", "try"):
        action = "Toggle" if verb == "toggle" else "Press"
        # A switch goes by its card's name, and may be of use a moment before the card.
        node = find(name, lambda node: action in actions(node) and (action, role(node)) != ("Press", "check box"),
                    usable=verb != "try")
        node.get_action_iface().do_action(actions(node).index(action))
    elif verb == "set":
        node = find(name, Atspi.Accessible.get_value_iface)
        Atspi.Value.set_current_value(node, float(text))
        wait_until(lambda: Atspi.Value.get_current_value(node) == float(text), f"{name} does not take the value")
    elif verb == "write":
        node = find(name, Atspi.Accessible.get_editable_text_iface)
        Atspi.EditableText.set_text_contents(node, text)
        wait_until(lambda: Atspi.Text.get_text(node, 0, -1) == text, f"{name} does not take the text")
    elif verb == "where":
        extents = find(name, Atspi.Accessible.get_component_iface).get_extents(Atspi.CoordType.SCREEN)
        print(extents.x, extents.y, extents.width, extents.height)
    else:
        for node in everything():
            print(role(node), node.get_name(), node.get_description(), content(node), *states(node), sep="\t")


Atspi.set_timeout(2000, 2000)  # ms; else a program that hangs holds it up for 15 s
main(*sys.argv[1:])
