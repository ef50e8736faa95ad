#pragma once

#include "PaceletApp/Components/LiveBadgeModel.h"
#include "PaceletApp/Components/ProcessItem.h"
#include "PaceletApp/OverviewView/CauseItem.h"
#include "PaceletApp/OverviewView/OverviewLook.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// What the overview shows, and what its user asks for.
class OverviewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(pacelet::HeroLook hero READ hero NOTIFY heroChanged)
    /// What stood earlier; empty while something stands now.
    Q_PROPERTY(QString earlier READ earlier NOTIFY earlierChanged)
    Q_PROPERTY(pacelet::ReadingsLook readings READ readings NOTIFY readingsChanged)
    Q_PROPERTY(QString moreLabel READ moreLabel NOTIFY moreLabelChanged)
    Q_PROPERTY(pacelet::LiveBadgeModel* badge READ badge CONSTANT)
    Q_PROPERTY(QAbstractItemModel* causes READ causes CONSTANT)
    Q_PROPERTY(QAbstractItemModel* processes READ processes CONSTANT)

public:
    /// How many processes the overview shows.
    static constexpr std::size_t processesShown = 5;

    /// All of `objects` outlive this.
    explicit OverviewModel(const SharedObjects& objects, QObject* parent = nullptr);

    HeroLook hero() const { return hero_; }
    QString earlier() const { return earlier_; }
    ReadingsLook readings() const { return readings_; }
    QString moreLabel() const { return moreLabel_; }
    LiveBadgeModel* badge() { return &badge_; }
    QAbstractItemModel* causes() { return &causes_; }
    QAbstractItemModel* processes() { return &processes_; }

    Q_INVOKABLE void showAllProcesses();
    Q_INVOKABLE void showEarlier();
    Q_INVOKABLE void fixHero();
    Q_INVOKABLE void fixCause(int row);
    Q_INVOKABLE void fixProcess(const QString& groupId);

Q_SIGNALS:
    void heroChanged();
    void earlierChanged();
    void readingsChanged();
    void moreLabelChanged();

private:
    void refresh();
    void showProcesses();
    void fix(const Finding& finding);

    SharedObjects objects_;
    LiveBadgeModel badge_;
    CauseListModel causes_;
    ProcessListModel processes_;
    Q_OBJECT_BINDABLE_PROPERTY(OverviewModel, HeroLook, hero_, &OverviewModel::heroChanged)
    Q_OBJECT_BINDABLE_PROPERTY(OverviewModel, QString, earlier_, &OverviewModel::earlierChanged)
    Q_OBJECT_BINDABLE_PROPERTY(OverviewModel, ReadingsLook, readings_,
                               &OverviewModel::readingsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(OverviewModel, QString, moreLabel_, &OverviewModel::moreLabelChanged)
};

} // namespace pacelet
