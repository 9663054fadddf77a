// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Splits a fuzzer's input into values.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

class FuzzInput
{
  public:
    FuzzInput(const std::uint8_t *data, std::size_t size)
        : m_rest(reinterpret_cast<const char *>(data), qsizetype(size))
    {
    }

    bool IsAtEnd() const
    {
        return m_rest.isEmpty();
    }

    /// The next byte; 0 at the end of the input.
    int TakeByte()
    {
        return IsAtEnd() ? 0 : quint8(Take(1).front());
    }

    /// The bytes up to the next zero byte, which is consumed, or up to the end.
    QByteArray TakeText()
    {
        const qsizetype zero = m_rest.indexOf('\0');
        QByteArray text = Take(zero < 0 ? m_rest.size() : zero);
        Take(1);
        return text;
    }

    QByteArray TakeRest()
    {
        return Take(m_rest.size());
    }

  private:
    QByteArray Take(qsizetype size)
    {
        const QByteArrayView taken = m_rest.first(std::min(size, m_rest.size()));
        m_rest = m_rest.sliced(taken.size());
        return taken.toByteArray();
    }

    QByteArrayView m_rest;
};

/// A temporary file, in memory if /dev/shm exists, removed when the process exits.
class FuzzFile
{
  public:
    explicit FuzzFile(const QString &name) : m_path(m_folder.filePath(name)) {}

    const QString &Path() const
    {
        return m_path;
    }

    void Write(const QByteArray &bytes) const
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }

    QByteArray Read() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

  private:
    QTemporaryDir m_folder{QDir(QStringLiteral("/dev/shm")).exists()
                               ? QStringLiteral("/dev/shm/kotoban-XXXXXX")
                               : QDir::tempPath() + QStringLiteral("/kotoban-XXXXXX")};
    QString m_path;
};
