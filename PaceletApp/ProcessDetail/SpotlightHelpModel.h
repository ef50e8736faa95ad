#pragma once

#include "PaceletApp/ProcessDetail/DetailLook.h"
#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Scheduler/StopOwner.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

#include <stop_token>
#include <string>

namespace pacelet {

/// The folders that keep Spotlight busy. Looks for them once, when it is made; the search stops
/// when it goes.
class SpotlightHelpModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel's model")
    /// The search is under way.
    Q_PROPERTY(bool searching READ searching NOTIFY searchingChanged)
    /// Roles: name and first, the size.
    Q_PROPERTY(QAbstractItemModel* folders READ folders CONSTANT)
    Q_PROPERTY(bool empty READ empty NOTIFY searchingChanged)

public:
    SpotlightHelpModel(Scheduler& scheduler, const std::string& home, QObject* parent = nullptr);

    bool searching() const { return searching_.value(); }
    QAbstractItemModel* folders() { return &folders_; }
    bool empty() const { return folders_.rowCount() == 0; }

Q_SIGNALS:
    void searchingChanged();

private:
    static QCoro::Task<> search(QPointer<SpotlightHelpModel> help, Scheduler& scheduler,
                                std::string home, std::stop_token stop);
    void found(const std::vector<HeavyFolder>& folders);

    FigureListModel folders_;
    StopOwner stop_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(SpotlightHelpModel, bool, searching_, true,
                                         &SpotlightHelpModel::searchingChanged)
};

} // namespace pacelet
