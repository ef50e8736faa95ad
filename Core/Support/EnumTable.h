#pragma once

#include "Core/Support/Precondition.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace pacelet {

/// The row of `table` that belongs to `value`. A table has a member `value` in each row; one table
/// an enumeration holds everything that is said of its cases (raw value, label, symbol).
template<typename Row, std::size_t count, typename Enum>
constexpr const Row& rowOf(const std::array<Row, count>& table, Enum value) {
    for (const Row& row : table) {
        if (row.value == value) {
            return row;
        }
    }
    invariantBreach("an enumeration holds a value that is none of its cases");
}

/// The case with this raw value, or nothing.
template<typename Enum, typename Row, std::size_t count>
constexpr std::optional<Enum> fromRawValue(const std::array<Row, count>& table,
                                           std::string_view rawValue) {
    for (const Row& row : table) {
        if (row.rawValue == rawValue) {
            return row.value;
        }
    }
    return std::nullopt;
}

} // namespace pacelet
