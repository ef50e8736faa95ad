#pragma once

#include "tests/Support/ChildProgram.h"

#include <string>

namespace pacelet::truth {

/// Runs a command in the namespace of the line. Throws `std::runtime_error` when it fails.
void onTheLine(const std::string& command);

/// How a line is to be. What it lets through is counted as on the wire, frames and all.
struct LineShape {
    double downMbps = 0;
    int roundTripMs = 0; ///< while nothing waits
    bool isBloated = false;

    double upMbps() const { return downMbps / 3; }
};

/// The line between the namespaces, in one shape.
class Line {
public:
    explicit Line(const LineShape& shape);

private:
    testing::ChildProgram delay_;
};

} // namespace pacelet::truth
