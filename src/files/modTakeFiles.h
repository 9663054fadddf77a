// Copying files from elsewhere into the folder of study files: which of them belong there, and what is said of it.
#pragma once

#include <QString>
#include <QStringList>

/// What is to be done with files that were dropped on the list, each by its full path.
struct FilesToTake
{
    QStringList fresh;    ///< of names that the folder does not have
    QStringList replaced; ///< of names that it has
    QStringList foreign;  ///< neither text nor picture
};

/// Whether a file is a table by its name, from which a study file can be made.
bool IsTable(const QString &path);

/// Sorts files by what is to be done with them. Of several of one name the first is taken, and none that lies in the
/// folder already.
FilesToTake SortFilesToTake(const QStringList &paths, const QString &folder);

/// Copies files into the folder, over those of the same names that may be there.
/// @param failures  one line for each file that could not be copied: what it would have replaced is as it was
/// @return how many were copied
int TakeFiles(const QStringList &paths, const QString &folder, QStringList *failures);

/// The texts for the user, whole, their lines separated by CR LF. Of many names the first are shown.
QString ReplaceTakenQuestion(const QStringList &replaced);
QString TakenMessage(int copied, const QStringList &foreign, const QStringList &failures);
