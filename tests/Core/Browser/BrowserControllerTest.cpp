#include "Core/Browser/BrowserController.h"
#include "Core/Browser/OSAScriptRunner.h"
#include "Core/Browser/TabScript.h"
#include "tests/Support/FakeToolRunner.h"

#include <gmock/gmock.h>

namespace pacelet {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The error that `action` throws.
template<typename Action>
std::optional<BrowserError> errorOf(Action&& action) {
    try {
        action();
    } catch (const BrowserError& error) {
        return error;
    }
    return std::nullopt;
}

struct BrowserControllerTest : ::testing::Test {
    testing::FakeToolRunner tools;
    std::vector<std::string> asked;
    bool running = true;
    BrowserController controller{std::make_shared<OSAScriptRunner>(tools),
                                 [this](const std::string& identifier) {
                                     asked.push_back(identifier);
                                     return running;
                                 }};

    void answer(std::int32_t status, const std::string& output, const std::string& error) {
        tools.answer = [=](const testing::FakeToolRunner::Call&) {
            return Shell::Output{status, output, error};
        };
    }
};

const std::vector<BrowserTab> oneTab{{"1/2", "1", "2", "t", "u", true}};
const MergePlan plan{"1", {"u"}, {"2"}, std::nullopt};

} // namespace

TEST(ChromiumBrowser, IsKnownByItsBundleFileName) {
    using enum ChromiumBrowser;
    const std::pair<std::string, std::optional<ChromiumBrowser>> rows[] = {
        {"/Applications/Google Chrome.app", chrome},
        {"/Users/me/Apps/Brave Browser.app", brave},
        {"/Microsoft Edge.app", edge},
        {"Microsoft Edge.app", std::nullopt},
        {"/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge", std::nullopt},
        {"/Applications/Google Chrome Beta.app", std::nullopt},
        {"/Applications/My Google Chrome.app", std::nullopt},
        {"/Applications/google chrome.app", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [path, expected] : rows) {
        EXPECT_EQ(chromiumBrowserAt(path), expected) << path;
    }
}

TEST_F(BrowserControllerTest, RunsTheScriptOfEachOperation) {
    answer(0,
           "\nW\x1F"
           "1\x1Fnormal\x1F"
           "1\x1F"
           "A - Brave Browser - Work\x1E\r\n",
           "warning (-600)");
    const auto windows = controller.windows(ChromiumBrowser::brave);
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows[0].profile, "Work");
    controller.close(oneTab, ChromiumBrowser::chrome);
    controller.merge(plan, ChromiumBrowser::edge);
    controller.openMemorySaver(ChromiumBrowser::chrome);
    EXPECT_THAT(asked, ElementsAre("com.brave.Browser", "com.google.Chrome",
                                   "com.microsoft.edgemac", "com.google.Chrome"));
    const auto call = [](const std::string& script) {
        return testing::FakeToolRunner::Call{"/usr/bin/osascript", {"-e", script}};
    };
    EXPECT_THAT(tools.calls,
                ElementsAre(call(TabScript::list(ChromiumBrowser::brave)),
                            call(TabScript::close(oneTab, ChromiumBrowser::chrome)),
                            call(TabScript::merge(plan, ChromiumBrowser::edge)),
                            call(TabScript::openMemorySaver(ChromiumBrowser::chrome))));
    answer(0, "\n", "");
    EXPECT_THAT(controller.windows(ChromiumBrowser::edge), IsEmpty());
}

TEST_F(BrowserControllerTest, TouchesNoBrowserThatDoesNotRun) {
    running = false;
    const std::function<void()> operations[] = {
        [&] { controller.windows(ChromiumBrowser::chrome); },
        [&] { controller.close(oneTab, ChromiumBrowser::chrome); },
        [&] { controller.merge(plan, ChromiumBrowser::chrome); },
        [&] { controller.openMemorySaver(ChromiumBrowser::chrome); },
    };
    for (const auto& operation : operations) {
        EXPECT_EQ(errorOf(operation), BrowserError::notRunning());
    }
    EXPECT_THAT(tools.calls, IsEmpty());
    asked.clear();
    EXPECT_NO_THROW(controller.close({}, ChromiumBrowser::chrome));
    EXPECT_THAT(asked, IsEmpty()) << "nothing to close, nothing to ask";
}

TEST_F(BrowserControllerTest, TellsWhyAScriptFailed) {
    const std::pair<std::string, BrowserError> rows[] = {
        {"execution error: Not authorized. (-1743)\n", BrowserError::notPermitted()},
        {"execution error: isn’t running. (-600)\n", BrowserError::notRunning()},
        {"(-600) then (-1743)", BrowserError::notPermitted()},
        {" \n\t ", BrowserError::failed("")},
        {"-1743 -600 (-1728)\r\n", BrowserError::failed("-1743 -600 (-1728)")},
    };
    for (const auto& [text, expected] : rows) {
        answer(1, "W", text);
        EXPECT_EQ(errorOf([&] { controller.merge(plan, ChromiumBrowser::edge); }), expected)
            << text;
    }
    EXPECT_STREQ(BrowserError::failed("why").what(), "why");
    tools.failToLaunch();
    EXPECT_THROW(controller.windows(ChromiumBrowser::edge), LaunchError);
}

} // namespace pacelet
