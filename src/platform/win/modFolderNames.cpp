#include "platform/modFolderNames.h"

/// The system's names are UTF-16, as Qt's are: all of them can be shown.
int CountUnshowableNames(const QString &, const QByteArray &)
{
    return 0;
}
