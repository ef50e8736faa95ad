#pragma once

#include "PaceletApp/Components/LiveBadgeModel.h"
#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/ProcessDetail/ProcessDetailModel.h"
#include "PaceletApp/ProcessesView/ChipItem.h"
#include "PaceletApp/ProcessesView/ProcessEntry.h"
#include "PaceletApp/ProcessesView/ProcessViewport.h"
#include "PaceletApp/Router/Router.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QObject>
#include <QProperty>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

namespace pacelet {

/// The list of everything that runs: searched, filtered, sorted, with one row open at most.
class ProcessesModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(pacelet::LiveBadgeModel* badge READ badge CONSTANT)
    Q_PROPERTY(pacelet::ProcessViewport* table READ table CONSTANT)
    /// The panel of the open row; null when that is none of the rows.
    Q_PROPERTY(pacelet::ProcessDetailModel* detail READ detail NOTIFY detailChanged)
    /// Roles: value, label and chosen.
    Q_PROPERTY(QAbstractItemModel* chips READ chips CONSTANT)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(bool sortByMemory READ sortByMemory WRITE setSortByMemory NOTIFY sortChanged)
    /// Stands in the place of the list when that is empty; empty otherwise.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY emptyTextChanged)
    /// The search field has the keyboard when the screen appears.
    Q_PROPERTY(bool opensWithSearch READ opensWithSearch CONSTANT)

public:
    explicit ProcessesModel(const SharedObjects& objects, QObject* parent = nullptr);

    LiveBadgeModel* badge() { return &badge_; }
    ProcessViewport* table() { return &table_; }
    ProcessDetailModel* detail() { return detail_.get(); }
    QAbstractItemModel* chips() { return &chips_; }
    const QString& search() const { return query_.search; }
    bool sortByMemory() const { return query_.byMemory; }
    const QString& emptyText() const { return emptyText_.value(); }
    bool opensWithSearch() const { return objects_.router.focusSearch() >= 1; }

    void setSearch(const QString& search);
    void setSortByMemory(bool byMemory);

    /// `verdict` is a raw value, or empty for all.
    Q_INVOKABLE void choose(const QString& verdict);

    /// Opens the row of this group, or closes it.
    Q_INVOKABLE void toggle(const QString& groupID);

    Q_INVOKABLE void quit(const QString& groupID);

Q_SIGNALS:
    void detailChanged();
    void searchChanged();
    void sortChanged();
    void emptyTextChanged();
    /// The keyboard shall go to the search field.
    void searchWanted();

private:
    void follow(const Fields& fields);
    void takeGroups();
    void showRows();
    void showQuery();
    void showDetail(const ProcessEntry& open);
    void closeDetail();
    void expandedChanged();

    SharedObjects objects_;
    LiveBadgeModel badge_;
    ProcessQuery query_;
    std::vector<ProcessEntry> entries_;
    ChipListModel chips_;
    ProcessViewport table_;
    std::unique_ptr<ProcessDetailModel> detail_;
    bool listed_ = false; ///< the list is on show
    Q_OBJECT_BINDABLE_PROPERTY(ProcessesModel, QString, emptyText_,
                               &ProcessesModel::emptyTextChanged)
};

} // namespace pacelet
