#pragma once

#include "PaceletApp/InternetView/FindingItem.h"
#include "PaceletApp/InternetView/InternetLook.h"
#include "PaceletApp/InternetView/ReadingItem.h"
#include "PaceletApp/InternetView/TrafficItem.h"
#include "PaceletApp/Scheduler/Scheduler.h"
#include "PaceletApp/Scheduler/StopOwner.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QAbstractItemModel>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace pacelet {

class Fields;

/// What the internet screen shows. It measures the link and the traffic for as long as it lives and
/// the window can be seen. A speed test goes on behind it: its result is kept in the preferences.
class InternetModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(pacelet::InternetLook look READ look NOTIFY lookChanged)
    /// Roles: symbol, tone, title, detail and fix.
    Q_PROPERTY(QAbstractItemModel* findings READ findings CONSTANT)
    /// Roles: label, value and tone.
    Q_PROPERTY(QAbstractItemModel* linkRows READ linkRows CONSTANT)
    Q_PROPERTY(QAbstractItemModel* speedRows READ speedRows CONSTANT)
    /// Roles: name, incoming and outgoing.
    Q_PROPERTY(QAbstractItemModel* apps READ apps CONSTANT)

public:
    explicit InternetModel(const SharedObjects& objects, QObject* parent = nullptr);

    const InternetLook& look() const { return look_.value(); }
    QAbstractItemModel* findings() { return &findingRows_; }
    QAbstractItemModel* linkRows() { return &linkRows_; }
    QAbstractItemModel* speedRows() { return &speedRows_; }
    QAbstractItemModel* apps() { return &appRows_; }

    /// Asks whether to run a speed test.
    Q_INVOKABLE void askTest();
    /// Starts a speed test, or joins the one that is under way.
    Q_INVOKABLE void runTest();
    /// Carries out the fix of the finding in this row.
    Q_INVOKABLE void fix(int row);

Q_SIGNALS:
    void lookChanged();

private:
    static QCoro::Task<> poll(QPointer<InternetModel> model, SharedObjects objects,
                              std::stop_token stop);
    /// For the question before a test.
    static QCoro::Task<> readMetering(QPointer<InternetModel> model, SharedObjects objects);

    void follow(const Fields& fields);
    /// Measures while the window is visible.
    void followWindow();
    void takeIn(LinkType link, std::optional<WiFiLink> wifi);
    void testEnded(const std::optional<SpeedResult>& speed);
    void refresh();

    SharedObjects objects_;
    InternetState state_;
    AppName appName_; ///< by the monitor's groups
    std::vector<Finding> found_;
    FindingListModel findingRows_;
    ReadingListModel linkRows_;
    ReadingListModel speedRows_;
    TrafficListModel appRows_;
    std::optional<StopOwner> polling_; ///< nothing while at rest
    Q_OBJECT_BINDABLE_PROPERTY(InternetModel, InternetLook, look_, &InternetModel::lookChanged)
};

} // namespace pacelet
