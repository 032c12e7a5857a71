#include "shell/hinted_area.h"

#include <QMdiSubWindow>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

constexpr qreal hintPoints = 14;

} // namespace

HintedArea::HintedArea(QWidget* parent) : QMdiArea(parent)
{
    setBackground(QColor(0xe9, 0xec, 0xef));
    // The area is painted again when a child window opens or closes, because the hint is visible
    // only without child windows.
    connect(this, &QMdiArea::subWindowActivated, viewport(), qOverload<>(&QWidget::update));
}

void HintedArea::paintEvent(QPaintEvent* event)
{
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;
    QPainter painter(viewport());
    QFont font = this->font();
    font.setPointSizeF(hintPoints);
    painter.setFont(font);
    painter.setPen(QColor(0x5a, 0x62, 0x6a));
    painter.setLayoutDirection(Qt::RightToLeft);
    painter.drawText(viewport()->rect(), Qt::AlignCenter,
                     u"להתחלת עבודה לחץ על \"הזמנות\" (Ctrl+N)\n"
                     "לחיפוש הזמנה קיימת: Ctrl+F"_s);
}

} // namespace shell
