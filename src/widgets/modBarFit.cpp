// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/modBarFit.h"

namespace {

/// Adds the lines and the width of what is shown.
void Measure(const std::vector<BarItem> &items, const BarRoom &room, BarFit *fit)
{
    fit->lines.assign(items.size(), false);
    fit->widthPx = room.titlePx + room.gapPx + room.menuPx;
    const auto add = [fit, &room](int widthPx) { fit->widthPx += widthPx + room.gapPx; };
    bool hasItemBefore = false;
    size_t line = items.size(); // where the group of the item began, until its line is certain
    for (size_t i = 0; i < items.size(); ++i) {
        if (items[i].startsGroup)
            line = hasItemBefore ? i : items.size();
        if (!fit->shown[i])
            continue;
        hasItemBefore = true;
        add(items[i].widthPx);
        if (line < items.size())
            fit->lines[line] = true;
        line = items.size();
    }
    if (line < items.size()) // the last group is left with the button of the menu
        fit->lines[line] = true;
    for (const bool isShown : fit->lines)
        if (isShown)
            add(room.linePx);
}

} // namespace

BarFit FitBar(const std::vector<BarItem> &items, const std::vector<size_t> &leaving, const BarRoom &room, int widthPx)
{
    BarFit fit;
    fit.shown.assign(items.size(), true);
    Measure(items, room, &fit);
    for (const size_t next : leaving) {
        if (fit.widthPx <= widthPx)
            break;
        fit.shown[next] = false;
        Measure(items, room, &fit);
    }
    return fit;
}
