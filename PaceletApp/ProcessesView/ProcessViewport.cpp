#include "PaceletApp/ProcessesView/ProcessViewport.h"

#include <algorithm>
#include <utility>

namespace pacelet {

namespace {

/// A row with the line below it.
constexpr double lineHeight = 57;

/// Rows made beyond either edge: those that Tab goes to next, and a scroll runs into first.
constexpr std::size_t rowsBeyond = 3;

} // namespace

ProcessViewport::ProcessViewport(QObject* parent)
    : QObject{parent},
      geometry_{.rowHeight = lineHeight} {}

ProcessViewport::Place ProcessViewport::placeInView() const {
    if (geometry_.count == 0) {
        return {};
    }
    const std::size_t row = geometry_.rowAt(y_);
    return {row == geometry_.open ? openID_ : std::nullopt, row, y_ - geometry_.top(row)};
}

std::optional<std::size_t> ProcessViewport::rowOf(const std::optional<std::string>& id) const {
    if (!id) {
        return std::nullopt;
    }
    const auto found = std::ranges::find_if(
        entries_, [&](const ProcessEntry& entry) { return entry.group->id == *id; });
    if (found == entries_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - entries_.begin());
}

void ProcessViewport::show(std::vector<ProcessEntry> entries, std::optional<std::string> openID,
                           Thermal thermal) {
    const Place place = held_ ? *std::exchange(held_, std::nullopt) : placeInView();
    entries_ = std::move(entries);
    thermal_ = thermal;
    if (openID != openID_) {
        openID_ = std::move(openID);
        geometry_.panelHeight = 0;
    }
    geometry_.count = entries_.size();
    geometry_.open = rowOf(openID_);
    keepCurrent();
    // Past the end of a list that got shorter is as far down as it goes.
    const std::size_t row = rowOf(place.id).value_or(place.row);
    const double extent = geometry_.top(row + 1) - geometry_.top(row);
    y_ = geometry_.top(row) + std::min(place.offset, extent);
    follow();
}

/// The keyboard stays where it was when its row has gone.
void ProcessViewport::keepCurrent() {
    if (!currentID_) {
        return;
    }
    if (const auto row = rowOf(currentID_)) {
        currentRow_ = *row;
    } else if (entries_.empty()) {
        currentID_.reset();
    } else {
        currentRow_ = std::min(currentRow_, entries_.size() - 1);
        currentID_ = entries_[currentRow_].group->id;
    }
}

void ProcessViewport::hold(const std::string& groupID) {
    if (const auto row = rowOf(groupID)) {
        held_ = Place{groupID, *row, y_ - geometry_.top(*row)};
        aim_ = Aim::openInView;
    }
}

void ProcessViewport::scrollToTop() {
    aim_ = Aim::none;
    y_ = 0;
}

void ProcessViewport::scrollToOpen() {
    aim_ = Aim::openAtTop;
    follow();
}

void ProcessViewport::setView(double y, double height) {
    shownY_ = y;
    if (y == y_ && height == viewHeight_) {
        return;
    }
    if (y != y_) {
        // Whoever scrolls wants to see something else.
        aim_ = Aim::none;
        y_ = y;
    }
    viewHeight_ = height;
    follow();
}

void ProcessViewport::setPanelHeight(double height) {
    if (!geometry_.open || height == geometry_.panelHeight) {
        return;
    }
    const Place place = placeInView();
    geometry_.panelHeight = height;
    y_ = geometry_.top(place.row) + place.offset;
    follow();
}

void ProcessViewport::aim() {
    if (aim_ == Aim::none || viewHeight_ <= 0) {
        return;
    }
    if (geometry_.open) {
        const double top = geometry_.top(*geometry_.open);
        // The upper edge counts more where a row is taller than the view.
        y_ = aim_ == Aim::openAtTop
                 ? top
                 : std::min(std::max(y_, geometry_.top(*geometry_.open + 1) - viewHeight_), top);
    }
    if (!geometry_.open || geometry_.panelHeight > 0) {
        aim_ = Aim::none;
    }
}

// While rows are handed over, they pass the keyboard on as they are told, and may not yet know
// whose they are.
void ProcessViewport::enter(const QString& groupID, bool revealing) {
    const std::string id = groupID.toStdString();
    const auto row = rowOf(id);
    if (following_ || !row || currentID_ == id) {
        return;
    }
    currentID_ = id;
    currentRow_ = *row;
    if (revealing) {
        const double top = geometry_.top(*row);
        y_ = std::min(std::max(y_, top + geometry_.rowHeight - viewHeight_), top);
    }
    follow();
}

void ProcessViewport::leave(const QString& groupID) {
    if (!following_ && currentID_ == groupID.toStdString()) {
        currentID_.reset();
        follow();
    }
}

void ProcessViewport::enterTop() {
    if (!entries_.empty()) {
        const ProcessEntry& top = entries_[geometry_.rowAt(y_)];
        enter(QString::fromStdString(top.group->id), true);
    }
}

void ProcessViewport::step(int rows) {
    if (!currentID_ || entries_.empty()) {
        return;
    }
    const auto last = static_cast<std::ptrdiff_t>(entries_.size()) - 1;
    const auto target =
        std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(currentRow_) + rows, 0, last);
    enter(QString::fromStdString(entries_[static_cast<std::size_t>(target)].group->id), true);
}

int ProcessViewport::rowsInView() const {
    return std::max(1, static_cast<int>(viewHeight_ / geometry_.rowHeight));
}

/// Brings QML up to what is set here. What QML answers within this, such as the height of a panel
/// that has just been made, is taken in by another round.
void ProcessViewport::follow() {
    again_ = true;
    if (following_) {
        return;
    }
    following_ = true;
    while (std::exchange(again_, false)) {
        aim();
        y_ = geometry_.clamped(y_, viewHeight_);
        contentHeight_ = geometry_.height();
        rows_.update(rowsToShow());
        if (y_ != shownY_) {
            Q_EMIT scrolled(y_);
        }
    }
    following_ = false;
}

std::vector<ListedProcess> ProcessViewport::rowsToShow() {
    std::vector<ListedProcess> rows;
    const auto add = [&](std::size_t row) {
        ListedProcess& listed = rows.emplace_back(listedProcess(entries_[row], thermal_));
        listed.open = listed.id == openID_;
        listed.current = listed.id == currentID_;
        listed.y = geometry_.top(row);
    };
    const auto range = geometry_.rowsBetween(y_, viewHeight_, rowsBeyond);
    if (currentID_ && currentRow_ < range.first) {
        add(currentRow_);
    }
    for (std::size_t row = range.first; row < range.last; ++row) {
        add(row);
    }
    if (currentID_ && currentRow_ >= range.last) {
        add(currentRow_);
    }
    std::vector<const ListedProcess*> shown;
    for (int row = 0; row < rows_.rowCount(); ++row) {
        shown.push_back(&rows_.item(row));
    }
    assignKeys(rows, shown, keys_);
    return rows;
}

} // namespace pacelet
