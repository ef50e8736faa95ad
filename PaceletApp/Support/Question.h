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

    bool operator==(const Question&) const = default;
};

} // namespace pacelet
