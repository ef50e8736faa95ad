#pragma once

#include "tests/Support/ChildProgram.h"
#include "tests/Support/PrivateDisplay.h"

#include <QTcpServer>
#include <QTest>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pacelet::testing {

/// Long enough for a browser on a crowded machine, in milliseconds.
inline constexpr int browserPatience = 180'000;

/// Waits for it, while events are handled.
template<typename Condition>
bool comesTrue(Condition condition) {
    return QTest::qWaitFor(condition, browserPatience);
}

/// Serves pages on this machine: "/3" is the fourth of them.
class PageServer {
public:
    struct Page {
        std::string title;
        std::string addition; ///< to the address, which the page makes itself
    };

    PageServer();

    std::string address(std::size_t page) const;

    std::vector<Page> pages;

private:
    void answer(QTcpSocket& socket) const;

    QTcpServer server_;
};

/// An open page as the browser itself tells it: address and title.
using OpenPage = std::pair<std::string, std::string>;

/// Debian's browser with our extension, on a display of its own.
class RealBrowser {
public:
    explicit RealBrowser(std::string userData);

    /// False when this machine has none.
    static bool isThere();

    /// Opens a window with these pages; the first one starts the browser.
    void open(const std::vector<std::string>& arguments);

    /// What is open, sorted, from the browser's own port for developers; nothing while it is away.
    std::vector<OpenPage> pages() const;

    bool opens(const std::string& address) const;

    /// The browser alone, as if it had crashed.
    void kill();

    /// Processes of our bridge that the browser has started.
    std::vector<int> bridges() const;

private:
    std::vector<std::string> command(const std::vector<std::string>& arguments) const;

    std::string userData_;
    PrivateDisplay display_{"1280x800x24"};
    std::unique_ptr<ChildProgram> program_;
};

} // namespace pacelet::testing
