#include "PaceletApp/MenuBarView/MenuBarModel.h"

#include "PaceletApp/MenuBarView/StatusDot.h"
#include "tests/PaceletApp/FixActions/FixRig.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QSignalSpy>

namespace pacelet::testing {
namespace {

class MenuBarModelTest : public FixRig {
protected:
    void SetUp() override {
        monitor->start();
        scheduler.settle();
        model = std::make_unique<MenuBarModel>(*monitor, *actions, mac.loginItems, scheduler);
    }

    std::vector<std::string> rows() {
        std::vector<std::string> lines;
        const QAbstractItemModel& list = *model->consumers();
        for (int row = 0; row < list.rowCount(); ++row) {
            const QModelIndex index = list.index(row, 0);
            lines.push_back((index.data(Qt::UserRole + 1).toString() + u' ' +
                             index.data(Qt::UserRole + 2).toString())
                                .toStdString());
        }
        return lines;
    }

    std::unique_ptr<MenuBarModel> model;
};

TEST(LiveDot, TellsTheAgeInWholeSecondsAndNeverBelowNone) {
    EXPECT_EQ(liveDotText({}, fromUnixTime(5)), "checking…");
    EXPECT_EQ(liveDotText(fromUnixTime(5), fromUnixTime(7.99)), "checked 2s ago");
    EXPECT_EQ(liveDotText(fromUnixTime(5), fromUnixTime(1)), "checked 0s ago");
}

TEST(StatusDot, KeepsItsColourAtEverySizeOfTrays) {
    const Table<Status, const char*, const char*> rows = {
        {Status::quiet, "#6ee7b7", "Pacelet status: All quiet"},
        {Status::busy, "#f5b841", "Pacelet status: Busy"},
        {Status::struggling, "#f87171", "Pacelet status: Struggling"},
    };
    for (const auto& [status, color, name] : rows) {
        EXPECT_EQ(StatusDot::accessibleName(status), name);
        for (const int edge : {16, 22, 24, 48, 64}) {
            const QImage image = StatusDot::icon(status).pixmap(edge, edge).toImage();
            ASSERT_EQ(image.size(), QSize(edge, edge));
            EXPECT_EQ(image.pixelColor(edge / 2, edge / 2).name(), color);
            EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
            int shades = 0;
            double covered = 0;
            QPointF center;
            for (int pixel = 0; pixel < edge * edge; ++pixel) {
                const QColor seen = image.pixelColor(pixel % edge, pixel / edge);
                shades += seen.alphaF() > 0 && seen.alphaF() < 1 ? 1 : 0;
                const double light = static_cast<double>(seen.alphaF() * seen.valueF());
                covered += light;
                center += QPointF(pixel % edge + 0.5, pixel / edge + 0.5) * light;
            }
            EXPECT_GT(shades, 0) << "with smooth edges";
            const double value = static_cast<double>(QColor{color}.valueF());
            EXPECT_NEAR(covered / edge / edge, 0.196 * value, 0.01);
            EXPECT_LT((center / covered - QPointF(edge, edge) / 2).manhattanLength(), 0.1);
        }
    }
}

TEST_F(MenuBarModelTest, BeforeTheFirstCheckThereIsNoAlarm) {
    make();
    MenuBarModel fresh{*monitor, *actions, mac.loginItems, scheduler};
    EXPECT_EQ(StatusDot::status(*monitor), Status::quiet);
    EXPECT_EQ(fresh.headline(), "Your Mac is running smoothly.");
    EXPECT_EQ(fresh.consumers()->rowCount(), 0);
    EXPECT_EQ(fresh.fix().title, "");
}

TEST_F(MenuBarModelTest, ShowsTheBusiestThreeUncapped) {
    EXPECT_EQ(model->consumers()->rowCount(), 3) << "at once";
    QSignalSpy told{model.get(), &MenuBarModel::resultChanged};
    {
        const auto world = mac.machine.lock();
        Simulated::Process fourth;
        fourth.user = Simulated::ann;
        fourth.path = "/usr/libexec/fourth";
        fourth.footprint = 1 << 20;
        world->processes.spawn(fourth);
    }
    setLoad("Notes", 140.4);
    setLoad("mds_stores", 7);
    advance(120); // ticks enough for the smoothing to follow
    EXPECT_THAT(rows(), ElementsAre("Notes 150%", "mds_stores 7%", "agent 1%"));
    EXPECT_GT(told.count(), 0);
    quit("Notes");
    advance(120);
    EXPECT_THAT(rows(), ElementsAre("mds_stores 7%", "agent 1%", "fourth 0%"));
}

TEST_F(MenuBarModelTest, TheTextOfFreshnessLivesOnlyWhileItIsShown) {
    LiveDot& dot = *model->liveDot();
    const std::size_t others = scheduler.pendingSleeps();
    EXPECT_EQ(dot.text(), "");
    dot.setShown(true);
    EXPECT_EQ(dot.text(), "checked 0s ago");
    monitor->togglePause();
    advance(12);
    EXPECT_EQ(dot.text(), "checked 10s ago");
    monitor->checkNow();
    scheduler.settle();
    EXPECT_EQ(dot.text(), "checked 0s ago");
    dot.setShown(false);
    scheduler.settle();
    EXPECT_EQ(dot.text(), "");
    EXPECT_EQ(scheduler.pendingSleeps(), others);
}

TEST_F(MenuBarModelTest, TheSwitchGoesBackWhenTheServiceRefuses) {
    QSignalSpy told{model.get(), &MenuBarModel::startAtLoginChanged};
    model->setStartAtLogin(true);
    EXPECT_TRUE(model->startAtLogin());
    EXPECT_EQ(mac.loginItems.status(), LoginItemStatus::enabled);
    EXPECT_EQ(actions->toast(), std::nullopt);

    mac.machine.inject(Simulated::LoginItemsRefuse{});
    model->setStartAtLogin(false);
    EXPECT_TRUE(model->startAtLogin());
    EXPECT_EQ(actions->toast(), "Couldn't change Start at login.");
    EXPECT_EQ(told.count(), 2);
    MenuBarModel next{*monitor, *actions, mac.loginItems, scheduler};
    EXPECT_TRUE(next.startAtLogin());
}

TEST_F(MenuBarModelTest, RunsTheMainFixBehindTheWindow) {
    monitor->setStuckApp("Notes");
    monitor->checkNow();
    scheduler.settle();
    ASSERT_NE(monitor->result().hero(), nullptr);
    EXPECT_EQ(model->status(), "struggling");
    EXPECT_EQ(model->fix().title, "Restart…");
    std::string order;
    QObject::connect(model.get(), &MenuBarModel::openRequested, [&] {
        order += "open ";
        // Opening the window closes the panel.
        model.release()->deleteLater();
    });
    QObject::connect(actions.get(), &FixActions::confirmationChanged, [&] { order += "ask "; });
    model->runFix();
    EXPECT_EQ(order, "open ");
    scheduler.settle();
    EXPECT_EQ(order, "open ask ");
}

TEST_F(MenuBarModelTest, ExplainingIsNoFixForThePanel) {
    // A process that is no application can only be explained.
    setLoad("agent", 390);
    advance(120);
    const Finding* const hero = monitor->result().hero();
    ASSERT_NE(hero, nullptr);
    ASSERT_EQ(hero->primaryFix(), FixID::explain);
    EXPECT_EQ(model->fix().title, "");
    model->runFix();
    scheduler.settle();
    EXPECT_EQ(router.screen(), Screen::overview);
}

} // namespace
} // namespace pacelet::testing
