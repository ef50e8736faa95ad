#include "PaceletApp/BackgroundItemsView/BackgroundItemsModel.h"

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Support/QtText.h"

namespace pacelet {

BackgroundItemsModel::BackgroundItemsModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent}, monitor_{objects.monitor}, rows_{[](const BackgroundRow& row) {
                                                            return row.id;
                                                        },
                                                        backgroundRoles()} {
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
    connect(&monitor_, &Monitor::backgroundItemsChanged, this, &BackgroundItemsModel::refresh);
    connect(&monitor_, &Monitor::groupsChanged, this, &BackgroundItemsModel::refresh);
    refresh();
    detach(monitor_.refreshBackgroundItems(true));
}

void BackgroundItemsModel::refresh() {
    const ProcessCatalog* const catalog = monitor_.catalog();
    const BackgroundFacts facts{
        .explanation =
            [catalog](const BackgroundItem& item) {
                return catalog != nullptr
                           ? std::optional{catalog->explainLabel(item.label, item.ownerApp)}
                           : std::nullopt;
            },
        .usage = [this](std::int32_t pid) { return monitor_.usage(pid); },
    };
    const auto before = [this](const std::string& left, const std::string& right) {
        return collator_.compare(qtText(left), qtText(right)) < 0;
    };
    const std::vector<BackgroundItem>& items = monitor_.backgroundItems();
    rows_.update(backgroundRows(grouped(items, before), facts));
    if (empty_ != items.empty()) {
        empty_ = items.empty();
        Q_EMIT emptyChanged();
    }
}

} // namespace pacelet
