#pragma once

#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/ProcessDetail/SpotlightHelpModel.h"
#include "PaceletApp/ProcessDetail/WindowServerHelpModel.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <string>

namespace pacelet {

/// The panel below an open row: the whole story of one group.
class ProcessDetailModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the screen's model")
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    /// Empty for what is in no catalog.
    Q_PROPERTY(QString whyHigh READ whyHigh NOTIFY changed)
    /// Empty for a group without helpers.
    Q_PROPERTY(QString partsLabel READ partsLabel NOTIFY changed)
    /// Roles: name, first (CPU) and second (memory).
    Q_PROPERTY(QAbstractItemModel* parts READ parts CONSTANT)
    /// Null unless the group is of the family.
    Q_PROPERTY(pacelet::SpotlightHelpModel* spotlight READ spotlight NOTIFY familyChanged)
    Q_PROPERTY(pacelet::WindowServerHelpModel* windowServer READ windowServer NOTIFY familyChanged)
    /// Roles: look, a `FixLook`.
    Q_PROPERTY(QAbstractItemModel* fixes READ fixes CONSTANT)
    Q_PROPERTY(bool hasFixes READ hasFixes NOTIFY changed)
    Q_PROPERTY(bool hasGuide READ hasGuide NOTIFY changed)

public:
    explicit ProcessDetailModel(const SharedObjects& objects, QObject* parent = nullptr);

    /// Tells of this group. `explanation` may be null.
    void show(const ProcessGroup& group, const Explanation* explanation);

    const std::string& groupID() const { return groupID_; }
    const QString& summary() const { return summary_; }
    const QString& whyHigh() const { return whyHigh_; }
    const QString& partsLabel() const { return partsLabel_; }
    QAbstractItemModel* parts() { return &parts_; }
    SpotlightHelpModel* spotlight() { return spotlight_.get(); }
    WindowServerHelpModel* windowServer() { return windowServer_.get(); }
    QAbstractItemModel* fixes() { return &fixes_; }
    bool hasFixes() const { return fixes_.rowCount() > 0; }
    bool hasGuide() const { return !guide_.empty(); }

    Q_INVOKABLE void perform(const QString& fix);
    Q_INVOKABLE void openGuide();

Q_SIGNALS:
    void changed();
    void familyChanged();

private:
    void showExplanation(const ProcessGroup& group, const Explanation& explanation);
    void showFamily(Family family);

    SharedObjects objects_;
    std::string groupID_;
    QString summary_;
    QString whyHigh_;
    QString partsLabel_;
    FigureListModel parts_;
    Family family_ = Family::other;
    std::unique_ptr<SpotlightHelpModel> spotlight_;
    std::unique_ptr<WindowServerHelpModel> windowServer_;
    FixListModel fixes_;
    std::string guide_; ///< address; empty for none
};

} // namespace pacelet
