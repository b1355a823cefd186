#!/usr/bin/env python3
"""An assistive technology: reads what programs tell about themselves. To be run by the system's
Python, on a desktop with an accessibility bus.

    accessible.py tree PROGRAM       a line for each object: depth, role, name, states
    accessible.py watch PROGRAM      the same for each object that gets the focus or is selected
    accessible.py serve PROGRAM      obeys lines on standard input, each a list in JSON, and answers
                                     each with a line of JSON

What it obeys, where PATH is a list of positions from the program down:

    ["tree"], ["tree", ROLE, NAME]   all objects, or all of that role and name, each with its path, depth, role, name,
                                     description, states, actions, value (lowest, highest, current),
                                     text, and place on the screen (x, y, width, height); the last
                                     three only where it has one
    ["act", PATH, ACTION]            does one of the object's actions
    ["set", PATH, NUMBER]            sets its value
    ["write", PATH, TEXT]            replaces its text
    ["focus", PATH]                  gives it the keyboard's focus
"""

import json
import sys

import gi
import pyatspi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def describe(accessible, depth=0) -> str:
    states = ",".join(sorted(pyatspi.stateToString(state)
                             for state in accessible.getState().getStates()))
    return f"{depth}\t{accessible.getRoleName()}\t{accessible.name}\t{states}"


def walk(accessible, depth=0):
    print(describe(accessible, depth))
    for child in accessible:
        if child is not None:
            walk(child, depth + 1)


def program(name: str):
    for application in pyatspi.Registry.getDesktop(0):
        if application is not None and application.name == name:
            return application
    sys.exit(f"no program {name!r} among those that can be read")


def facts(accessible, path) -> dict:
    found = {"path": path, "depth": len(path), "role": accessible.getRoleName(),
             "name": accessible.name, "description": accessible.description,
             "states": sorted(pyatspi.stateToString(state)
                              for state in accessible.getState().getStates())}
    interfaces = pyatspi.listInterfaces(accessible)
    if "Action" in interfaces:
        action = accessible.queryAction()
        found["actions"] = [action.getName(i) for i in range(action.nActions)]
    if "Value" in interfaces:
        value = accessible.queryValue()
        found["value"] = [value.minimumValue, value.maximumValue, value.currentValue]
    if "Text" in interfaces:
        found["text"] = accessible.queryText().getText(0, -1)
    if "Component" in interfaces:
        place = accessible.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        found["place"] = [place.x, place.y, place.width, place.height]
    return found


def is_wanted(accessible, role=None, name=None) -> bool:
    return role is None or (accessible.getRoleName() == role and accessible.name == name)


def things(accessible, wanted, path=()) -> list[dict]:
    found = [facts(accessible, list(path))] if path and is_wanted(accessible, *wanted) else []
    for position, child in enumerate(accessible):
        if child is not None:
            found += things(child, wanted, (*path, position))
    return found


def act(accessible, name: str) -> bool:
    action = accessible.queryAction()
    names = [action.getName(i) for i in range(action.nActions)]
    return action.doAction(names.index(name))


def set_value(accessible, number: float) -> bool:
    accessible.queryValue().currentValue = number
    return True


def obey(name: str, words: list):
    accessible = program(name)
    accessible.set_cache_mask(Atspi.Cache.NONE)  # what was hidden may have become another thing
    if words[0] == "tree":
        return things(accessible, words[1:])
    for position in words[1]:
        accessible = accessible[position]
    return {"act": act, "set": set_value,
            "write": lambda found, text: found.queryEditableText().setTextContents(text),
            "focus": lambda found: found.queryComponent().grabFocus()}[words[0]](
                accessible, *words[2:])


def serve(name: str):
    for line in sys.stdin:
        try:
            answer = {"answer": obey(name, json.loads(line))}
        except Exception as error:  # what is read may have gone while it is read
            answer = {"error": f"{type(error).__name__}: {error}"}
        print(json.dumps(answer), flush=True)


def watch(name: str):
    def told(event):
        if event.host_application and event.host_application.name == name and event.detail1:
            print(describe(event.source), flush=True)
    pyatspi.Registry.registerEventListener(told, "object:state-changed:focused",
                                           "object:state-changed:selected")
    print("ready", flush=True)
    pyatspi.Registry.start()


if __name__ == "__main__":
    _, command, wanted = sys.argv
    {"tree": lambda: walk(program(wanted)), "watch": lambda: watch(wanted),
     "serve": lambda: serve(wanted)}[command]()
