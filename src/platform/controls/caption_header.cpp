#include "platform/controls/caption_header.h"

#include "platform/controls/field_text.h"

#include <QPainter>
#include <QStyleOption>

namespace controls {

CaptionHeader::CaptionHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setDefaultAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(1);
    setSectionsClickable(false);
    setHighlightSections(false);
}

void CaptionHeader::setCaption(const QString& caption)
{
    const bool hadBand = !caption_.isEmpty();
    caption_ = caption;
    if (hadBand != !caption_.isEmpty())
        emit geometriesChanged();
    viewport()->update();
}

QSize CaptionHeader::sizeHint() const
{
    return QHeaderView::sizeHint() + QSize(0, bandHeight());
}

QFont CaptionHeader::captionFont() const
{
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

int CaptionHeader::bandHeight() const
{
    return caption_.isEmpty() ? 0 : QFontMetrics(captionFont()).height() + 6;
}

void CaptionHeader::paintEvent(QPaintEvent* event)
{
    QHeaderView::paintEvent(event);
    if (caption_.isEmpty())
        return;
    QPainter painter(viewport());
    const QRect band(0, 0, viewport()->width(), bandHeight());
    painter.fillRect(band, palette().brush(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(band.bottomLeft(), band.bottomRight());
    painter.setFont(captionFont());
    painter.setLayoutDirection(readsRightToLeft(caption_) ? Qt::RightToLeft : Qt::LeftToRight);
    style()->drawItemText(&painter, band, Qt::AlignCenter, palette(), isEnabled(), caption_,
                          QPalette::WindowText);
}

void CaptionHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    const QString text = model()->headerData(logicalIndex, orientation()).toString();
    painter->setLayoutDirection(readsRightToLeft(text) ? Qt::RightToLeft : Qt::LeftToRight);
    QHeaderView::paintSection(painter, rect.adjusted(0, bandHeight(), 0, 0), logicalIndex);
}

} // namespace controls
