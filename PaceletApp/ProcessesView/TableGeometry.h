#pragma once

#include <cstddef>
#include <optional>

namespace pacelet {

/// Where the rows of a long list stand: all of one height, but for one that may be open and has a
/// panel below it. Lengths are in points, from the top of the list.
struct TableGeometry {
    /// The rows from `first` up to `last`, which is no longer one of them.
    struct Range {
        std::size_t first = 0;
        std::size_t last = 0;

        bool operator==(const Range&) const = default;
    };

    std::size_t count = 0;
    std::optional<std::size_t> open; ///< the open row
    double rowHeight = 1;            ///< above 0
    double panelHeight = 0;          ///< what the open row is taller

    /// The upper edge of a row; that of row `count` is the end of the list.
    double top(std::size_t row) const;
    double height() const { return top(count); }

    /// The row at `y`; above and below the list its first and last. The list must not be empty.
    std::size_t rowAt(double y) const;

    /// The rows that show between `y` and `y + length`, and `margin` more at either end.
    Range rowsBetween(double y, double length, std::size_t margin) const;

    /// The nearest place to `y` at which a view of this height may begin.
    double clamped(double y, double viewHeight) const;
};

} // namespace pacelet
