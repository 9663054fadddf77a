// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Tables of test cases.
#pragma once

#include <tuple>
#include <vector>

/// Name the fields in the loop: for (const auto &[name, bytes, text] : rows).
template <typename... Fields>
using Rows = std::vector<std::tuple<Fields...>>;
