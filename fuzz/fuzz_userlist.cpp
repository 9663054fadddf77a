// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The user list: an added name comes last, and all others are kept.
#include "app/modUserList.h"
#include "base/modCodePage.h"
#include "input.h"
#include "require.h"

// Input: the name up to a zero byte, the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("ListUserName.txt"));
    FuzzInput input(data, size);
    const QString name = FromCodePage932(input.TakeText());
    file.Write(input.TakeRest());
    const QStringList before = ReadUserNames(file.Path());
    if (!CharactersNotForNames(name).isEmpty())
        return 0; // refused by the login window
    Require(!AppendUserName(file.Path(), name));
    const QStringList after = ReadUserNames(file.Path());
    Require(after.size() == before.size() + 1 && after.first(before.size()) == before);
    Require(after.back() == name);
    return 0;
}
