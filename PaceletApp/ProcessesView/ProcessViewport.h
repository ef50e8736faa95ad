#pragma once

#include "PaceletApp/ProcessesView/ListedProcess.h"
#include "PaceletApp/ProcessesView/ProcessEntry.h"
#include "PaceletApp/ProcessesView/TableGeometry.h"

#include <QObject>
#include <QProperty>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// The scrolling list of the process screen. Only the rows in view are made into words and reach
/// QML, so that a tick costs the same whatever runs on the machine; a row that scrolls out of view
/// becomes the one that comes into it.
///
/// What stands at the upper edge of the view stays there when the list changes: the row at this
/// place, or the open one when it is that. The row that the keyboard works on is always there, and
/// keeps to its process.
class ProcessViewport : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the screen's model")
    /// Roles: see `ListedProcess::roles`.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    /// The number of all rows.
    Q_PROPERTY(int count READ count NOTIFY contentHeightChanged)
    Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)
    Q_PROPERTY(double rowHeight READ rowHeight CONSTANT)

public:
    explicit ProcessViewport(QObject* parent = nullptr);

    QAbstractItemModel* rows() { return &rows_; }
    int count() const { return static_cast<int>(geometry_.count); }
    double contentHeight() const { return contentHeight_.value(); }
    double rowHeight() const { return geometry_.rowHeight; }

    /// Shows `entries`. The row of the group `openID` is open; that of the kernel tells of
    /// `thermal`.
    void show(std::vector<ProcessEntry> entries, std::optional<std::string> openID,
              Thermal thermal = Thermal::normal);

    /// The next change of the list leaves the row of this group where it is in the view, and brings
    /// all of its panel into view if it opens.
    void hold(const std::string& groupID);

    /// With the entries that are shown next.
    void scrollToTop();

    /// Brings the open row to the upper edge, as soon as the view and the panel have a size.
    void scrollToOpen();

    /// The part of the list that the view shows.
    Q_INVOKABLE void setView(double y, double height);

    /// How much taller the open row is than the others.
    Q_INVOKABLE void setPanelHeight(double height);

    /// The keyboard came to the row of this group, or left it. `revealing` brings the row into
    /// view.
    Q_INVOKABLE void enter(const QString& groupID, bool revealing);
    Q_INVOKABLE void leave(const QString& groupID);

    /// Takes the keyboard to the first row in view.
    Q_INVOKABLE void enterTop();

    /// Moves the keyboard by so many rows, as far as there are any, and brings the row into view.
    Q_INVOKABLE void step(int rows);

    /// The number of rows that a view shows in full.
    Q_INVOKABLE int rowsInView() const;

Q_SIGNALS:
    void contentHeightChanged();
    /// The view shall begin at `y`.
    void scrolled(double y);

private:
    enum class Aim { none, openAtTop, openInView };

    /// A row and how far the view begins below its upper edge.
    struct Place {
        std::optional<std::string> id; ///< the row keeps to this group; otherwise to its place
        std::size_t row = 0;
        double offset = 0;
    };

    Place placeInView() const;
    std::optional<std::size_t> rowOf(const std::optional<std::string>& id) const;
    void keepCurrent();
    void aim();
    void follow();
    std::vector<ListedProcess> rowsToShow();

    std::vector<ProcessEntry> entries_;
    TableGeometry geometry_;
    Thermal thermal_ = Thermal::normal;
    std::optional<std::string> openID_;
    std::optional<std::string> currentID_;
    std::size_t currentRow_ = 0;
    std::optional<Place> held_;
    Aim aim_ = Aim::none;
    double y_ = 0;
    double shownY_ = 0; ///< where the view was told to begin, or scrolled to
    double viewHeight_ = 0;
    ProcessRowsModel rows_;
    std::uint64_t keys_ = 0;
    bool following_ = false;
    bool again_ = false;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(ProcessViewport, double, contentHeight_, 0,
                                         &ProcessViewport::contentHeightChanged)
};

} // namespace pacelet
