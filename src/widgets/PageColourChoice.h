// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#pragma once

/// The colours of the page that the user can choose. Without Qt, so that the settings need no widgets for it.
enum class PageColourChoice
{
    Light,
    Dark,
    Soft,     ///< light, with filled boxes
    SoftDark, ///< the same in dark colours
    Desktop,  ///< Light or Dark, as the desktop is
};
