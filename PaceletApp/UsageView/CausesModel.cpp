#include "PaceletApp/UsageView/CausesModel.h"

#include <algorithm>
#include <utility>

namespace pacelet {

void CausesModel::setJournal(CauseJournal journal, const UsageRange& range,
                             const HistoryCharts& charts, TimePoint now) {
    const QString chosenTime =
        chosen_ >= 0 ? bars_[static_cast<std::size_t>(chosen_.value())].time : QString{};
    journal_ = std::move(journal);
    range_ = range;
    span_ = charts.span;
    bars_ = charts.cpu.bars;
    now_ = now;
    const auto same = std::ranges::find(bars_, chosenTime, &ChartBar::time);
    chosen_ = same == bars_.end() ? -1 : static_cast<int>(same - bars_.begin());
    pointed_ = std::min(pointed_, static_cast<int>(bars_.size()) - 1);
    show();
    // The same hour lies elsewhere in a range that went on.
    Q_EMIT stretchChanged();
}

void CausesModel::setGroups(std::shared_ptr<const std::vector<ProcessGroup>> groups) {
    groups_ = std::move(groups);
    show();
}

void CausesModel::point(int bar) {
    if (std::exchange(pointed_, std::min(bar, static_cast<int>(bars_.size()) - 1)) != bar) {
        show();
    }
}

void CausesModel::choose(int bar) {
    const bool isOther = bar != chosen_ && bar < static_cast<int>(bars_.size());
    chosen_ = isOther ? bar : -1;
    show();
}

void CausesModel::showAll() {
    showsAll_ = true;
    show();
}

const ChartBar* CausesModel::bar() const {
    const int place = pointed_ >= 0 ? pointed_ : chosen_.value();
    return place >= 0 ? &bars_[static_cast<std::size_t>(place)] : nullptr;
}

void CausesModel::show() {
    CauseView view{span_, span_, now_, QTimeZone::systemTimeZone()};
    if (const ChartBar* const only = bar()) {
        const Seconds length = span_.to - span_.from;
        view.stretch = {span_.from + length * only->left, span_.from + length * only->right};
    }
    stretch_ = bar() != nullptr ? bar()->time : QString{};
    std::vector<CauseListItem> items = causeList(journal_, view, *groups_);
    note_ = items.empty() ? noCauses(range_, bar() != nullptr) : QString{};
    const std::size_t shown = showsAll_ ? items.size() : std::min(items.size(), rowsShown);
    moreTitle_ = moreCausesTitle(items.size() - shown);
    items.resize(shown);
    rows_.update(std::move(items));
}

} // namespace pacelet
