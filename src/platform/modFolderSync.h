// Folders brought to the disk. A file that was made, renamed or removed is so for good, also after a power cut, only
// when its folder has been synced; the file's own sync brings only what is inside it.
#pragma once

#include <QString>

/// Waits until the names of a folder are on the disk. Where a file system or the rights do not allow it nothing
/// happens: what was done to the folder is done, and it cannot be made any safer.
void SyncFolder(const QString &folder);
