#include "platform/controls/line_end_label.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace controls {

using namespace Qt::StringLiterals;

namespace {

/// Maximum line width in device-independent pixels; longer lines wrap.
constexpr int widestLine = 520;

/// Event filter that paints a label instead of the label's own painting.
class LineEndPainter : public QObject
{
public:
    explicit LineEndPainter(QLabel& label) : QObject(&label), label_(label), text_(label.text())
    {
        text_.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
        label.setTextInteractionFlags(Qt::NoTextInteraction);
        label.setFixedSize(neededSize());
        label.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return QObject::eventFilter(watched, event);
        QPainter painter(&label_);
        label_.style()->drawItemText(&painter, label_.contentsRect(), flags(), label_.palette(),
                                     label_.isEnabled(), text_, label_.foregroundRole());
        return true;
    }

private:
    int flags() const
    {
        int flags = static_cast<int>(label_.alignment()) | int{Qt::TextWordWrap};
        if (label_.layoutDirection() == Qt::RightToLeft)
            flags |= int{Qt::TextForceRightToLeft};
        return flags;
    }

    QSize neededSize() const
    {
        const QRect room(0, 0, widestLine, QWIDGETSIZE_MAX);
        const QSize text = label_.fontMetrics().boundingRect(room, flags(), text_).size();
        return text.grownBy(label_.contentsMargins()) + QSize(2, 0);
    }

    QLabel& label_;
    QString text_;
};

} // namespace

void breakAtLineEnds(QLabel& label)
{
    if (label.text().contains(u'\r'))
        new LineEndPainter(label);
}

} // namespace controls
