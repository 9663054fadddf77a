#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Checks what the running program reports to assistive technology. Needs the AT-SPI bus.

accessibility.py controls  fails if a control in the active window has no name or tooltip that a user understands, if its
                         key is not what is said about it, or if the Tab key does not lead there in reading order
accessibility.py page    prints the text of the page
accessibility.py caret   prints the text from the caret to the end of its line
accessibility.py how     prints the description of how the page is shown
accessibility.py listen  prints how the text of the page changes and where the caret goes, until it is ended
accessibility.py places  fails if the character reported at a point of the page is not the one painted there
"""

import re
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402 (only after the version is chosen)

# Names that are the same in every language.
PLAIN_NAMES = {"OK", "Anki(A)"}
# The Tab key leads to these menus, whose entries have keys.
KEYLESS = {"ほかの操作", "何を読み上げるか"}
BUTTONS = {"push button", "check box", "radio button"}
FIELDS = {"text", "combo box", "spin button"}
CONTROLS = BUTTONS | FIELDS | {"list", "table", "scroll bar", "progress bar"}
KEY = re.compile(r"(?:Ctrl\+|Alt\+|Shift\+)+\S|F\d+|Enter|Esc")


def objects(parent):
    """Yields an object and its visible descendants."""
    yield parent
    for i in range(parent.get_child_count()):
        child = parent.get_child_at_index(i)
        if child and child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield from objects(child)


def windows():
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(i)
        if application and application.get_name() == "Kotoban":
            for j in range(application.get_child_count()):
                yield application.get_child_at_index(j)


def is_understood(name):
    return name in PLAIN_NAMES or any(ord(letter) > 0x2E7F for letter in name)


def has(each, *states):
    return all(each.get_state_set().contains(state) for state in states)


def name_of(each):
    """The name; that of a combo box is in its label, because Qt calls the box by its value."""
    if each.get_role_name() == "combo box":
        for relation in each.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                return relation.get_target(0).get_name()
        return ""
    return each.get_name()


def key_of(each):
    keys = [Atspi.Action.get_key_binding(each, i) for i in range(Atspi.Action.get_n_actions(each))]
    return next((key for key in keys if key.startswith("Alt+")), "")


def place_of(each):
    return each.get_extents(Atspi.CoordType.SCREEN)


def faults_of(each, is_message):
    """What a user would miss about a control."""
    role, name, tip = each.get_role_name(), name_of(each), each.get_description()
    # A font size shows only a number, so its name must say of what.
    if not is_understood(name):
        yield "no name that a user understands"
    if role not in BUTTONS | FIELDS or is_message:
        return
    if not is_understood(tip):
        yield f"no tooltip that a user understands, but '{tip}'"
    key, caption, told = key_of(each), re.search(r"\(([A-Z])\)", name), re.search(r"\(Alt\+([A-Z])\)", tip)
    for letter in [match[1] for match in (caption, told) if match]:
        if key and key != f"Alt+{letter}":
            yield f"its key is {key}, not Alt+{letter}"
    if caption and role != "combo box" and has(each, Atspi.StateType.SENSITIVE) and not key:
        yield "a letter in its caption, but no key"
    if role in {"push button", "check box"} and not key and not KEY.search(tip + name) and name not in KEYLESS:
        yield "no key"


def focused(controls):
    for index, each in enumerate(controls):
        if has(each, Atspi.StateType.FOCUSED):
            return index
    return None


def tab_faults(controls):
    """Goes through the controls by the Tab key."""
    controls = [each for each in controls if has(each, Atspi.StateType.FOCUSABLE, Atspi.StateType.SENSITIVE)]
    order = []
    for _ in range(2 * len(controls)):
        now = focused(controls)
        if now in order:
            if now != order[0]:
                yield f"the Tab key leads to {controls[now].get_role_name()} '{controls[now].get_name()}' for ever"
            break
        if now is not None:  # not something else, as a view that scrolls
            order.append(now)
        subprocess.run(["xdotool", "key", "Tab"], check=True)
        for _ in range(50):  # until the focus has moved, unless there is nowhere else
            if focused(controls) != now:
                break
            time.sleep(0.02)
    roles = [controls[index].get_role_name() for index in order]
    for index, each in enumerate(controls):
        # The arrow keys lead to the other radio buttons.
        if index not in order and not (each.get_role_name() == "radio button" and "radio button" in roles):
            yield f"the Tab key does not lead to {each.get_role_name()} '{each.get_name()}'"
    places = [place_of(controls[index]) for index in order]
    # Down or to the right, up only to the next column, and once back to the first control.
    ups = [
        f"{before.x}, {before.y} to {after.x}, {after.y}"
        for before, after in zip(places, places[1:] + places[:1])
        if after.y + after.height <= before.y and after.x < before.x + before.width
    ]
    if len(ups) > 1:
        yield f"the Tab key goes up from {' and from '.join(ups)}"


def check_controls():
    active = [window for window in windows() if has(window, Atspi.StateType.ACTIVE)]
    if len(active) != 1:
        print(f"{len(active)} active windows")
        return 1
    faults = []
    keys = set()
    is_message = active[0].get_name() == "瞬記帳"  # its buttons answer what is above them
    everything = list(objects(active[0]))
    # The field in a combo box that can be edited is part of it.
    controls = [
        each
        for each in everything
        if each.get_role_name() in CONTROLS and each.get_parent().get_role_name() != "combo box"
    ]
    for each in everything:
        if re.search(r"<\w+.*>", each.get_description()):
            faults.append(f"markup in the description of '{each.get_name()}': {each.get_description()}")
    for each in controls:
        faults += [f"{each.get_role_name()} '{name_of(each)}': {fault}" for fault in faults_of(each, is_message)]
        key = key_of(each)
        if key and key in keys:
            faults.append(f"{key} is the key of two controls")
        keys.add(key)
    if not faults:
        faults += tab_faults(controls)
    print(f"{len(controls)} controls")
    for fault in faults:
        print(f"{active[0].get_name()}: {fault}")
    return 1 if faults or not controls else 0


def page():
    for window in windows():
        for each in objects(window):
            if each.get_name() == "本文" and "Text" in each.get_interfaces():
                return each
    sys.exit(1)


def text_from(offset):
    return Atspi.Text.get_text(page(), offset, Atspi.Text.get_character_count(page()))


def listen():
    def tell(event):
        what = event.type.removeprefix("object:").removesuffix(":system")
        if what.startswith("text-") and event.source and event.source.get_name() == "本文":
            print(what, event.detail1, event.any_data if what.startswith("text-changed") else "", flush=True)

    listener = Atspi.EventListener.new(tell)
    listener.register("object")  # Qt reports no caret to those who ask for that alone
    print("ready", flush=True)
    Atspi.event_main()


def check_places():
    area = page().get_extents(Atspi.CoordType.SCREEN)
    first_at = {}
    wrong = 0
    for offset, character in enumerate(text_from(0)):
        place = Atspi.Text.get_character_extents(page(), offset, Atspi.CoordType.SCREEN)
        if character == "\n" or place.width <= 0:
            continue  # out of view at the left or the right
        # All characters of the placeholder for a hidden answer report the same extents.
        first = first_at.setdefault((place.x, place.y, place.width), offset)
        at = (place.x + place.width // 2, place.y + place.height // 2)
        reported = Atspi.Text.get_offset_at_point(page(), *at, Atspi.CoordType.SCREEN)
        if not area.x <= at[0] < area.x + area.width or reported != first:
            wrong += 1
            print(f"offset {offset} '{character}' is at {at}, where offset {reported} is reported")
    return 1 if wrong or not first_at else 0


command = sys.argv[1]
if command == "controls":
    sys.exit(check_controls())
if command == "places":
    sys.exit(check_places())
if command == "listen":
    listen()
elif command == "how":
    print(page().get_description())
elif command == "page":
    print(text_from(0))
else:
    print(text_from(Atspi.Text.get_caret_offset(page())).split("\n")[0])
