#include "platform/report/saved_bar.h"

#include "platform/report/doors.h"
#include "platform/runtime/direction_marks.h"
#include "platform/runtime/guard.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>

namespace report {

using namespace Qt::StringLiterals;

SavedBar::SavedBar(QWidget* parent)
    : QToolBar(parent), text_(new QLabel(this)), openFolder_(new QAction(u"פתח תיקייה"_s, this))
{
    setObjectName(u"ToolbarSaved"_s);
    setWindowTitle(u"שמירה"_s);
    setMovable(false);
    text_->setObjectName(u"LabelSaved"_s);
    text_->setTextFormat(Qt::PlainText);
    openFolder_->setObjectName(u"ActionOpenFolder"_s);
    openFolder_->setToolTip(u"פתיחת התיקייה של הקובץ שנשמר"_s);
    auto* hide = new QAction(u"סגור"_s, this);
    hide->setObjectName(u"ActionHideSaved"_s);
    hide->setToolTip(u"סגירת ההודעה"_s);
    addWidget(text_);
    addAction(openFolder_);
    addAction(hide);
    QToolBar::hide();
    runtime::on(openFolder_, &QAction::triggered, this, [this] { openFolder(folder_); });
    runtime::on(hide, &QAction::triggered, this, [this] { QToolBar::hide(); });
}

void SavedBar::confirm(const QString& path)
{
    const QFileInfo file(path);
    folder_ = file.absolutePath();
    text_->setText(u" הקובץ נשמר: "_s + runtime::leftToRight(file.fileName()) + u' ');
    text_->setToolTip(runtime::leftToRight(QDir::toNativeSeparators(file.absoluteFilePath())));
    show();
}

} // namespace report
