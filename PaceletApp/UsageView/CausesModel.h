#pragma once

#include "PaceletApp/UsageView/CauseList.h"

#include <QObject>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// The causes below the charts: of the whole range, or of the hour or day whose bar is pointed at
/// or chosen.
class CausesModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a part of the usage screen")
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    /// What stands in place of the rows; empty where there are some.
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    /// Caption of the button that brings the rest of the rows; empty where all are there.
    Q_PROPERTY(QString moreTitle READ moreTitle NOTIFY moreTitleChanged)
    /// The hour or day that the list tells of; empty for the whole range.
    Q_PROPERTY(QString stretch READ stretch NOTIFY stretchChanged)
    /// Where it lies along the range, 0 to 1; both are 0 for the whole.
    Q_PROPERTY(qreal from READ from NOTIFY stretchChanged)
    Q_PROPERTY(qreal to READ to NOTIFY stretchChanged)
    /// The bar that was chosen, -1 for none.
    Q_PROPERTY(int chosen READ chosen NOTIFY chosenChanged)

public:
    /// How many rows there are before the user asks for all.
    static constexpr std::size_t rowsShown = 8;

    explicit CausesModel(QObject* parent = nullptr)
        : QObject{parent} {}

    QAbstractItemModel* rows() { return &rows_; }
    QString note() const { return note_; }
    QString moreTitle() const { return moreTitle_; }
    QString stretch() const { return stretch_; }
    qreal from() const { return bar() != nullptr ? bar()->left : 0; }
    qreal to() const { return bar() != nullptr ? bar()->right : 0; }
    int chosen() const { return chosen_; }

    /// Another range, or the same one read anew: what was chosen stays if its bar is still there.
    void setJournal(CauseJournal journal, const UsageRange& range, const HistoryCharts& charts,
                    TimePoint now);
    void setGroups(std::shared_ptr<const std::vector<ProcessGroup>> groups);

    /// The bar that is pointed at, -1 for none.
    Q_INVOKABLE void point(int bar);
    /// Chooses a bar; the one that is chosen already, or -1, gives it up.
    Q_INVOKABLE void choose(int bar);
    Q_INVOKABLE void showAll();

Q_SIGNALS:
    void noteChanged();
    void moreTitleChanged();
    void stretchChanged();
    void chosenChanged();

private:
    void show();
    const ChartBar* bar() const;

    CauseJournal journal_;
    UsageRange range_ = usageRanges.front();
    ChartSpan span_{};
    std::vector<ChartBar> bars_;
    TimePoint now_{};
    std::shared_ptr<const std::vector<ProcessGroup>> groups_ =
        std::make_shared<const std::vector<ProcessGroup>>();
    int pointed_ = -1;
    bool showsAll_ = false;
    CauseRowsModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY(CausesModel, QString, note_, &CausesModel::noteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(CausesModel, QString, moreTitle_, &CausesModel::moreTitleChanged)
    Q_OBJECT_BINDABLE_PROPERTY(CausesModel, QString, stretch_, &CausesModel::stretchChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(CausesModel, int, chosen_, -1, &CausesModel::chosenChanged)
};

} // namespace pacelet
