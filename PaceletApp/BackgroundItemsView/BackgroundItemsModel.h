#pragma once

#include "PaceletApp/BackgroundItemsView/BackgroundRow.h"
#include "PaceletApp/Support/SharedObjects.h"

#include <QCollator>
#include <QObject>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

namespace pacelet {

/// What is set up to run in the background. Made when its screen comes on show, which has the items
/// looked for afresh, and gone with it.
class BackgroundItemsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shell")
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    /// There are none, and that is known.
    Q_PROPERTY(bool empty READ empty NOTIFY emptyChanged)

public:
    /// All of `objects` outlive this.
    explicit BackgroundItemsModel(const SharedObjects& objects, QObject* parent = nullptr);

    QAbstractItemModel* rows() { return &rows_; }
    bool empty() const { return empty_.value(); }

Q_SIGNALS:
    void emptyChanged();

private:
    void refresh();

    Monitor& monitor_;
    QCollator collator_;
    BackgroundListModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(BackgroundItemsModel, bool, empty_, false,
                                         &BackgroundItemsModel::emptyChanged)
};

} // namespace pacelet
