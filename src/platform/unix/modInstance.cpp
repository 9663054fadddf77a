#include "platform/modInstance.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// The lock lies on the folder itself. It must not pass to programs that are started from here (an editor may outlive
// the program), hence O_CLOEXEC. A file system without such locks cannot tell, and then the start goes on.
InstanceMark::InstanceMark(const QString &applicationFolder)
    : m_handle(open(QFile::encodeName(applicationFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_handle >= 0)
        m_hasPrevious = flock(int(m_handle), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

InstanceMark::~InstanceMark()
{
    if (m_handle >= 0)
        close(int(m_handle));
}
