#include "platform/modWindowMessage.h"

// There are no such messages here, so the number only has to be the name's own.
unsigned RegisterMessageName(const QString &name)
{
    return 0xC000u | (qChecksum(name.toCaseFolded().toUtf8()) & 0x3FFFu);
}
