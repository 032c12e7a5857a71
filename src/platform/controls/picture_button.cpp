#include "platform/controls/picture_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace controls {

namespace {

constexpr int gap = 4; ///< Distance between picture and caption in device-independent pixels.
constexpr int border = 3;

} // namespace

PictureButton::PictureButton(const QString& name, const QString& caption, const QIcon& picture,
                             QWidget* parent)
    : QPushButton(picture, caption, parent)
{
    setObjectName(name);
}

void PictureButton::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    const auto [picture, caption] = places();
    icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.drawItemText(caption, Qt::AlignCenter | Qt::TextShowMnemonic, option.palette,
                         isEnabled(), text(), QPalette::ButtonText);
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        // The focus rectangle is drawn whether the focus came by keyboard or by mouse.
        focus.state |= QStyle::State_KeyboardFocusChange;
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

PictureButton::Places PictureButton::places() const
{
    const QSize caption(fontMetrics().horizontalAdvance(text()), fontMetrics().height());
    const QSize above(caption.width(), iconSize().height() + caption.height());
    if (above.height() <= height() - 2 * border) {
        const QRect content = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, above, rect());
        return {QStyle::alignedRect(Qt::LeftToRight, Qt::AlignHCenter | Qt::AlignTop, iconSize(),
                                    content),
                QStyle::alignedRect(Qt::LeftToRight, Qt::AlignHCenter | Qt::AlignBottom, caption,
                                    content)};
    }
    const QSize beside(iconSize().width() + gap + caption.width(), height());
    const QRect content = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, beside, rect());
    return {QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, iconSize(),
                                content),
            QStyle::alignedRect(layoutDirection(), Qt::AlignRight | Qt::AlignVCenter, caption,
                                content)};
}

} // namespace controls
