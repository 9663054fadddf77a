// Tells whether the program already runs from an application folder.
#pragma once

#include <QString>

#include <cstdint>

/// Holds the mark of the running instance for as long as it lives. The mark is the system's own and goes with the
/// process, also when that crashes; nothing is written into the application folder.
class InstanceMark
{
  public:
    explicit InstanceMark(const QString &applicationFolder);
    ~InstanceMark();
    Q_DISABLE_COPY_MOVE(InstanceMark)

    /// Whether another process held the mark of this folder when this one asked for it.
    bool HasPreviousInstance() const
    {
        return m_hasPrevious;
    }

  private:
    intptr_t m_handle;
    bool m_hasPrevious = false;
};
