#include "PaceletApp/ProcessesView/ProcessesModel.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace pacelet {

ProcessesModel::ProcessesModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects},
      badge_{objects.monitor, objects.scheduler} {
    connect(&objects.monitor, &Monitor::changed, this, &ProcessesModel::follow);
    connect(&objects.router, &Router::expandedIDChanged, this, &ProcessesModel::expandedChanged);
    connect(&objects.router, &Router::focusSearchChanged, this, &ProcessesModel::searchWanted);
    takeGroups();
    showRows();
}

void ProcessesModel::follow(const Fields& fields) {
    const Monitor& monitor = objects_.monitor;
    const bool groups = fields.hold(monitor.groups, monitor.explanations);
    if (groups) {
        takeGroups();
    }
    if (groups || fields.hold(monitor.signals)) {
        showRows();
    }
}

void ProcessesModel::takeGroups() {
    entries_ = allEntries(objects_.monitor.groups.held(), [this](const ProcessGroup& group) {
        return objects_.monitor.explanation(group);
    });
}

void ProcessesModel::showRows() {
    std::vector<ProcessEntry> visible = visibleEntries(entries_, query_);
    const auto& expandedID = objects_.router.expandedID();
    const auto found = std::ranges::find_if(
        visible, [&](const ProcessEntry& entry) { return entry.group->id == expandedID; });
    const auto open = found != visible.end() ? std::optional{*found} : std::nullopt;
    QString text = visible.empty() ? emptyListText(query_) : QString{};
    const bool appears = !std::exchange(listed_, !visible.empty()) && listed_;
    const auto& signals = objects_.monitor.signals();
    table_.show(std::move(visible), expandedID, signals ? signals->thermal : Thermal::normal);
    if (appears) {
        table_.scrollToOpen();
    }
    open ? showDetail(*open) : closeDetail();
    chips_.update(chipItems(entries_, query_.verdict));
    emptyText_ = std::move(text);
}

void ProcessesModel::showDetail(const ProcessEntry& open) {
    if (detail_) {
        return detail_->show(*open.group, open.explanation.get());
    }
    detail_ = std::make_unique<ProcessDetailModel>(objects_);
    detail_->show(*open.group, open.explanation.get());
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
    objects_.actions.press(FixID::quitApp, groupID.toStdString());
}

} // namespace pacelet
