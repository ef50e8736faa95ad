#include "PaceletApp/BackgroundItemsView/BackgroundItemsModel.h"

#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Support/QtText.h"

namespace pacelet {

BackgroundItemsModel::BackgroundItemsModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      monitor_{objects.monitor} {
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
    connect(&monitor_, &Monitor::changed, this, [this](const Fields& fields) {
        if (fields.hold(monitor_.backgroundItems, monitor_.backgroundItemsKnown, monitor_.groups)) {
            refresh();
        }
    });
    refresh();
    detach(monitor_.refreshBackgroundItems(true));
}

void BackgroundItemsModel::refresh() {
    // Until a scan is back, what was last seen stays: when the window returns, nothing flickers.
    if (!monitor_.backgroundItemsKnown()) {
        return;
    }
    const ProcessCatalog* const catalog = monitor_.catalog();
    const BackgroundFacts facts{
        .explanation =
            [catalog](const BackgroundItem& item) {
                return catalog != nullptr ? std::optional{catalog->explain(item)} : std::nullopt;
            },
        .usage = [this](std::int32_t pid) { return monitor_.usage(pid); },
    };
    const auto before = [this](const std::string& left, const std::string& right) {
        return collator_.compare(qtText(left), qtText(right)) < 0;
    };
    const std::vector<BackgroundItem>& items = monitor_.backgroundItems();
    rows_.update(backgroundRows(grouped(items, before), facts));
    empty_ = items.empty();
}

} // namespace pacelet
