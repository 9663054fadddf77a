// References to pictures in a study file: the name of a picture file, without folder and extension, between half-width
// corner brackets "｢" and "｣".
#pragma once

#include "text/modDisplayText.h"

#include <QStringList>

#include <vector>

/// Whether the corner brackets of a line pair up: as many closing as opening ones, each opening one before the closing
/// one of the same rank. Two opening ones followed by two closing ones pass; that is meant. A line without an opening
/// bracket always passes.
bool IsPictureLineValid(QStringView line);

/// Whether a name can be that of a picture: it holds none of ! " # $ % & ' + ? * / \ . , space, tab and ｣.
bool IsPictureNameValid(QStringView name);

/// The names in a file that cannot be those of pictures, each once, in file order. Lines whose brackets do not pair up
/// refer to nothing, and neither does what holds a blank or stands in one: the message would print a hidden answer.
QStringList BadPictureNames(const DisplayText &text);

/// The message about such names, one line each; empty when there are none. A file full of them is told of the first
/// ten.
QString BadPictureNamesMessage(const QStringList &names);

/// One reference that a click can open.
struct PictureReference
{
    qsizetype start;  ///< 0-based index of its opening bracket
    qsizetype length; ///< characters, both brackets included
    QString name;
};

/// The references of a line in order; none when line or name are not valid, or the name is empty.
std::vector<PictureReference> PictureReferences(QStringView line);

/// The name of the picture that a place in a line refers to: the place lies on the reference or on its corner brackets,
/// and line and name are valid. @param index  0-based character; @return empty where there is no reference
QString PictureNameAt(QStringView line, qsizetype index);

/// Full path of a picture: name and .png, .jpg, .jpeg, .gif or .bmp, the first of these that the folder holds, case
/// ignored; empty when it holds none.
QString FindPictureFile(const QString &folder, const QString &name);
