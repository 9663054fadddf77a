// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Paragraphs of a message about many files.
#pragma once

#include <QString>
#include <QStringList>

/// Each on an indented line of its own, at most ten, and how many more there are.
QString Indented(const QStringList &lines);

/// A paragraph with such lines, to be appended to a message; empty if there are no lines.
QString Paragraph(QStringView heading, const QStringList &lines);
