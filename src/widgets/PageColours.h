// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The colours of the page. Unlike most windows, it does not use those of the desktop, unless that wants its own colours
// everywhere.
#pragma once

#include <QColor>

enum class PageColourChoice;
class QPalette;

/// How the boxes of blanks are drawn. Sizes without a unit are parts of the size of the page's font.
struct PageDrawing
{
    bool isSoft = false;       ///< hidden answers in filled boxes, shown ones on a line, instead of outlines for both
    bool hasWiderLines = true; ///< lines of 2 pixels from 200 %, of 3 from 300 %; otherwise they grow with the rows
    int leastLinePx = 1;       ///< width of the lines below that
    bool hasRingAtHit = false; ///< around the mark of a hit, which alone does not stand out enough
    double underlinePx = 1;    ///< least width of the line below a shown answer, if soft
    double insetCells = 0;     ///< between a box and the outer edges of its brackets' cells, as all below if soft
    double boxHeight = 0;      ///< at most that of the row less three lines
    double radius = 0;         ///< of the corners of a box
    double nextEdge = 0;       ///< left edge of the box that Enter opens next
    double hardCorner = 0;     ///< side of the mark of a hard blank
    int numberPercent = 100;   ///< size of line numbers

    bool operator==(const PageDrawing &) const = default;
};

inline constexpr PageDrawing LightDrawing = {.hasWiderLines = false};
inline constexpr PageDrawing DarkDrawing = {};
inline constexpr PageDrawing HighContrastDrawing = {.leastLinePx = 2, .hasRingAtHit = true};
inline constexpr PageDrawing SoftDrawing = {
    .isSoft = true,
    .hasRingAtHit = true,
    .underlinePx = 1.5,
    .insetCells = 1.0 / 3,
    .boxHeight = 1.3,
    .radius = 0.22,
    .nextEdge = 0.3,
    .hardCorner = 0.5,
    .numberPercent = 90,
};

struct PageColours
{
    PageDrawing drawing;
    QColor background;
    QColor text;
    QColor answer;     ///< text of a shown answer
    QColor hiddenBox;  ///< outline of the box of a hidden answer
    QColor shownBox;   ///< outline of the box of a shown answer or, if soft, the line below it
    QColor fill{};     ///< inside the box of a hidden answer, as the next two only if soft
    QColor next{};     ///< outline of the box that Enter opens next
    QColor nextFill{}; ///< inside that box
    QColor number;     ///< line number
    QColor lineMark;   ///< behind the number of the marked line
    QColor markedNumber;
    QColor found; ///< behind the current hit of a search
    QColor frame; ///< edge of the page without keyboard focus, and between the line numbers and the text
    QColor focus; ///< edge of the page with keyboard focus, and ring around the current keyboard target
    QColor hard;  ///< corner of the box of a blank that is marked as hard
    QColor hint;  ///< first character of a hidden answer

    // For the bars of commands around the page:
    QColor bar;  ///< ground
    QColor line; ///< between groups and along the edges
    QColor barText;
    QColor dim;      ///< secondary text
    QColor edge;     ///< outline of controls
    QColor accent;   ///< edge of what is pressed or ticked; ground of what is chosen
    QColor onAccent; ///< text on that
    QColor tint;     ///< ground of what is pressed or under the pointer
    QColor hardTint; ///< ground of a ticked command about hard blanks
    QColor hardText; ///< its text and edge
    QColor note;     ///< ground of a notice
    QColor noteText;
    QColor noteEdge; ///< bar at its left

    bool operator==(const PageColours &) const = default;
};

inline constexpr PageColours LightPage = {
    .drawing = LightDrawing,
    .background = QColor(255, 255, 255),
    .text = QColor(0, 0, 0),
    .answer = QColor(0, 0, 0),
    .hiddenBox = QColor(0, 0, 0),
    .shownBox = QColor(128, 128, 128), // colour 8 of the 16-colour palette
    .number = QColor(96, 96, 96),
    .lineMark = QColor(208, 124, 0),
    .markedNumber = QColor(0, 0, 0),
    .found = QColor(60, 148, 226),
    .frame = QColor(148, 148, 148),
    .focus = QColor(20, 90, 200),
    .hard = QColor(200, 40, 40),
    .hint = QColor(110, 110, 110),
    .bar = QColor(243, 245, 247),
    .line = QColor(201, 208, 215),
    .barText = QColor(30, 39, 48),
    .dim = QColor(85, 97, 109),
    .edge = QColor(126, 137, 148),
    .accent = QColor(26, 95, 180),
    .onAccent = QColor(255, 255, 255),
    .tint = QColor(221, 233, 247),
    .hardTint = QColor(251, 231, 229),
    .hardText = QColor(166, 30, 30),
    .note = QColor(255, 243, 214),
    .noteText = QColor(61, 46, 0),
    .noteEdge = QColor(166, 106, 0),
};

