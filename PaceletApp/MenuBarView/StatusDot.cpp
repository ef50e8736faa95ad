#include "PaceletApp/MenuBarView/StatusDot.h"

#include "Core/Support/EnumTable.h"
#include "PaceletApp/Components/Look.h"

#include <QPainter>
#include <QPixmap>

#include <array>

namespace pacelet::StatusDot {

namespace {

struct DotRow {
    Status value;
    double red;
    double green;
    double blue;
};
constexpr std::array<DotRow, 3> dots{{
    {Status::quiet, 0.43137254901960786, 0.9058823529411765, 0.7176470588235294},
    {Status::busy, 0.9607843137254902, 0.7215686274509804, 0.2549019607843137},
    {Status::struggling, 0.9725490196078431, 0.44313725490196076, 0.44313725490196076},
}};

/// Edges of the pictures that trays ask for, in pixels.
constexpr std::array traySizes{16, 22, 24, 32, 44, 48, 64, 96};

/// The dot is 11 points wide in a bar of 22.
constexpr double shareOfEdge = 0.5;

QPixmap picture(Status status, int edge) {
    QPixmap pixmap{edge, edge};
    pixmap.fill(Qt::transparent);
    QPainter painter{&pixmap};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(status));
    const double radius = edge * shareOfEdge / 2;
    painter.drawEllipse(QPointF{edge / 2.0, edge / 2.0}, radius, radius);
    return pixmap;
}

QIcon draw(Status status) {
    QIcon icon;
    for (const int edge : traySizes) {
        icon.addPixmap(picture(status, edge));
    }
    return icon;
}

} // namespace

Status status(const Monitor& monitor) {
    return monitor.lastChecked() ? monitor.result().status : Status::quiet;
}

QColor color(Status status) {
    const DotRow& row = rowOf(dots, status);
    return QColor::fromRgbF(static_cast<float>(row.red), static_cast<float>(row.green),
                            static_cast<float>(row.blue));
}

QString accessibleName(Status status) {
    return QStringLiteral("Pacelet status: ") + lookOf(status).text;
}

const QIcon& icon(Status status) {
    static const std::array<QIcon, dots.size()> icons{draw(Status::quiet), draw(Status::busy),
                                                      draw(Status::struggling)};
    return icons[static_cast<std::size_t>(status)];
}

} // namespace pacelet::StatusDot
