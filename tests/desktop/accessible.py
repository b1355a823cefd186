#!/usr/bin/env python3
"""An assistive technology: reads what programs tell about themselves. To be run by the system's
Python, on a desktop with an accessibility bus.

    accessible.py tree PROGRAM       a line for each object: depth, role, name, states
    accessible.py watch PROGRAM      the same for each object that gets the focus or is selected
"""

import sys

import pyatspi


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
    {"tree": lambda: walk(program(wanted)), "watch": lambda: watch(wanted)}[command]()
