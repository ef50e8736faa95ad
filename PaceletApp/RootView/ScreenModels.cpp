#include "PaceletApp/RootView/ScreenModels.h"

#include "Core/Support/Precondition.h"
#include "PaceletApp/BackgroundItemsView/BackgroundItemsModel.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/InternetView/InternetModel.h"
#include "PaceletApp/OverviewView/OverviewFeed.h"
#include "PaceletApp/ProcessesView/ProcessesModel.h"
#include "PaceletApp/Router/Router.h"
#include "PaceletApp/UsageView/UsageModel.h"

namespace pacelet {

namespace {

std::unique_ptr<OverviewModel> makeOverview(const SharedObjects& objects) {
    auto overview = std::make_unique<OverviewModel>();
    OverviewModel* const model = overview.get();
    new OverviewFeed{objects.monitor, objects.scheduler, *model, model};
    QObject::connect(model, &OverviewModel::fixWanted, model,
                     [objects](FixID fix, const std::optional<std::string>& groupID) {
                         objects.actions.perform(fix, objects.monitor.group(groupID));
                     });
    QObject::connect(model, &OverviewModel::allProcessesWanted, &objects.router,
                     [objects] { objects.router.setScreen(Screen::processes); });
    return overview;
}

} // namespace

std::unique_ptr<QObject> makeScreenModel(Screen screen, const SharedObjects& objects) {
    switch (screen) {
    case Screen::overview:
        return makeOverview(objects);
    case Screen::processes:
        return std::make_unique<ProcessesModel>(objects);
    case Screen::backgroundItems:
        return std::make_unique<BackgroundItemsModel>(objects);
    case Screen::internet:
        return std::make_unique<InternetModel>(objects);
    case Screen::usage:
        return std::make_unique<UsageModel>(objects);
    }
    invariantBreach("there is no such screen");
}

QString screenFile(Screen screen) {
    switch (screen) {
    case Screen::overview:
        return QStringLiteral("OverviewView.qml");
    case Screen::processes:
        return QStringLiteral("ProcessesView.qml");
    case Screen::backgroundItems:
        return QStringLiteral("BackgroundItemsView.qml");
    case Screen::internet:
        return QStringLiteral("InternetView.qml");
    case Screen::usage:
        return QStringLiteral("UsageView.qml");
    }
    invariantBreach("there is no such screen");
}

} // namespace pacelet
