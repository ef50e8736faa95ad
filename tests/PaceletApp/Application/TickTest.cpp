#include "PaceletApp/Models/KeyedListModel.h"
#include "PaceletApp/ProcessesView/ProcessesModel.h"
#include "PaceletApp/RootView/RootModel.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <map>

namespace pacelet::testing {
namespace {

/// Counts what the models of the window do.
class TickTest : public ApplicationRig {
protected:
    /// How often each list was told its content, and each property's change was told.
    using Counts = std::map<std::string, int>;

    void watch(QObject& model) {
        const QMetaObject& meta = *model.metaObject();
        for (int place = 0; place < meta.propertyCount(); ++place) {
            const QMetaProperty property = meta.property(place);
            const std::string name = meta.className() + std::string{"."} + property.name();
            if (const auto* const list = dynamic_cast<const KeyedList*>(
                    property.read(&model).value<QAbstractItemModel*>())) {
                lists_.emplace(name, list);
            } else if (property.hasNotifySignal()) {
                spies_.emplace(name, std::make_unique<QSignalSpy>(&model, property.notifySignal()));
            }
        }
    }

    void watchScreen() {
        lists_.clear();
        spies_.clear();
        const auto root = app().window()->property("model").value<RootModel*>();
        watch(*root->sidebar());
        watch(*root->screenModel());
        for (const char* const part : {"badge", "table", "detail"}) {
            if (auto* const model = root->screenModel()->property(part).value<QObject*>()) {
                watch(*model);
            }
        }
    }

    Counts counts() const {
        Counts all;
        for (const auto& [name, list] : lists_) {
            all[name] = static_cast<int>(list->updates());
        }
        for (const auto& [name, spy] : spies_) {
            all[name] = static_cast<int>(spy->count());
        }
        return all;
    }

private:
    std::map<std::string, const KeyedList*> lists_;
    std::map<std::string, std::unique_ptr<QSignalSpy>> spies_;
};

TEST_F(TickTest, EveryScreenDoesItsWorkOnce) {
    const std::map<Screen, std::vector<std::string>> atWork{
        {Screen::overview, {"pacelet::OverviewModel.processes", "pacelet::OverviewModel.readings"}},
        {Screen::processes, {"pacelet::ProcessesModel.chips", "pacelet::ProcessViewport.rows"}},
        {Screen::backgroundItems, {"pacelet::BackgroundItemsModel.rows"}},
        {Screen::internet, {}},
        {Screen::usage, {"pacelet::UsageModel.verdictLines", "pacelet::UsageModel.loadCurve"}},
    };
    launch("chrome-tabs");
    for (const auto& [screen, expected] : atWork) {
        open(screen);
        if (screen == Screen::processes) {
            app().router().setExpandedID(groupNamed("WindowServer").id);
        }
        pass(20);
        // The tick to count begins and ends in here, and a process comes with it.
        int ticks = 0;
        QObject context;
        QObject::connect(&app().monitor(), &Monitor::changed, &context, [&](const Fields& fields) {
            ticks += fields.hold(app().monitor().groups) ? 1 : 0;
        });
        watchScreen();
        spawn("/usr/local/bin/newcomer" + std::string{rawValue(screen)}, 80);
        const Counts before = counts();
        while (ticks == 0) {
            pass(0.1);
        }
        const Counts after = counts();
        // The traffic has a beat of its own beside the tick.
        const int most = screen == Screen::internet ? 2 : 1;
        for (const auto& [name, count] : after) {
            EXPECT_LE(count - before.at(name), most) << name;
        }
        for (const std::string& name : expected) {
            EXPECT_EQ(after.at(name) - before.at(name), 1) << name;
        }
        EXPECT_EQ(ticks, 1);
    }
}

} // namespace
} // namespace pacelet::testing
