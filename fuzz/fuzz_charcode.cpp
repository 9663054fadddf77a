// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Detecting the encoding of any bytes: the optimized scan agrees with the reference implementation.
#include "input.h"
#include "plain_charcode.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = FuzzInput(data, size).TakeRest();
    Require(DetectCharCode(bytes) == PlainCharCode(bytes).Detect());
    return 0;
}
