// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Takes a picture from elsewhere into the folder of study files, so that a text can refer to it. Messages are complete
// texts for the user, lines separated by CR LF.
#pragma once

#include "base/modFile.h"
#include "text/modPictureName.h"

#include <QString>

/// What becomes of a picture.
struct PictureToInsert
{
    QString name;         ///< in the reference: valid, without extension
    QString target;       ///< full path of the copy; that of the picture if it is in the folder already
    bool mustAsk = false; ///< whether another picture of that name would be replaced or hidden by it
    QString refusal{};    ///< why it cannot be taken; empty if it can
};

/// Judges a picture by its first bytes.
/// @param present  the pictures in the folder of study files
/// @param name  of the copy, valid; if empty, the file's own, in which characters that no name can have become "_",
/// with a number behind it if a picture of another format has that name
PictureToInsert PictureFor(const QString &path, const QString &studyFolder, const PictureFolder &present,
                           const QString &name = QString());

QString ReplacePictureQuestion(const PictureToInsert &picture);

/// Copies the picture, unless it is in the folder already. @return a fault after which an old one is unchanged
FileFault TakePicture(const QString &path, const PictureToInsert &picture);
