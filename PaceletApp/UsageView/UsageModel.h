#pragma once

#include "PaceletApp/Support/SharedObjects.h"
#include "PaceletApp/UsageView/CausesModel.h"
#include "PaceletApp/UsageView/UsageCharts.h"
#include "PaceletApp/UsageView/UsageLook.h"
#include "PaceletApp/UsageView/UsageRecords.h"

#include <QList>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace pacelet {

class Fields;

/// What the usage screen shows: the machine, the advice, the load and memory of the moment, and the
/// history. Lives while the screen is on show; while the window is hidden it rests.
class UsageModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    /// What the machine is; empty until that is known.
    Q_PROPERTY(QString macLine READ macLine NOTIFY macLineChanged)
    /// False until the history was read for the first time.
    Q_PROPERTY(bool loaded READ loaded NOTIFY loadedChanged)
    Q_PROPERTY(QAbstractItemModel* verdictLines READ verdictLines CONSTANT)
    Q_PROPERTY(QString hoursNote READ hoursNote NOTIFY hoursNoteChanged)
    Q_PROPERTY(QString load READ load NOTIFY loadChanged)
    Q_PROPERTY(QString loadDescription READ loadDescription NOTIFY loadDescriptionChanged)
    Q_PROPERTY(pacelet::LoadCurve loadCurve READ loadCurve NOTIFY loadCurveChanged)
    Q_PROPERTY(pacelet::MemoryLook memory READ memory NOTIFY memoryChanged)
    Q_PROPERTY(QAbstractItemModel* memorySegments READ memorySegments CONSTANT)
    Q_PROPERTY(QList<QString> ranges READ ranges CONSTANT)
    /// Place of the chosen range in `ranges`.
    Q_PROPERTY(int range READ range NOTIFY rangeChanged)
    /// Why there are no charts; empty where there are some.
    Q_PROPERTY(QString historyNote READ historyNote NOTIFY historyNoteChanged)
    Q_PROPERTY(pacelet::BarChart cpuChart READ cpuChart NOTIFY chartsChanged)
    Q_PROPERTY(pacelet::BarChart pressureChart READ pressureChart NOTIFY chartsChanged)
    Q_PROPERTY(pacelet::BarChart swapChart READ swapChart NOTIFY chartsChanged)
    Q_PROPERTY(QVariantList timeTicks READ timeTicks NOTIFY chartsChanged)
    Q_PROPERTY(pacelet::CausesModel* causes READ causes CONSTANT)
    /// The user came for the causes: they are to be in view at first.
    Q_PROPERTY(bool opensAtCauses READ opensAtCauses CONSTANT)

public:
    /// All of `objects` outlive this.
    explicit UsageModel(const SharedObjects& objects, QObject* parent = nullptr);

    QString macLine() const { return macLine_; }
    bool loaded() const { return loaded_; }
    QAbstractItemModel* verdictLines() { return &verdictLines_; }
    QString hoursNote() const { return hoursNote_; }
    QString load() const { return load_; }
    QString loadDescription() const { return loadDescription_; }
    LoadCurve loadCurve() const { return loadCurve_; }
    MemoryLook memory() const { return memory_; }
    QAbstractItemModel* memorySegments() { return &memorySegments_; }
    QList<QString> ranges() const;
    int range() const { return range_; }
    QString historyNote() const { return historyNote_; }
    BarChart cpuChart() const { return charts_.value().cpu; }
    BarChart pressureChart() const { return charts_.value().pressure; }
    BarChart swapChart() const { return charts_.value().swap; }
    CausesModel* causes() { return &causes_; }
    bool opensAtCauses() const { return opensAtCauses_; }
    QVariantList timeTicks() const { return toVariants(charts_.value().timeTicks); }

    Q_INVOKABLE void chooseRange(int place);
    /// Carries out the fix with this raw value.
    Q_INVOKABLE void fix(const QString& rawValue);
    /// Goes to a process in the list of all.
    Q_INVOKABLE void showProcess(const QString& groupId);

Q_SIGNALS:
    void macLineChanged();
    void loadedChanged();
    void hoursNoteChanged();
    void loadChanged();
    void loadDescriptionChanged();
    void loadCurveChanged();
    void memoryChanged();
    void rangeChanged();
    void historyNoteChanged();
    void chartsChanged();

private:
    void follow(const Fields& fields);
    void takeIn(LoadedRecords loaded);
    void showMachine();
    void showVerdict();
    void showCurve();
    void showHistoryNote();

    SharedObjects objects_;
    UsageRecords records_;
    std::vector<MinuteRecord> weekRecords_;
    VerdictListModel verdictLines_;
    MemoryListModel memorySegments_;
    CausesModel causes_;
    const bool opensAtCauses_;
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, QString, macLine_, &UsageModel::macLineChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, bool, loaded_, &UsageModel::loadedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, QString, hoursNote_, &UsageModel::hoursNoteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, QString, load_, &UsageModel::loadChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, QString, loadDescription_,
                               &UsageModel::loadDescriptionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, LoadCurve, loadCurve_, &UsageModel::loadCurveChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, MemoryLook, memory_, &UsageModel::memoryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, int, range_, &UsageModel::rangeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, QString, historyNote_, &UsageModel::historyNoteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UsageModel, HistoryCharts, charts_, &UsageModel::chartsChanged)
};

} // namespace pacelet
