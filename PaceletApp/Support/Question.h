#pragma once

#include <string>

namespace pacelet {

/// What a dialog asks.
struct Question {
    std::string title;
    std::string message; ///< paragraphs, a line each; empty for none
    std::string confirm; ///< caption of the accepting button
    bool destructive = false;
    std::string cancel = "Cancel"; ///< caption of the other one
    int paragraphLines = 100;      ///< of a longer paragraph the rest is cut off

    bool operator==(const Question&) const = default;
};

} // namespace pacelet
