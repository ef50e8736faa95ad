#include "PaceletApp/MenuBarView/MenuBarModel.h"

#include "Core/Sampling/Format.h"
#include "PaceletApp/Scheduler/Detach.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"
#include "PaceletApp/Support/StartAtLogin.h"

#include <QPointer>

#include <algorithm>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace pacelet {

namespace {

/// How many groups the panel names.
constexpr std::size_t topGroups = 3;

/// The fix that the panel offers: the screens alone explain.
std::optional<FixID> offeredFix(const DiagnosisResult& result) {
    const Finding* const hero = result.hero();
    if (hero == nullptr || hero->primaryFix() == FixID::explain) {
        return std::nullopt;
    }
    return hero->primaryFix();
}

QCoro::Task<> pressSoon(QPointer<FixActions> actions, Scheduler& scheduler, FixID fix,
                        std::optional<std::string> groupID) {
    co_await scheduler.nextTurn();
    if (actions) {
        actions->press(fix, groupID);
    }
}

} // namespace

std::vector<ListRole<ConsumerRow>> ConsumerRow::roles() {
    return {{"name", [](const ConsumerRow& row) { return row.name; }},
            {"cpu", [](const ConsumerRow& row) { return row.cpu; }}};
}

MenuBarModel::MenuBarModel(Monitor& monitor, FixActions& actions, LoginItems& loginItems,
                           Scheduler& scheduler, QObject* parent)
    : QObject{parent},
      monitor_{monitor},
      actions_{actions},
      loginItems_{loginItems},
      scheduler_{scheduler},
      liveDot_{monitor, scheduler},
      startAtLogin_{startsAtLogin(loginItems)} {
    connect(&monitor, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(monitor_.groups)) {
            refreshConsumers();
        }
        if (fields.hold(monitor_.groups, monitor_.result)) {
            Q_EMIT resultChanged();
        }
    });
    refreshConsumers();
}

QString MenuBarModel::status() const {
    return rawValue(monitor_.result().status);
}

QString MenuBarModel::headline() const {
    const Finding* const hero = monitor_.result().hero();
    return hero != nullptr ? qtText(hero->headline()) : quietHeadline();
}

FixLook MenuBarModel::fix() const {
    const auto fix = offeredFix(monitor_.result());
    return fix ? lookOf(*fix, monitor_.group(monitor_.result().hero()->groupID()).get())
               : FixLook{};
}

QString MenuBarModel::loginNote() const {
    return qtText(startAtLoginNote());
}

void MenuBarModel::refreshConsumers() {
    const std::span<const ProcessGroup> groups{monitor_.groups()};
    std::vector<ConsumerRow> rows;
    for (const ProcessGroup& group : groups.first(std::min(groups.size(), topGroups))) {
        rows.push_back({.id = group.id,
                        .name = qtText(group.displayName),
                        .cpu = qtText(Format::percent(group.cpuPercent))});
    }
    consumers_.update(std::move(rows));
}

void MenuBarModel::setStartAtLogin(bool on) {
    if (on == startAtLogin_) {
        return;
    }
    startAtLogin_ = on;
    if (!setStartsAtLogin(loginItems_, on)) {
        startAtLogin_ = startsAtLogin(loginItems_);
        actions_.setToast("Couldn't change Start at login.");
    }
    // A switch that was pressed and put back shows the wrong side until it is told.
    Q_EMIT startAtLoginChanged();
}

void MenuBarModel::runFix() {
    const auto fix = offeredFix(monitor_.result());
    if (!fix) {
        return;
    }
    // The window is asked for first: opening it may close this panel, and this model with it.
    auto press = [&actions = actions_, &scheduler = scheduler_, fix = *fix,
                  groupID = monitor_.result().hero()->groupID()] {
        detach(pressSoon(&actions, scheduler, fix, groupID));
    };
    Q_EMIT openRequested();
    press();
}

} // namespace pacelet
