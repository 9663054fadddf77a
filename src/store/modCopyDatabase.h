// The copying of a database that no one has open, with what a crash may have left beside it.
#pragma once

#include <QString>

/// Copies a database to where there is none. A journal or a write-ahead log beside it belongs to it, as a crash in the
/// middle of a write leaves them; the copy is one file that needs neither, in the journal mode "delete". What is no
/// database is copied as it is. The source is only read.
/// @param target  full path; its folder is that of unfinished copies too, which are removed from it
/// @return false when there is no copy, which is then not there in part either; error then holds the reason
bool CopyDatabase(const QString &source, const QString &target, QString *error);