inline constexpr PageColours DarkPage = {
    .drawing = DarkDrawing,
    .background = QColor(27, 30, 32),
    .text = QColor(240, 240, 240),
    .answer = QColor(240, 240, 240),
    .hiddenBox = QColor(240, 240, 240),
    .shownBox = QColor(128, 128, 128),
    .number = QColor(176, 176, 176),
    .lineMark = QColor(232, 170, 50),
    .markedNumber = QColor(27, 30, 32),
    .found = QColor(28, 107, 188),
    .frame = QColor(108, 108, 108),
    .focus = QColor(92, 170, 255),
    .hard = QColor(255, 110, 100),
    .hint = QColor(160, 160, 160),
    .bar = QColor(39, 43, 47),
    .line = QColor(58, 64, 70),
    .barText = QColor(230, 233, 236),
    .dim = QColor(171, 180, 188),
    .edge = QColor(124, 134, 144),
    .accent = QColor(108, 178, 255),
    .onAccent = QColor(12, 27, 43),
    .tint = QColor(36, 59, 85),
    .hardTint = QColor(74, 40, 38),
    .hardText = QColor(255, 154, 146),
    .note = QColor(66, 54, 26),
    .noteText = QColor(251, 230, 180),
    .noteEdge = QColor(199, 154, 58),
};

inline constexpr PageColours SoftPage = {
    .drawing = SoftDrawing,
    .background = QColor(251, 250, 246),
    .text = QColor(32, 39, 46),
    .answer = QColor(20, 83, 168),
    .hiddenBox = QColor(113, 135, 158),
    .shownBox = QColor(103, 143, 196),
    .fill = QColor(223, 232, 241),
    .next = QColor(178, 101, 0),
    .nextFill = QColor(255, 235, 194),
    .number = QColor(107, 112, 117),
    .lineMark = QColor(208, 124, 0),
    .markedNumber = QColor(0, 0, 0),
    .found = QColor(169, 211, 255),
    .frame = QColor(221, 217, 207),
    .focus = QColor(26, 95, 180),
    .hard = QColor(200, 50, 60),
    .hint = QColor(76, 92, 108),
    .bar = QColor(241, 239, 233),
    .line = QColor(214, 209, 197),
    .barText = QColor(38, 43, 48),
    .dim = QColor(90, 95, 99),
    .edge = QColor(128, 125, 116),
    .accent = QColor(26, 95, 180),
    .onAccent = QColor(255, 255, 255),
    .tint = QColor(220, 231, 244),
    .hardTint = QColor(248, 227, 224),
    .hardText = QColor(163, 32, 42),
    .note = QColor(255, 239, 201),
    .noteText = QColor(61, 46, 0),
    .noteEdge = QColor(166, 106, 0),
};

inline constexpr PageColours SoftDarkPage = {
    .drawing = SoftDrawing,
    .background = QColor(34, 38, 43),
    .text = QColor(221, 225, 229),
    .answer = QColor(147, 197, 255),
    .hiddenBox = QColor(117, 144, 172),
    .shownBox = QColor(95, 140, 191),
    .fill = QColor(53, 65, 78),
    .next = QColor(229, 172, 78),
    .nextFill = QColor(75, 61, 34),
    .number = QColor(160, 167, 174),
    .lineMark = QColor(232, 170, 50),
    .markedNumber = QColor(27, 30, 32),
    .found = QColor(29, 74, 122),
    .frame = QColor(58, 64, 72),
    .focus = QColor(108, 178, 255),
    .hard = QColor(255, 129, 120),
    .hint = QColor(195, 204, 213),
    .bar = QColor(43, 48, 54),
    .line = QColor(63, 70, 78),
    .barText = QColor(223, 227, 231),
    .dim = QColor(169, 177, 185),
    .edge = QColor(130, 140, 150),
    .accent = QColor(120, 183, 255),
    .onAccent = QColor(12, 27, 43),
    .tint = QColor(43, 65, 90),
    .hardTint = QColor(76, 46, 45),
    .hardText = QColor(255, 159, 151),
    .note = QColor(70, 58, 30),
    .noteText = QColor(248, 228, 182),
    .noteEdge = QColor(199, 154, 58),
};

/// The colours that the user has chosen. Those that follow a desktop of high contrast are for the page alone: the bars
/// keep the palette of such a desktop.
/// @param desktop, isSystemDark  tell whether the desktop is dark: its current palette and DarkMode::IsDark
PageColours ColoursOf(PageColourChoice choice, const QPalette &desktop, bool isSystemDark);

/// The palette of the bars around a page: AlternateBase is the tint, Mid the line, Shadow the outline of controls,
/// PlaceholderText secondary text, ToolTipBase a notice, ToolTipText its text and BrightText its edge.
QPalette BarPalette(const PageColours &colours);

/// The same palette for secondary text, which is readable on the bars of every desktop.
QPalette DimmedBarPalette(const QPalette &bar);

/// Colours of the windows that keep the desktop's palette; they stand out from it.
struct DesktopColours
{
    QColor accent;   ///< leads the eye; stands out from the window
    QColor onAccent; ///< text on it
    QColor tint;     ///< behind what is chosen in a list; that of the desktop if it asks for its own colours everywhere
    QColor onTint;   ///< text on it
    QColor warning;  ///< sign before a remark in a list
    QColor hard;     ///< corner before a number of hard words
};

DesktopColours ColoursOn(const QPalette &desktop);
