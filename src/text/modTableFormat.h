// What the first lines of a table say about its format.
#pragma once

#include "text/modTable.h"

/// Reads the lines with which some programs begin a table, and guesses what they do not tell:
///
///     "sep=;"              spreadsheets: the separator, on the first line only
///     "#separator:tab"     flash-card programs: comma, semicolon, tab, space, pipe, colon, or the character itself
///     "#html:true"         cells are HTML
///     "#guid column:1"     a column that is no text to learn, as are those of "notetype", "deck" and "tags"
///     "#columns:…" "#deck:…" "#notetype:…" "#tags:…" "#if matches:…"     nothing that is needed here
///
/// The first line that is none of these is the first row.
/// @param separator  stands between cells whatever the lines tell; empty when it is to be found out
TableFormat DetectTableFormat(const QString &text, const QString &separator = QString());
