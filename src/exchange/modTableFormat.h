// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Detects the format of a table from its first lines.
#pragma once

#include "exchange/modTable.h"

/// Reads the header lines that some programs write before a table, and guesses what they do not specify:
///
///     "sep=;"              spreadsheets: the separator, on the first line only
///     "#separator:tab"     flash-card programs: comma, semicolon, tab, space, pipe, colon, or the character itself
///     "#html:true"         cells are HTML
///     "#guid column:1"     a column without text to learn; likewise "notetype", "deck" and "tags"
///     "#columns:…" "#deck:…" "#notetype:…" "#tags:…" "#if matches:…"     ignored
///
/// The first line that is none of these is the first row.
/// @param separator  overrides what the lines say; empty to detect it
TableFormat DetectTableFormat(const QString &text, const QString &separator = QString());
