#!/usr/bin/python3
"""Reads the accessibility tree of the program, as a screen reader would: a line in, all nodes that show out, as JSON."""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  pylint: disable=wrong-import-position

STATES = {
    name: getattr(Atspi.StateType, name.upper())
    for name in ("enabled", "showing", "visible", "focused", "focusable", "checked", "selected", "active", "editable")
}


def describe(node, parent, states):
    interfaces = node.get_interfaces()
    extents = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN) if "Component" in interfaces else None
    text = None
    if "Text" in interfaces:
        text = Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))
    return {
        "parent": parent,
        "role": node.get_role_name(),
        "name": node.get_name(),
        "description": node.get_description(),
        "place": [extents.x, extents.y, extents.width, extents.height] if extents else None,
        "text": text,
        "states": [name for name, state in STATES.items() if states.contains(state)],
    }


def walk(node, parent, nodes):
    """Adds a node and all below it. The application itself never shows; entries of a list that is hidden say they do."""
    try:
        states = node.get_state_set()
        if parent is not None and not states.contains(STATES["showing"]):
            return
        nodes.append(describe(node, parent, states))
        here = len(nodes) - 1
        for index in range(node.get_child_count()):
            child = node.get_child_at_index(index)
            if child:
                walk(child, here, nodes)
    except (GLib.Error, AttributeError, TypeError):
        pass  # It went while it was read: the next reading tells.


def read_tree():
    nodes = []
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application and application.get_name() == "Tumblewick":
            application.clear_cache()
            walk(application, None, nodes)
    return nodes


for _ in sys.stdin:
    print(json.dumps(read_tree()), flush=True)
