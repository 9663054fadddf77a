// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Detects the encoding of a file, reading no more of it than needed.
//
//     bench_detect FILE
#include "text/modCharCode.h"

#include <QFile>

#include <cstdio>

int main(int argc, char *argv[])
{
    QFile file(argc > 1 ? QFile::decodeName(argv[1]) : QString());
    const uchar *const bytes = file.open(QIODevice::ReadOnly) ? file.map(0, file.size()) : nullptr;
    if (!bytes)
        qFatal("%s", qPrintable(file.errorString()));
    std::puts(qPrintable(GetCharCodeName(QByteArrayView(bytes, file.size()))));
    return 0;
}
