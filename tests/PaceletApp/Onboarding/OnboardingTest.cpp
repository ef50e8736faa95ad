#include "tests/PaceletApp/Support/ApplicationRig.h"

namespace pacelet::testing {
namespace {

constexpr const char* title = "Find out why your Mac is slow";

/// The first run of the program.
class OnboardingTest : public ApplicationRig {
protected:
    void SetUp() override {
        launch("fresh-install");
        app().preferences().setOnboarded(false);
        open();
        ASSERT_TRUE(comesUp(title));
    }

    LoginItemStatus status() { return mac().loginItems.status(); }
};

TEST_F(OnboardingTest, GreetsOnceAndStaysUntilItIsAnswered) {
    EXPECT_THAT(probe->texts(), IsSupersetOf({"See the cause in plain English.",
                                              "Start Pacelet at login", "Get started"}));
    app().closeWindow(); // which is no answer
    closes(&Application::window);
    open();
    ASSERT_TRUE(comesUp(title));
    EXPECT_EQ(probe->focused(), "get started");
    probe->press(Qt::Key_Escape);
    probe->press(Qt::Key_2, Qt::ControlModifier);
    pass(1);
    EXPECT_TRUE(probe->shows(title));
    EXPECT_FALSE(app().preferences().onboarded());
    EXPECT_EQ(app().router().screen(), Screen::overview);

    probe->clickText("Get started");
    EXPECT_TRUE(goesAway(title));
    EXPECT_TRUE(app().preferences().onboarded());
    EXPECT_EQ(mac().preferences.boolean("onboarded"), true);
    EXPECT_EQ(status(), LoginItemStatus::notRegistered);
    app().closeWindow();
    closes(&Application::window);
    open();
    EXPECT_FALSE(probe->shows(title));
}

TEST_F(OnboardingTest, StartsAtLoginWhenThatIsTickedUnlessTheServiceRefuses) {
    mac().machine.inject(Simulated::LoginItemsRefuse{});
    for (const LoginItemStatus after : {LoginItemStatus::notRegistered, LoginItemStatus::enabled}) {
        probe->clickText("Start Pacelet at login");
        EXPECT_EQ(status(), LoginItemStatus::notRegistered) << "before the user is done";
        app().window()->showMinimized();
        ASSERT_TRUE(goesAway(title));
        app().showWindow();
        ASSERT_TRUE(comesUp(title));
        probe->press(Qt::Key_Return); // wherever the focus stands
        EXPECT_TRUE(goesAway(title));
        EXPECT_TRUE(app().preferences().onboarded());
        EXPECT_EQ(status(), after);
        EXPECT_EQ(app().actions().toast(), std::nullopt);
        mac().machine.clearFailures();
        app().preferences().setOnboarded(false);
        app().closeWindow();
        closes(&Application::window);
        open();
        ASSERT_TRUE(comesUp(title));
    }
}

} // namespace
} // namespace pacelet::testing
