// Tables of cases.
#pragma once

#include <tuple>
#include <vector>

/// A loop over the rows names their fields: for (const auto &[name, bytes, text] : rows).
template <typename... Fields>
using Rows = std::vector<std::tuple<Fields...>>;
