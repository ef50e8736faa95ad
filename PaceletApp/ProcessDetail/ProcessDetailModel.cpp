#include "PaceletApp/ProcessDetail/ProcessDetailModel.h"

#include "Core/Platform/Platform.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Websites.h"

#include <utility>

namespace pacelet {

ProcessDetailModel::ProcessDetailModel(const SharedObjects& objects, QObject* parent)
    : QObject{parent},
      objects_{objects} {}

void ProcessDetailModel::show(const ProcessGroup& group, const Explanation* explanation) {
    groupID_ = group.id;
    partsLabel_ = pacelet::partsLabel(group);
    parts_.update(busiestParts(group));
    if (explanation != nullptr) {
        showExplanation(group, *explanation);
    }
    showFamily(familyOf(group));
    Q_EMIT changed();
}

void ProcessDetailModel::showExplanation(const ProcessGroup& group,
                                         const Explanation& explanation) {
    summary_ = qtText(explanation.summary);
    whyHigh_ = qtText(explanation.whyHigh.value_or(""));
    guide_ = guideAddress(paceletWebsite, explanation.guide);
    std::vector<FixLook> looks;
    for (const FixID fix : shownFixes(explanation, group, objects_.monitor.spotlightBusySince(),
                                      objects_.scheduler.now())) {
        looks.push_back(lookOf(fix, &group));
    }
    fixes_.update(std::move(looks));
}

void ProcessDetailModel::showFamily(Family family) {
    if (std::exchange(family_, family) == family) {
        return;
    }
    auto spotlight = std::exchange(spotlight_, family == Family::spotlight
                                                   ? std::make_unique<SpotlightHelpModel>(
                                                         objects_.scheduler, objects_.platform.home)
                                                   : nullptr);
    auto windowServer =
        std::exchange(windowServer_, family == Family::windowServer
                                         ? std::make_unique<WindowServerHelpModel>(objects_)
                                         : nullptr);
    // What is bound to the old ones lets go of them before they die.
    Q_EMIT familyChanged();
}

void ProcessDetailModel::perform(const QString& fix) {
    objects_.actions.press(fix.toStdString(), groupID_);
}

void ProcessDetailModel::openGuide() {
    if (hasGuide()) {
        objects_.platform.workspace.openURL(guide_);
    }
}

} // namespace pacelet
