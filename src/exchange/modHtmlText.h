// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Plain text of HTML fragments, as exported by flash-card programs.
#pragma once

#include <QString>
#include <QStringView>

#include <functional>

/// The name by which a text refers to the picture in a file, which has no folder; empty if there is none.
using PictureNameOf = std::function<QString(const QString &fileName)>;

/// Strips an HTML fragment to plain text. Tags that start a new line, block or cell become a space, and so do CR and
/// LF; all other tags are removed. Common named entities and all numeric ones are decoded. "[sound:…]", by which cards
/// refer to a recording, is removed. Everything else is kept as is.
/// @param pictureNameOf  if given, an "<img>" whose "src" is a file name becomes the "｢name｣" of the picture, if any
QString TextOfHtml(QStringView html, const PictureNameOf &pictureNameOf = {});

/// Only replaces each "<img>" of a picture that there is; all other text, tags included, is kept.
QString WithPictureNames(QStringView text, const PictureNameOf &pictureNameOf);
