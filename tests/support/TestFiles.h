// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Temporary folders and files for tests.
#pragma once

#include "base/modCodePage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <ostream>

class TestFolder
{
  public:
    QString Path(const QString &name = QString()) const
    {
        return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
    }

    /// Writes a file, creating its parent folders. @return its full path
    QString Write(const QString &name, const QByteArray &bytes) const
    {
        QString path = Path(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    /// Writes lines as a study file: code page 932, CR LF. @return its full path
    QString WriteStudyFile(const QString &name, const QStringList &lines) const
    {
        const QString text = lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
        return Write(name, ToCodePage932(text));
    }

    QByteArray Read(const QString &name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    void MakeFolder(const QString &name) const
    {
        QDir().mkpath(Path(name));
    }

  private:
    QTemporaryDir m_folder;
};

/// Used by GoogleTest to print values.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *stream)
{
    *stream << '"' << bytes.toPercentEncoding(" []=;:,.").toStdString() << '"';
}
