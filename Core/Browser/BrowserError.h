#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace pacelet {

/// Why a browser did not do what it was asked.
class BrowserError : public std::runtime_error {
public:
    enum class Kind {
        failed,       ///< the script failed; `text` is what it reported
        notPermitted, ///< the user has not allowed the program to control the browser
        notRunning,   ///< the browser does not run, or quit meanwhile
    };

    static BrowserError failed(std::string text) { return {Kind::failed, std::move(text)}; }
    static BrowserError notPermitted() { return {Kind::notPermitted, {}}; }
    static BrowserError notRunning() { return {Kind::notRunning, {}}; }

    Kind kind() const { return kind_; }

    /// Empty for every kind but `failed`.
    const std::string& text() const { return text_; }

    friend bool operator==(const BrowserError& left, const BrowserError& right) {
        return left.kind_ == right.kind_ && left.text_ == right.text_;
    }

private:
    BrowserError(Kind kind, std::string text);

    Kind kind_;
    std::string text_;
};

} // namespace pacelet
