#include "platform/controls/frame_fit.h"

#include "platform/controls/form.h"
#include "platform/controls/reading_anchor.h"
#include "platform/controls/scroll_part.h"
#include "platform/runtime/guard.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>

namespace controls {

FrameFit::FrameFit(QWidget& form, const QList<QPushButton*>& buttons)
    : QObject(&form), form_(form), full_(form.size()), buttons_(buttons)
{
    for (QPushButton* each : buttons)
        places_.insert(each, each->geometry());
    fit();
    if (frame() != nullptr)
        frame()->viewport()->installEventFilter(this);
}

bool FrameFit::eventFilter(QObject* watched, QEvent* event)
{
    // The form is fitted after the resize event, because the MDI area is still placing its windows
    // and scroll bars during the event.
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(
            this, [this] { runtime::guarded([this] { fit(); }); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void FrameFit::fit()
{
    const QSize room = roomInFrame();
    const bool mustScroll = full_.width() > room.width() || full_.height() > room.height();
    const QSize former = form_.size();
    auto* window = qobject_cast<QMdiSubWindow*>(form_.parentWidget());
    const QSize around = window != nullptr ? window->size() - former : QSize();
    QPointer<QWidget> focused = QApplication::focusWidget();
    if (!form_.isAncestorOf(focused))
        focused = nullptr;
    if (mustScroll)
        scroll(room);
    else if (contents_ != nullptr)
        stopScrolling();
    if (form_.size() == former)
        return;
    // Fitting may have moved the control with the focus to another parent widget. Such a move takes
    // the focus from the control. Therefore the control gets the focus again.
    if (focused)
        focused->setFocus();
    if (window != nullptr) {
        window->layout()->activate();
        window->resize(form_.size() + around);
        if (auto* anchor = window->findChild<ReadingAnchor*>())
            anchor->place();
    }
}

void FrameFit::scroll(const QSize& room)
{
    if (contents_ == nullptr)
        contents_ = fitIntoRoom(form_, room, buttons_);
    else
        form_.setFixedSize(fittedSize(full_, room));
}

void FrameFit::stopScrolling()
{
    const auto moveBack = [this](QWidget* control) {
        const bool isHidden = control->isHidden();
        control->setParent(&form_);
        control->setVisible(!isHidden);
    };
    QWidget* const scrolling = contents_->parentWidget()->parentWidget();
    QWidget* const row = buttons_.first()->parentWidget();
    for (QWidget* each : contents_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        moveBack(each);
    for (QPushButton* each : buttons_) {
        moveBack(each);
        each->setMinimumSize(0, 0);
        each->setGeometry(places_[each]);
    }
    delete form_.layout();
    delete scrolling;
    delete row;
    contents_ = nullptr;
    form_.setFixedSize(full_);
}

} // namespace controls
