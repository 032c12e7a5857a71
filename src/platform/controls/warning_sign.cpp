#include "platform/controls/warning_sign.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace controls {

namespace {

constexpr int grid = 16; // Side of the square on which the sign is drawn.

QPixmap drawnSign(int side)
{
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(double(side) / grid, double(side) / grid);
    painter.setPen(QPen(QColor(0x5c, 0x43, 0x00), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor(0xff, 0xc8, 0x20));
    painter.drawPolygon(QPolygonF{{8, 1.5}, {15, 14.5}, {1, 14.5}});
    painter.setPen(QPen(Qt::black, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(8, 6), QPointF(8, 9.6));
    painter.drawPoint(QPointF(8, 12.3));
    return picture;
}

} // namespace

QIcon warningSign()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48}) {
        const QPixmap picture = drawnSign(side);
        icon.addPixmap(picture);
        // The same picture is added for selected rows, because Qt would otherwise tint the warning
        // sign in these rows.
        icon.addPixmap(picture, QIcon::Selected);
    }
    return icon;
}

} // namespace controls
