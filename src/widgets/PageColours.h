// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The colours of the page. Unlike the rest of the study window, it does not use those of the desktop.
#pragma once

#include <QColor>

enum class PageColourChoice;
class QPalette;

struct PageColours
{
    QColor background;
    QColor text;
    QColor hiddenBox; ///< outline of the box of a hidden answer
    QColor shownBox;  ///< outline of the box of a shown answer
    QColor number;    ///< line number
    QColor stripEdge; ///< between the line numbers and the text
    QColor lineMark;  ///< behind the number of the marked line
    QColor markedNumber;
    QColor found;   ///< behind the current hit of a search
    QColor frame;   ///< edge of the page without keyboard focus
    QColor focus;   ///< edge of the page with keyboard focus
    QColor current; ///< ring around the current keyboard target
    QColor hard;    ///< corner of the box of a blank that is marked as hard
    QColor hint;    ///< first character of a hidden answer
};

inline constexpr PageColours LightPage = {
    .background = QColor(255, 255, 255),
    .text = QColor(0, 0, 0),
    .hiddenBox = QColor(0, 0, 0),
    .shownBox = QColor(128, 128, 128), // colour 8 of the 16-colour palette
    .number = QColor(96, 96, 96),
    .stripEdge = QColor(148, 148, 148),
    .lineMark = QColor(208, 124, 0),
    .markedNumber = QColor(0, 0, 0),
    .found = QColor(60, 148, 226),
    .frame = QColor(148, 148, 148),
    .focus = QColor(20, 90, 200),
    .current = QColor(20, 90, 200),
    .hard = QColor(200, 40, 40),
    .hint = QColor(110, 110, 110),
};

inline constexpr PageColours DarkPage = {
    .background = QColor(27, 30, 32),
    .text = QColor(240, 240, 240),
    .hiddenBox = QColor(240, 240, 240),
    .shownBox = QColor(128, 128, 128),
    .number = QColor(176, 176, 176),
    .stripEdge = QColor(108, 108, 108),
    .lineMark = QColor(232, 170, 50),
    .markedNumber = QColor(27, 30, 32),
    .found = QColor(28, 107, 188),
    .frame = QColor(108, 108, 108),
    .focus = QColor(92, 170, 255),
    .current = QColor(92, 170, 255),
    .hard = QColor(255, 110, 100),
    .hint = QColor(160, 160, 160),
};

/// The colours that the user has chosen. @param desktop  current palette, which tells whether the desktop is dark
const PageColours &ColoursOf(PageColourChoice choice, const QPalette &desktop);
