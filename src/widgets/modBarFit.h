// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Which commands of a bar fit into its width. The bar has one row; what does not fit goes into a menu at its right end.
#pragma once

#include <cstddef>
#include <vector>

struct BarItem
{
    int widthPx = 0;
    bool startsGroup = false; ///< whether a line sets it off from the items before it
};

/// Lengths of a bar, in pixels.
struct BarRoom
{
    int titlePx = 0; ///< least width of the title at the left
    int menuPx = 0;  ///< width of the button of the menu, which belongs to the last group
    int linePx = 0;  ///< width of a line between groups
    int gapPx = 0;   ///< between any two neighbours, a line being one
};

struct BarFit
{
    std::vector<bool> shown; ///< whether each item is shown
    std::vector<bool>
        lines;       ///< whether there is a line where each item has its place; only for those that start a group
    int widthPx = 0; ///< of all that is shown
};

/// Chooses what a bar shows: as many items as fit, lines only between groups that have members.
/// @param leaving  indices of the items that may go, the first to go first. All others are shown even if they do not
/// fit.
BarFit FitBar(const std::vector<BarItem> &items, const std::vector<size_t> &leaving, const BarRoom &room, int widthPx);
