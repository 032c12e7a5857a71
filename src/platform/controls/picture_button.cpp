#include "platform/controls/picture_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace controls {

namespace {

constexpr int gap = 4; ///< Device-independent pixels between the picture and the caption.

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

    const int captionWidth = fontMetrics().horizontalAdvance(text());
    const QSize whole(iconSize().width() + gap + captionWidth, height());
    const QRect content = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, whole, rect());
    const Qt::LayoutDirection direction = layoutDirection();
    const QRect picture =
        QStyle::alignedRect(direction, Qt::AlignLeft | Qt::AlignVCenter, iconSize(), content);
    const QRect caption = QStyle::alignedRect(direction, Qt::AlignRight | Qt::AlignVCenter,
                                              QSize(captionWidth, height()), content);
    icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.drawItemText(caption, Qt::AlignCenter | Qt::TextShowMnemonic, option.palette,
                         isEnabled(), text(), QPalette::ButtonText);
    if (option.state.testFlag(QStyle::State_HasFocus) &&
        option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

} // namespace controls
