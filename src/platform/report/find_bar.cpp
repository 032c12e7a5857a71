#include "platform/report/find_bar.h"

#include "platform/report/preview_pages.h"
#include "platform/report/work_progress.h"
#include "platform/runtime/guard.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>

namespace report {

using namespace Qt::StringLiterals;

namespace {

QAction* makeAction(FindBar* bar, const QString& name, const QString& caption,
                    const QString& toolTip, const QKeySequence& shortcut)
{
    auto* action = new QAction(caption, bar);
    action->setObjectName(name);
    action->setToolTip(toolTip);
    action->setShortcut(shortcut);
    return action;
}

} // namespace

FindBar::FindBar(PreviewPages& pages, QWidget* parent)
    : QToolBar(parent), pages_(pages), text_(new QLineEdit(this)), result_(new QLabel(this)),
      next_(makeAction(this, u"ActionFindNext"_s, u"הבא"_s, u"המקום הבא (F3)"_s,
                       QKeySequence(Qt::Key_F3))),
      previous_(makeAction(this, u"ActionFindPrevious"_s, u"הקודם"_s, u"המקום הקודם (Shift+F3)"_s,
                           QKeySequence(Qt::SHIFT | Qt::Key_F3)))
{
    setObjectName(u"ToolbarFind"_s);
    setWindowTitle(u"חיפוש"_s);
    setMovable(false);
    text_->setObjectName(u"EditFind"_s);
    text_->setAccessibleName(u"חיפוש"_s);
    text_->setClearButtonEnabled(true);
    text_->setMaximumWidth(260);
    result_->setObjectName(u"LabelFindResult"_s);
    addWidget(new QLabel(u" חיפוש: "_s, this));
    addWidget(text_);
    addAction(next_);
    addAction(previous_);
    addWidget(result_);
    hide();
    runtime::on(text_, &QLineEdit::textChanged, this, [this] { forget(); });
    runtime::on(text_, &QLineEdit::returnPressed, this, [this] { find(SearchDirection::Forward); });
    runtime::on(next_, &QAction::triggered, this, [this] { find(SearchDirection::Forward); });
    runtime::on(previous_, &QAction::triggered, this, [this] { find(SearchDirection::Backward); });
}

void FindBar::setDocument(std::shared_ptr<PrintedDocument> document)
{
    document_ = std::move(document);
    result_->clear();
}

void FindBar::open()
{
    show();
    text_->setFocus();
    text_->selectAll();
}

void FindBar::close()
{
    hide();
    forget();
    pages_.setFocus();
}

void FindBar::forget()
{
    result_->clear();
    pages_.setHighlight(std::nullopt);
}

void FindBar::find(SearchDirection direction)
{
    if (text_->text().isEmpty() || !isVisible()) {
        open();
        if (text_->text().isEmpty())
            return;
    }
    pages_.readAll();
    bool cancelled = false;
    std::optional<Hit> hit;
    {
        WorkProgress progress(window(), u"מחפש..."_s);
        hit = findText(*document_, text_->text(), direction, pages_.highlight(),
                       pages_.currentPage() - 1, [&](int done, int total) {
                           cancelled = !progress.report(done, total);
                           return !cancelled;
                       });
    }
    if (cancelled)
        return;
    pages_.setHighlight(hit);
    result_->setText(hit ? u" דף %1 "_s.arg(hit->page + 1) : u" לא נמצא "_s);
}

} // namespace report
