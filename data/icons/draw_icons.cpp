// Draws the program's icons and logo: draw_icons FOLDER writes FOLDER/icons/*.png and
// FOLDER/Logo.jpg. Toolbar icons are drawn on a grid of 32 units, button icons on a grid of 16.

#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QColor outline(0x2f, 0x3f, 0x50);
const QColor metalLight(0xe9, 0xee, 0xf3);
const QColor metalDark(0x93, 0xa4, 0xb5);
const QColor glassLight(0xdf, 0xf2, 0xfd);
const QColor glassDark(0x7f, 0xbd, 0xe8);
const QColor paper(0xff, 0xff, 0xff);
const QColor green(0x2e, 0x9e, 0x4f);
const QColor red(0xcf, 0x3b, 0x33);
const QColor orange(0xf0, 0x9a, 0x2b);
const QColor blue(0x2f, 0x74, 0xc0);

using Drawing = std::function<void(QPainter&)>;

QLinearGradient blend(const QRectF& area, const QColor& from, const QColor& to)
{
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    return gradient;
}

QPen pen(const QColor& color, qreal width)
{
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

/// Draws the program's symbol: a framed window with sashes side by side.
void drawWindow(QPainter& painter, const QRectF& area, int sashes, qreal profile)
{
    painter.setPen(pen(outline, profile * 0.35));
    painter.setBrush(blend(area, metalLight, metalDark));
    painter.drawRoundedRect(area, profile * 0.3, profile * 0.3);
    const QRectF inner = area.adjusted(profile, profile, -profile, -profile);
    const qreal width = inner.width() / sashes;
    for (int i = 0; i < sashes; ++i) {
        const QRectF sash(inner.left() + i * width, inner.top(), width, inner.height());
        const qreal rail = profile * 0.55;
        const QRectF pane = sash.adjusted(rail, rail, -rail, -rail);
        painter.setBrush(metalLight);
        painter.drawRect(sash);
        painter.setBrush(blend(pane, glassLight, glassDark));
        painter.drawRect(pane);
        painter.setPen(pen(QColor(255, 255, 255, 220), profile * 0.4));
        painter.drawLine(
            QPointF(pane.left() + pane.width() * 0.25, pane.bottom() - pane.height() * 0.3),
            QPointF(pane.left() + pane.width() * 0.75, pane.top() + pane.height() * 0.2));
        painter.setPen(pen(outline, profile * 0.35));
    }
}

void drawOrders(QPainter& painter)
{
    painter.setPen(pen(outline, 1.2));
    painter.setBrush(
        blend(QRectF(4, 3, 22, 27), QColor(0xd8, 0xa8, 0x6a), QColor(0xb0, 0x7a, 0x3a)));
    painter.drawRoundedRect(QRectF(3.5, 3.5, 22, 26), 2, 2);
    painter.setBrush(paper);
    painter.drawRect(QRectF(6, 7, 17, 20));
    painter.setBrush(metalDark);
    painter.drawRoundedRect(QRectF(10, 1.6, 9, 4.6), 1.4, 1.4);
    painter.setPen(pen(metalDark, 1.3));
    for (const qreal y : {11.0, 14.5, 18.0, 21.5})
        painter.drawLine(QPointF(9, y), QPointF(20, y));
    painter.save();
    painter.translate(18, 25.5);
    painter.rotate(-45);
    painter.setPen(pen(outline, 1.1));
    painter.setBrush(orange);
    painter.drawRect(QRectF(2.5, -2, 11, 4));
    painter.setBrush(QColor(0xf6, 0xde, 0xb8));
    painter.drawPolygon(QPolygonF{QPointF(2.5, -2), QPointF(2.5, 2), QPointF(-2, 0)});
    painter.setBrush(red);
    painter.drawRoundedRect(QRectF(12, -2, 3, 4), 1, 1);
    painter.restore();
}

/// Draws the icon of the series: a piece of hollow profile with its cut end in front and a
/// dimension line above.
void drawSeries(QPainter& painter)
{
    const QPointF back(11.5, -9);
    const QRectF end(2.5, 13.5, 15, 16);
    const QPolygonF top{end.topLeft(), end.topRight(), end.topRight() + back, end.topLeft() + back};
    const QPolygonF side{end.topRight(), end.bottomRight(), end.bottomRight() + back,
                         end.topRight() + back};
    painter.setPen(pen(outline, 1.1));
    painter.setBrush(blend(top.boundingRect(), QColor(0xd5, 0xe6, 0xf5), metalLight));
    painter.drawPolygon(top);
    painter.setBrush(blend(side.boundingRect(), metalDark, QColor(0x6d, 0x80, 0x94)));
    painter.drawPolygon(side);
    painter.setBrush(blend(end, QColor(0xa9, 0xcb, 0xea), QColor(0x5c, 0x8f, 0xc2)));
    painter.drawRect(end);
    painter.setBrush(outline);
    painter.drawRect(QRectF(5.5, 16.5, 9, 3));
    painter.drawRect(QRectF(5.5, 22.5, 3, 4));
    painter.drawRect(QRectF(11.5, 22.5, 3, 4));
    painter.setPen(pen(red, 1.0));
    painter.drawLine(QPointF(14.5, 1.5), QPointF(28.5, 1.5));
    painter.drawLine(QPointF(14.5, 0.5), QPointF(14.5, 2.5));
    painter.drawLine(QPointF(28.5, 0.5), QPointF(28.5, 2.5));
}

void drawColors(QPainter& painter)
{
    const QList<QColor> shades{QColor(0x6b, 0x4a, 0x2f), green, blue, orange,
                               QColor(0xd9, 0x4a, 0x4a)};
    painter.setPen(pen(outline, 1.0));
    for (qsizetype i = 0; i < shades.size(); ++i) {
        painter.save();
        painter.translate(8.5, 25);
        painter.rotate(84.0 - static_cast<qreal>(i) * 21.0);
        painter.setBrush(paper);
        painter.drawRoundedRect(QRectF(-4.5, -22, 9, 26), 1.6, 1.6);
        painter.setBrush(shades[i]);
        painter.drawRoundedRect(QRectF(-4.5, -22, 9, 17), 1.6, 1.6);
        painter.restore();
    }
    painter.setBrush(metalLight);
    painter.drawEllipse(QPointF(8.5, 25), 1.7, 1.7);
}

void drawExit(QPainter& painter)
{
    painter.setPen(pen(outline, 1.2));
    painter.setBrush(blend(QRectF(12, 2, 17, 28), metalDark, QColor(0x5d, 0x6e, 0x80)));
    painter.drawRect(QRectF(12, 2.5, 16, 26.5));
    painter.setBrush(blend(QRectF(17, 3, 11, 26), glassLight, glassDark));
    painter.drawPolygon(
        QPolygonF{QPointF(28, 2.5), QPointF(18.5, 5.5), QPointF(18.5, 30.8), QPointF(28, 29)});
    painter.setBrush(orange);
    painter.drawEllipse(QPointF(20.8, 18), 1.2, 1.2);
    QPainterPath arrow;
    arrow.addPolygon(QPolygonF{QPointF(2, 17), QPointF(9, 10.5), QPointF(9, 14.5),
                               QPointF(16, 14.5), QPointF(16, 19.5), QPointF(9, 19.5),
                               QPointF(9, 23.5)});
    arrow.closeSubpath();
    painter.setPen(pen(red.darker(140), 1.1));
    painter.setBrush(red);
    painter.drawPath(arrow);
}

void drawPrint(QPainter& painter)
{
    painter.setPen(pen(outline, 0.9));
    painter.setBrush(paper);
    painter.drawRect(QRectF(4, 1.2, 8, 5));
    painter.setBrush(blend(QRectF(1, 5, 14, 7), metalLight, metalDark));
    painter.drawRoundedRect(QRectF(1.2, 5.5, 13.6, 6.5), 1.2, 1.2);
    painter.setBrush(paper);
    painter.drawRect(QRectF(3.8, 9.4, 8.4, 5.4));
    painter.setPen(pen(metalDark, 0.9));
    painter.drawLine(QPointF(5.4, 11.3), QPointF(10.6, 11.3));
    painter.drawLine(QPointF(5.4, 13.1), QPointF(9, 13.1));
    painter.setPen(Qt::NoPen);
    painter.setBrush(green);
    painter.drawEllipse(QPointF(12.6, 7.4), 0.9, 0.9);
}

void drawClose(QPainter& painter)
{
    painter.setPen(pen(red.darker(130), 0.9));
    painter.setBrush(red);
    painter.drawEllipse(QPointF(8, 8), 6.7, 6.7);
    painter.setPen(pen(paper, 2.0));
    painter.drawLine(QPointF(5.4, 5.4), QPointF(10.6, 10.6));
    painter.drawLine(QPointF(10.6, 5.4), QPointF(5.4, 10.6));
}

void drawAccept(QPainter& painter)
{
    painter.setPen(pen(green.darker(150), 4.2));
    const QPolygonF tick{QPointF(2.8, 8.4), QPointF(6.3, 12.2), QPointF(13.2, 3.6)};
    painter.drawPolyline(tick);
    painter.setPen(pen(green, 2.6));
    painter.drawPolyline(tick);
}

void drawApplication(QPainter& painter)
{
    drawWindow(painter, QRectF(2, 2, 28, 22), 2, 2.6);
    painter.setPen(pen(red, 1.5));
    painter.drawLine(QPointF(2.6, 28.2), QPointF(29.4, 28.2));
    painter.drawLine(QPointF(2.6, 26.2), QPointF(2.6, 30.2));
    painter.drawLine(QPointF(29.4, 26.2), QPointF(29.4, 30.2));
}

/// Draws the symbol for the smallest icon, aligned to whole pixels.
void drawSmallApplication(QPainter& painter)
{
    painter.setPen(pen(outline, 1));
    painter.setBrush(metalLight);
    painter.drawRect(QRectF(0.5, 0.5, 15, 12));
    for (const qreal left : {2.5, 8.5}) {
        painter.setBrush(blend(QRectF(left, 2.5, 5, 8), glassLight, glassDark));
        painter.drawRect(QRectF(left, 2.5, 5, 8));
    }
    painter.setPen(pen(red, 1));
    painter.drawLine(QPointF(0.5, 14.5), QPointF(15.5, 14.5));
    painter.drawLine(QPointF(0.5, 13.5), QPointF(0.5, 15.5));
    painter.drawLine(QPointF(15.5, 13.5), QPointF(15.5, 15.5));
}

QImage drawn(const QSize& size, const QSizeF& grid, QImage::Format format, const Drawing& drawing)
{
    QImage image(size, format);
    image.fill(format == QImage::Format_RGB32 ? Qt::white : Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width() / grid.width(), size.height() / grid.height());
    drawing(painter);
    return image;
}

/// Draws the logo of the order report, 10710 by 2010 twips, at 7.5 twips per pixel.
void drawLogo(QPainter& painter)
{
    painter.fillRect(QRectF(0, 256, 1428, 12), blend(QRectF(0, 256, 1428, 12), glassDark, blue));
    drawWindow(painter, QRectF(1120, 18, 280, 220), 2, 17);
    drawWindow(painter, QRectF(40, 18, 130, 220), 1, 15);
    painter.setPen(pen(outline, 3));
    painter.setBrush(orange);
    painter.drawEllipse(QPointF(148, 134), 6, 6);
    painter.setPen(outline);
    QFont name(u"Nachlieli CLM"_s);
    name.setPixelSize(96);
    name.setBold(true);
    painter.setFont(name);
    painter.drawText(QRectF(190, 8, 910, 140), Qt::AlignCenter, u"אלומיניום"_s);
    QFont trade(u"Nachlieli CLM"_s);
    trade.setPixelSize(50);
    painter.setFont(trade);
    painter.setPen(blue.darker(130));
    painter.drawText(QRectF(190, 146, 910, 80), Qt::AlignCenter, u"חלונות ודלתות לפי מידה"_s);
}

bool save(const QImage& image, const QString& path, int quality = -1)
{
    if (image.save(path, nullptr, quality))
        return true;
    std::fprintf(stderr, "draw_icons: cannot write %s\n", qPrintable(path));
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: draw_icons FOLDER\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const auto icon = [&](const QString& name, int pixels, int grid, const Drawing& drawing) {
        return save(drawn({pixels, pixels}, QSizeF(grid, grid), QImage::Format_ARGB32, drawing),
                    folder + u"/icons/"_s + name + u".png"_s);
    };
    // Toolbar and button icons are also drawn in two and three times the size, for dense screens.
    const auto sharpIcon = [&](const QString& name, int grid, const Drawing& drawing) {
        return icon(name, grid, grid, drawing) && icon(name + u"@2x"_s, 2 * grid, grid, drawing) &&
               icon(name + u"@3x"_s, 3 * grid, grid, drawing);
    };
    bool good = sharpIcon(u"orders"_s, 32, drawOrders) && sharpIcon(u"series"_s, 32, drawSeries) &&
                sharpIcon(u"kinds-and-colours"_s, 32, drawColors) &&
                sharpIcon(u"exit"_s, 32, drawExit) && sharpIcon(u"print"_s, 16, drawPrint) &&
                sharpIcon(u"close"_s, 16, drawClose) && sharpIcon(u"accept"_s, 16, drawAccept);
    good = good && icon(u"zomrel-16"_s, 16, 16, drawSmallApplication);
    for (const int pixels : {32, 48, 128, 256})
        good = good && icon(u"zomrel-%1"_s.arg(pixels), pixels, 32, drawApplication);
    const QImage logo = drawn({1428, 268}, {1428, 268}, QImage::Format_RGB32, drawLogo);
    return good && save(logo, folder + u"/Logo.jpg"_s, 92) ? 0 : 1;
}
