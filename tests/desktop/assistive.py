"""Operates the application over the accessibility bus of the environment, as an assistive tool does:

  press NAME, toggle NAME, set NAME NUMBER, write NAME TEXT   wait until the control can be used
  try NAME      presses a control even if it is disabled
  where NAME    prints left, top, width and height of a text field
  list          prints role, name, description, text or value, and states of all items, visible or scrolled out of view
"""

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
    found = [name for name in ("focused", "checked", "selected", "modal") if held.contains(getattr(Atspi.StateType, name.upper()))]
    return found if held.contains(Atspi.StateType.SENSITIVE) else [*found, "disabled"]


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
            continue  # unresponsive
        yield from shown(application)


def actions(node):
    action = node.get_action_iface()
    return [action.get_action_name(index) for index in range(action.get_n_actions())] if action else []


def wait_until(condition, error):
    deadline = time.monotonic() + 10
    while time.monotonic() < deadline:
        try:
            if found := condition():
                return found
        except GLib.Error:
            pass  # destroyed meanwhile
        time.sleep(0.05)
    sys.exit(error)


def find(name, is_right, usable=True):
    def is_wanted(node):
        return node.get_name() == name and is_right(node) and not (usable and "disabled" in states(node))
    return wait_until(lambda: next(filter(is_wanted, everything()), None), f"no usable control is named {name}")


def role(node):
    """Newer versions of AT-SPI have another name for a button."""
    return {"button": "push button"}.get(node.get_role_name(), node.get_role_name())


def main(verb, name="", text=""):
    if verb in ("press", "toggle", "try"):
        action = "Toggle" if verb == "toggle" else "Press"
        # A switch has the name of its card, and can be enabled a moment before the card.
        node = find(name, lambda node: action in actions(node) and (action, role(node)) != ("Press", "check box"),
                    usable=verb != "try")
        node.get_action_iface().do_action(actions(node).index(action))
    elif verb == "set":
        node = find(name, Atspi.Accessible.get_value_iface)
        Atspi.Value.set_current_value(node, float(text))
        wait_until(lambda: Atspi.Value.get_current_value(node) == float(text), f"{name} does not accept the value")
    elif verb == "write":
        node = find(name, Atspi.Accessible.get_editable_text_iface)
        Atspi.EditableText.set_text_contents(node, text)
        wait_until(lambda: Atspi.Text.get_text(node, 0, -1) == text, f"{name} does not accept the text")
    elif verb == "where":
        extents = find(name, Atspi.Accessible.get_editable_text_iface).get_extents(Atspi.CoordType.SCREEN)
        print(extents.x, extents.y, extents.width, extents.height)
    else:
        for node in everything():
            print(role(node), node.get_name(), node.get_description(), content(node), *states(node), sep="\t")


Atspi.set_timeout(2000, 2000)  # ms; the default for an unresponsive application is 15 s
main(*sys.argv[1:])
