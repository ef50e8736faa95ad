#include "PaceletApp/OverviewView/OverviewModel.h"

#include <algorithm>
#include <utility>

namespace pacelet {

namespace {

const ProcessGroup* groupOf(const Finding& finding, std::span<const ProcessGroup> groups) {
    if (!finding.groupID()) {
        return nullptr;
    }
    const auto found = std::ranges::find(groups, *finding.groupID(), &ProcessGroup::id);
    return found != groups.end() ? &*found : nullptr;
}

/// True when the field took another value.
template<typename Value>
bool take(Value& field, Value next) {
    if (field == next) {
        return false;
    }
    field = std::move(next);
    return true;
}

} // namespace

OverviewModel::OverviewModel(QObject* parent)
    : QObject{parent}, readings_{readingsLook(std::nullopt)}, causes_{[](const CauseItem& item) {
                                                                          return item.id;
                                                                      },
                                                                      causeRoles()},
      processes_{[](const ProcessItem& item) { return item.id; }, processRoles()} {}

void OverviewModel::show(const OverviewFacts& facts) {
    const Finding* first = facts.result.hero();
    const ProcessGroup* group = first != nullptr ? groupOf(*first, facts.groups) : nullptr;
    const bool hero = take(hero_, heroLook(facts.checked, first, group));
    const bool readings = take(readings_, readingsLook(facts.signals));
    const bool label = take(moreLabel_, moreCausesLabel(facts.result.more().size()));
    result_ = facts.result;

    std::vector<CauseItem> causes;
    for (const Finding& finding : facts.result.more()) {
        causes.push_back(causeItem(finding, groupOf(finding, facts.groups)));
    }
    causes_.update(std::move(causes));
    std::vector<ProcessItem> processes;
    for (const ProcessGroup& each :
         facts.groups.first(std::min(facts.groups.size(), processesShown))) {
        processes.push_back(processItem(each, facts.explanation(each)));
    }
    processes_.update(std::move(processes));

    if (hero) {
        Q_EMIT heroChanged();
    }
    if (readings) {
        Q_EMIT readingsChanged();
    }
    if (label) {
        Q_EMIT moreLabelChanged();
    }
}

void OverviewModel::fix(const Finding& finding) {
    if (finding.primaryFix()) {
        Q_EMIT fixWanted(*finding.primaryFix(), finding.groupID());
    }
}

void OverviewModel::fixHero() {
    if (const Finding* finding = result_.hero()) {
        fix(*finding);
    }
}

void OverviewModel::fixCause(int row) {
    const auto more = result_.more();
    if (row >= 0 && static_cast<std::size_t>(row) < more.size()) {
        fix(more[static_cast<std::size_t>(row)]);
    }
}

void OverviewModel::fixProcess(const QString& groupId) {
    Q_EMIT fixWanted(FixID::quitApp, groupId.toStdString());
}

} // namespace pacelet
