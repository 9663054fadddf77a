#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Checks what the running program reports to assistive technology. Needs the AT-SPI bus.

accessibility.py names   fails if a control of a window has no name that a user understands
accessibility.py page    prints the text of the page
accessibility.py caret   prints the text from the caret to the end of its line
accessibility.py how     prints the description of how the page is shown
accessibility.py places  fails if the character reported at a point of the page is not the one painted there
"""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402 (only after the version is chosen)

# Names that are the same in every language.
PLAIN_NAMES = {"OK"}
CONTROLS = {"push button", "check box", "radio button", "text", "list", "scroll bar", "progress bar"}


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


def check_names():
    seen = 0
    nameless = []
    for window in windows():
        for each in objects(window):
            if each.get_role_name() in CONTROLS:
                seen += 1
                # A font size shows only a number, so its name must say of what.
                if not is_understood(each.get_name()):
                    nameless.append(f"{window.get_name()}: {each.get_role_name()} '{each.get_name()}'")
    print(f"{seen} controls")
    for each in nameless:
        print("no name that a user understands:", each)
    return 0 if seen > 0 and not nameless else 1


def page():
    for window in windows():
        for each in objects(window):
            if each.get_name() == "本文" and "Text" in each.get_interfaces():
                return each
    sys.exit(1)


def text_from(offset):
    return Atspi.Text.get_text(page(), offset, Atspi.Text.get_character_count(page()))


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
if command == "names":
    sys.exit(check_names())
if command == "places":
    sys.exit(check_places())
if command == "how":
    print(page().get_description())
elif command == "page":
    print(text_from(0))
else:
    print(text_from(Atspi.Text.get_caret_offset(page())).split("\n")[0])
