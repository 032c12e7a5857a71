#include "platform/controls/form.h"

#include "platform/controls/focus_speech.h"
#include "platform/controls/reading_anchor.h"
#include "platform/controls/scroll_part.h"
#include "platform/runtime/guard.h"

#include <QCloseEvent>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace controls {

namespace {

QPointer<QMdiArea>& sharedFrame()
{
    static QPointer<QMdiArea> area;
    return area;
}

/// Sizes, in pixels, that are reserved for the title bar and the side borders of a dialog. The real
/// sizes are not known before the dialog is shown.
constexpr int titleBarHeight = 36;
constexpr int sideFrames = 8;

const QScreen& screenOf(const QWidget& window)
{
    return *(window.parentWidget() != nullptr ? *window.parentWidget() : window).screen();
}

} // namespace

void setFrame(QMdiArea* frame)
{
    sharedFrame() = frame;
    if (frame != nullptr)
        frame->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
}

QMdiArea* frame()
{
    return sharedFrame();
}

QWidget* mainWindow()
{
    return frame() != nullptr ? frame()->window() : nullptr;
}

QSize roomOnScreen(const QWidget& window)
{
    return screenOf(window).availableSize() - QSize(sideFrames, titleBarHeight);
}

void centreOnScreen(QWidget& window)
{
    const QRect room = screenOf(window).availableGeometry();
    QRect place = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, window.size(), room);
    // move() positions a window together with its title bar, but the height of the window does not
    // include the title bar. Therefore space for a title bar is kept free at the bottom.
    place.moveBottom(std::min(place.bottom(), room.bottom() - titleBarHeight));
    place.moveTop(std::max(place.top(), room.top()));
    window.move(place.topLeft());
}

QSize roomInFrame()
{
    if (frame() == nullptr)
        return {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
    const QStyle& style = *frame()->style();
    const int edge = style.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    const int title = style.pixelMetric(QStyle::PM_TitleBarHeight);
    return frame()->viewport()->size() - QSize(2 * edge, title + edge);
}

ChildForm::ChildForm(const QString& name, const QString& title)
{
    setObjectName(name);
    setWindowTitle(title);
    setLayoutDirection(Qt::RightToLeft);
    setAttribute(Qt::WA_DeleteOnClose);
}

void ChildForm::Show()
{
    if (leaving_)
        return;
    if (window_.isNull() && frame() != nullptr) {
        showInFrame(*frame());
        focusFirst();
    } else if (window_.isNull()) {
        opensMaximised() && !isVisible() ? showMaximized() : show();
        raise();
        activateWindow();
        focusFirst();
    } else {
        if (window_->isMinimized())
            window_->showNormal();
        window_->show();
        window_->mdiArea()->setActiveSubWindow(window_);
    }
}

void ChildForm::showInFrame(QMdiArea& area)
{
    const QSize wanted = testAttribute(Qt::WA_Resized) ? size() : sizeHint();
    window_ = new QMdiSubWindow;
    new FocusSpeech(*window_);
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->setWidget(this);
    area.addSubWindow(window_);
    window_->layout()->activate();
    window_->resize(fittedSize(window_->size() + wanted - size(), area.viewport()->size()));
    new ReadingAnchor(*window_, *area.viewport());
    show();
    if (opensMaximised())
        window_->showMaximized();
    else
        window_->show();
    area.setActiveSubWindow(window_);
}

/// Gives the focus to the first enabled control in tab order. Qt itself tries only the first
/// control and does nothing if that control is disabled.
void ChildForm::focusFirst()
{
    if (focusWidget() != nullptr)
        return;
    for (QWidget* each = nextInFocusChain(); each != this; each = each->nextInFocusChain()) {
        const bool takesTab = (each->focusPolicy() & Qt::TabFocus) != 0;
        if (takesTab && each->isEnabled() && each->isVisible() && isAncestorOf(each)) {
            each->setFocus();
            return;
        }
    }
}

void ChildForm::Unload()
{
    leave();
    QWidget* outer = this;
    if (!window_.isNull())
        outer = window_;
    outer->close();
    outer->deleteLater();
}

void ChildForm::closeEvent(QCloseEvent* event)
{
    runtime::guarded([this] { leave(); });
    event->accept();
}

void ChildForm::leave()
{
    if (leaving_)
        return;
    leaving_ = true;
    aboutToUnload();
    emit unloaded();
}

} // namespace controls
