#pragma once

#include "PaceletApp/OverviewView/CauseItem.h"
#include "PaceletApp/OverviewView/LiveBadgeModel.h"
#include "PaceletApp/OverviewView/OverviewLook.h"
#include "PaceletApp/OverviewView/ProcessItem.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace pacelet {

/// The live picture that the overview is made from. The views need to live for one call only.
struct OverviewFacts {
    const DiagnosisResult& result;
    std::span<const ProcessGroup> groups; ///< busiest first
    /// The explanation of a group, or null.
    std::function<const Explanation*(const ProcessGroup&)> explanation;
    std::optional<SystemSignals> signals;
    bool checked = false; ///< the machine has been measured
};

/// What the overview shows, and what its user asks for.
class OverviewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(pacelet::HeroLook hero READ hero NOTIFY heroChanged)
    Q_PROPERTY(pacelet::ReadingsLook readings READ readings NOTIFY readingsChanged)
    Q_PROPERTY(QString moreLabel READ moreLabel NOTIFY moreLabelChanged)
    Q_PROPERTY(pacelet::LiveBadgeModel* badge READ badge CONSTANT)
    Q_PROPERTY(QAbstractItemModel* causes READ causes CONSTANT)
    Q_PROPERTY(QAbstractItemModel* processes READ processes CONSTANT)

public:
    /// How many processes the overview shows.
    static constexpr std::size_t processesShown = 5;

    explicit OverviewModel(QObject* parent = nullptr);

    const HeroLook& hero() const { return hero_; }
    const ReadingsLook& readings() const { return readings_; }
    const QString& moreLabel() const { return moreLabel_; }
    LiveBadgeModel* badge() { return &badge_; }
    QAbstractItemModel* causes() { return &causes_; }
    QAbstractItemModel* processes() { return &processes_; }

    void show(const OverviewFacts& facts);

    Q_INVOKABLE void showAllProcesses() { Q_EMIT allProcessesWanted(); }
    Q_INVOKABLE void fixHero();
    Q_INVOKABLE void fixCause(int row);
    Q_INVOKABLE void fixProcess(const QString& groupId);

Q_SIGNALS:
    void heroChanged();
    void readingsChanged();
    void moreLabelChanged();

    void allProcessesWanted();
    /// `groupID` is absent for a finding about no group; the group may have gone since.
    void fixWanted(pacelet::FixID fix, const std::optional<std::string>& groupID);

private:
    void fix(const Finding& finding);

    HeroLook hero_;
    ReadingsLook readings_;
    QString moreLabel_;
    LiveBadgeModel badge_;
    DiagnosisResult result_;
    CauseListModel causes_;
    ProcessListModel processes_;
};

} // namespace pacelet
