#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT
"""Draws which folder of src/ includes which, read from the #include lines.

    draw_rooms.py [FILE]    default: docs/rooms.svg; "-" is standard output

Each room (a folder of src/) is a row, below all rooms that include it. A line leads right from a room; each dot on it
stands for a room that it includes, and the arrow below the dot points to that room.
"""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
ROW, LANE, BOX, LEFT, TOP = 46, 44, 112, 12, 12
STYLE = """
  text { font: 15px sans-serif; fill: #1b1e20; }
  .box { fill: #eef3fa; stroke: #145ac8; stroke-width: 1.5; }
  .line { fill: none; stroke: #5a6570; stroke-width: 1.5; }
  .dot, .head { fill: #145ac8; }
  .paper { fill: #ffffff; }
"""


def rooms_included(source):
    """Maps each room to the other rooms that its files include."""
    rooms = {folder.name: set() for folder in source.iterdir() if folder.is_dir()}
    for file in source.glob("*/**/*.*"):
        if file.suffix in (".cpp", ".h"):
            room = file.relative_to(source).parts[0]
            for header in re.findall(r'^#include "([^"/]+)/', file.read_text("utf-8"), re.MULTILINE):
                rooms[room].add(header)
            rooms[room].discard(room)
    return rooms


def in_order(rooms):
    """The rooms from top to bottom: each after all those that include it."""
    order = []
    left = set(rooms)
    while left:
        free = [room for room in left if not any(room in rooms[user] for user in left)]
        if not free:
            sys.exit("these rooms include each other in a cycle: " + " ".join(sorted(left)))
        # Of several candidates, the one that includes most, so that the lines are short.
        order.append(min(free, key=lambda room: (-len(rooms[room]), room)))
        left.remove(order[-1])
    return order


def draw(rooms):
    order = in_order(rooms)
    row = {room: number for number, room in enumerate(order)}
    lane_x = {room: LEFT + BOX + LANE * number for room, number in row.items()}
    right = LEFT + BOX
    height = TOP * 2 + ROW * len(order)
    width = right + LANE * len(order)
    lines, marks = [], []

    def y_in(room):
        return TOP + ROW * row[room] + 12

    def y_out(room):
        return TOP + ROW * row[room] + 26

    for room in order:
        y = TOP + ROW * row[room]
        marks.append(f'<rect class="box" x="{LEFT}" y="{y}" width="{BOX}" height="36" rx="5"/>')
        marks.append(f'<text x="{LEFT + BOX // 2}" y="{y + 23}" text-anchor="middle">{room}</text>')
        if rooms[room]:
            last = max(lane_x[used] for used in rooms[room])
            lines.append(f'<path class="line" d="M{right},{y_out(room)} H{last}"/>')
    for used in order:
        users = [room for room in order if used in rooms[room]]
        if users:
            lines.append(f'<path class="line" d="M{lane_x[used]},{y_out(users[0])} V{y_in(used)} H{right + 8}"/>')
            marks.append(f'<path class="head" d="M{right},{y_in(used)} l10,-4 v8 z"/>')
        marks.extend(f'<circle class="dot" cx="{lane_x[used]}" cy="{y_out(room)}" r="4"/>' for room in users)
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}">',
        "<!-- Made by scripts/draw_rooms.py. -->",
        "<title>Which folder of src includes which</title>",
        f"<style>{STYLE}</style>",
        f'<rect class="paper" width="{width}" height="{height}"/>', *lines, *marks, "</svg>", ""])


def main(target):
    picture = draw(rooms_included(ROOT / "src"))
    if target == "-":
        sys.stdout.write(picture)
    else:
        Path(target).write_text(picture, "utf-8")


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else ROOT / "docs" / "rooms.svg")
