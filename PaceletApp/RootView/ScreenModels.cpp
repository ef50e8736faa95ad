#include "PaceletApp/RootView/ScreenModels.h"

#include "Core/Support/Precondition.h"
#include "PaceletApp/BackgroundItemsView/BackgroundItemsModel.h"
#include "PaceletApp/InternetView/InternetModel.h"
#include "PaceletApp/OverviewView/OverviewModel.h"
#include "PaceletApp/ProcessesView/ProcessesModel.h"
#include "PaceletApp/UsageView/UsageModel.h"

namespace pacelet {

std::unique_ptr<QObject> makeScreenModel(Screen screen, const SharedObjects& objects) {
    switch (screen) {
    case Screen::overview:
        return std::make_unique<OverviewModel>(objects);
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
