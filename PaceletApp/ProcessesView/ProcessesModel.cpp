#include "PaceletApp/ProcessesView/ProcessesModel.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace pacelet {

ProcessesModel::ProcessesModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, objects_{objects}, badgeFeed_{objects.monitor, objects.scheduler, badge_},
      chips_{[](const ChipItem& item) { return item.id; }, chipRoles()} {
    Monitor& monitor = objects.monitor;
    // At once, not in a later turn: the rows point into these lists.
    connect(&monitor, &Monitor::groupsChanged, this, &ProcessesModel::takeGroups);
    connect(&monitor, &Monitor::explanationsChanged, this, &ProcessesModel::takeGroups);
    connect(&monitor, &Monitor::signalsChanged, this, &ProcessesModel::takeSignals);
    connect(&objects.router, &Router::expandedIDChanged, this, &ProcessesModel::expandedChanged);
    connect(&objects.router, &Router::focusSearchChanged, this, &ProcessesModel::searchWanted);
    takeSignals();
    takeGroups();
}

const Explanation* ProcessesModel::explanationOf(const ProcessGroup& group) {
    const Explanations& known = objects_.monitor.explanations();
    if (const auto found = known.find(group.id); found != known.end()) {
        return &found->second;
    }
    auto explanation = objects_.monitor.explanation(group);
    return explanation ? &ownExplanations_.emplace_back(std::move(*explanation)) : nullptr;
}

void ProcessesModel::takeGroups() {
    ownExplanations_.clear();
    entries_ = allEntries(objects_.monitor.groups(),
                          [this](const ProcessGroup& group) { return explanationOf(group); });
    showRows();
}

void ProcessesModel::takeSignals() {
    const auto& signals = objects_.monitor.signals();
    table_.showHeat(signals ? signals->thermal : Thermal::normal);
}

void ProcessesModel::showRows() {
    std::vector<ProcessEntry> visible = visibleEntries(entries_, query_);
    const auto& expandedID = objects_.router.expandedID();
    const auto found = std::ranges::find_if(
        visible, [&](const ProcessEntry& entry) { return entry.group->id == expandedID; });
    const auto open = found != visible.end() ? std::optional{*found} : std::nullopt;
    QString text = visible.empty() ? emptyListText(query_) : QString{};
    const bool appears = !std::exchange(listed_, !visible.empty()) && listed_;
    // First of all: until then the table holds rows of lists that may be gone.
    table_.show(std::move(visible), expandedID);
    if (appears) {
        table_.scrollToOpen();
    }
    open ? showDetail(*open) : closeDetail();
    chips_.update(chipItems(entries_, query_.verdict));
    if (text != emptyText_) {
        emptyText_ = std::move(text);
        Q_EMIT emptyTextChanged();
    }
}

void ProcessesModel::showDetail(const ProcessEntry& open) {
    if (detail_) {
        return detail_->show(*open.group, open.explanation);
    }
    detail_ = std::make_unique<ProcessDetailModel>(objects_);
    detail_->show(*open.group, open.explanation);
    Q_EMIT detailChanged();
}

void ProcessesModel::closeDetail() {
    if (const auto closed = std::exchange(detail_, nullptr)) {
        // What is bound to it lets go of it before it dies.
        Q_EMIT detailChanged();
    }
}

void ProcessesModel::expandedChanged() {
    closeDetail();
    showRows();
}

void ProcessesModel::showQuery() {
    table_.scrollToTop();
    showRows();
}

void ProcessesModel::setSearch(const QString& search) {
    if (std::exchange(query_.search, search) != search) {
        Q_EMIT searchChanged();
        showQuery();
    }
}

void ProcessesModel::setSortByMemory(bool byMemory) {
    if (std::exchange(query_.byMemory, byMemory) != byMemory) {
        Q_EMIT sortChanged();
        showQuery();
    }
}

void ProcessesModel::choose(const QString& verdict) {
    const auto chosen = verdictFromRawValue(verdict.toStdString());
    if (std::exchange(query_.verdict, chosen) != chosen) {
        showQuery();
    }
}

void ProcessesModel::toggle(const QString& groupID) {
    const std::string id = groupID.toStdString();
    table_.hold(id);
    const bool isOpen = objects_.router.expandedID() == id;
    objects_.router.setExpandedID(isOpen ? std::optional<std::string>{} : id);
}

void ProcessesModel::quit(const QString& groupID) {
    objects_.actions.perform(FixID::quitApp, objects_.monitor.group(groupID.toStdString()));
}

} // namespace pacelet
