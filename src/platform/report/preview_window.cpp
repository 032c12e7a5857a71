#include "platform/report/preview_window.h"

#include "platform/report/find_bar.h"
#include "platform/report/preview_documents.h"
#include "platform/report/preview_pages.h"
#include "platform/report/printing.h"
#include "platform/report/saved_bar.h"
#include "platform/report/toolbar_keys.h"
#include "platform/runtime/guard.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QToolBar>

namespace report {

using namespace Qt::StringLiterals;

namespace {

constexpr int listedPercents[] = {25, 50, 75, 100, 125, 150, 200, 300, 400};
constexpr int fitPageEntry = -1;
constexpr int fitWidthEntry = -2;

} // namespace

PreviewWindow::PreviewWindow(const ReportDesign& design)
    : pages_(new PreviewPages(this)), findBar_(new FindBar(*pages_, this)),
      documents_(new PreviewDocuments(this)), savedBar_(new SavedBar(this)),
      toolbar_(new QToolBar(this))
{
    setObjectName(design.name.toString());
    setWindowTitle(design.caption.toString());
    setLayoutDirection(Qt::RightToLeft);
    setAttribute(Qt::WA_QuitOnClose, false);
    setContextMenuPolicy(Qt::NoContextMenu);
    // The size of the window after the user leaves the maximised state.
    resize(QSize(1000, 760).boundedTo(screen()->availableSize() * 4 / 5));
    pages_->setObjectName(u"PreviewPages"_s);
    pages_->setAccessibleName(u"דפי המסמך"_s);
    setCentralWidget(pages_);
    toolbar_->setObjectName(u"ToolbarPreview"_s);
    toolbar_->setWindowTitle(u"פקודות"_s);
    toolbar_->setMovable(false);
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    addToolBar(toolbar_);
    addToolBarBreak();
    addToolBar(documents_);
    addToolBar(Qt::BottomToolBarArea, findBar_);
    addToolBar(Qt::BottomToolBarArea, savedBar_);
    addPageCommands();
    addZoomCommands();
    addOutputCommands();
    keys_ = new ToolbarKeys({toolbar_, documents_, savedBar_}, ToolbarKeys::Tab::ReachesButtons);
    connectPages();
}

PreviewWindow::~PreviewWindow()
{
    // The signals of the input boxes are disconnected before the base class destroys the boxes.
    // Otherwise a box that has the focus would emit signals to this window while both are being
    // destroyed.
    for (const QObject* each : {static_cast<QObject*>(pageNumber_), static_cast<QObject*>(zoom_),
                                static_cast<QObject*>(zoom_->lineEdit())})
        each->disconnect(this);
}

void PreviewWindow::showDocument(std::shared_ptr<Document> document, FurtherDocuments further)
{
    report_ = std::move(document);
    documents_->setDocuments(report_, std::move(further));
    setDocument(report_);
    showMaximized();
    raise();
    activateWindow();
}

void PreviewWindow::setDocument(std::shared_ptr<PrintedDocument> document)
{
    document_ = std::move(document);
    findBar_->setDocument(document_);
    savedBar_->hide();
    pages_->setDocument(document_);
    for (QAction* each : std::as_const(reportCommands_))
        each->setEnabled(document_ == report_);
    pages_->setFocus();
}

QAction* PreviewWindow::addCommand(const QString& name, const QString& caption,
                                   const QString& toolTip, const QList<QKeySequence>& shortcuts,
                                   void (PreviewWindow::*command)())
{
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    action->setToolTip(
        shortcuts.isEmpty()
            ? toolTip
            : u"%1 (%2)"_s.arg(toolTip, shortcuts.first().toString(QKeySequence::NativeText)));
    action->setShortcuts(shortcuts);
    addAction(action);
    runtime::on(action, &QAction::triggered, this, [this, command] { (this->*command)(); });
    return action;
}

void PreviewWindow::addPageCommands()
{
    first_ = addCommand(u"ActionFirstPage"_s, u"ראשון"_s, u"לדף הראשון"_s, {Qt::Key_Home},
                        &PreviewWindow::goToFirst);
    previous_ = addCommand(u"ActionPreviousPage"_s, u"הקודם"_s, u"לדף הקודם"_s, {Qt::Key_PageUp},
                           &PreviewWindow::goToPrevious);
    next_ = addCommand(u"ActionNextPage"_s, u"הבא"_s, u"לדף הבא"_s, {Qt::Key_PageDown},
                       &PreviewWindow::goToNext);
    last_ = addCommand(u"ActionLastPage"_s, u"אחרון"_s, u"לדף האחרון"_s, {Qt::Key_End},
                       &PreviewWindow::goToLast);
    toolbar_->addAction(first_);
    toolbar_->addAction(previous_);
    addPageNumber();
    toolbar_->addAction(next_);
    toolbar_->addAction(last_);
    toolbar_->addSeparator();
}

void PreviewWindow::addPageNumber()
{
    pageNumber_ = new QLineEdit(toolbar_);
    pageNumber_->setObjectName(u"EditPageNumber"_s);
    pageNumber_->setAccessibleName(u"מספר דף"_s);
    pageNumber_->setToolTip(u"מספר הדף המוצג; הקלד מספר ו-Enter כדי לעבור אליו"_s);
    pageNumber_->setAlignment(Qt::AlignCenter);
    pageNumber_->setMaximumWidth(60);
    pageCount_ = new QLabel(toolbar_);
    pageCount_->setObjectName(u"LabelPageCount"_s);
    toolbar_->addWidget(new QLabel(u" דף "_s, toolbar_));
    toolbar_->addWidget(pageNumber_);
    toolbar_->addWidget(pageCount_);
    runtime::on(pageNumber_, &QLineEdit::returnPressed, this, [this] { goToTyped(); });
    runtime::on(pageNumber_, &QLineEdit::editingFinished, this, [this] { showPageNumber(); });
}

void PreviewWindow::addZoomCommands()
{
    toolbar_->addAction(addCommand(u"ActionZoomOut"_s, u"הקטן"_s, u"הקטנת התצוגה"_s,
                                   {Qt::CTRL | Qt::Key_Minus}, &PreviewWindow::zoomOut));
    addZoomList();
    toolbar_->addAction(addCommand(u"ActionZoomIn"_s, u"הגדל"_s, u"הגדלת התצוגה"_s,
                                   {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
                                   &PreviewWindow::zoomIn));
    addCommand(u"ActionZoomActual"_s, u"גודל מלא"_s, u"הצגה ב-100%"_s, {Qt::CTRL | Qt::Key_0},
               &PreviewWindow::zoomToActualSize);
    toolbar_->addAction(addCommand(u"ActionFitPage"_s, u"דף שלם"_s, u"הצגת דף שלם בחלון"_s, {},
                                   &PreviewWindow::fitPage));
    toolbar_->addAction(addCommand(u"ActionFitWidth"_s, u"רוחב הדף"_s, u"הצגת הדף לרוחב החלון"_s,
                                   {}, &PreviewWindow::fitWidth));
    toolbar_->addSeparator();
}

void PreviewWindow::addZoomList()
{
    zoom_ = new QComboBox(toolbar_);
    zoom_->setObjectName(u"ComboZoom"_s);
    zoom_->setToolTip(u"גודל התצוגה באחוזים"_s);
    zoom_->setEditable(true);
    zoom_->setAccessibleName(u"גודל התצוגה"_s);
    zoom_->lineEdit()->setAccessibleName(zoom_->accessibleName());
    zoom_->setInsertPolicy(QComboBox::NoInsert);
    for (const int percent : listedPercents)
        zoom_->addItem(u"%1%"_s.arg(percent), percent);
    zoom_->addItem(u"דף שלם"_s, fitPageEntry);
    zoom_->addItem(u"רוחב הדף"_s, fitWidthEntry);
    toolbar_->addWidget(zoom_);
    runtime::on(zoom_, &QComboBox::activated, this, [this](int index) { zoomToEntry(index); });
    runtime::on(zoom_->lineEdit(), &QLineEdit::returnPressed, this, [this] { zoomToTyped(); });
}

void PreviewWindow::addOutputCommands()
{
    toolbar_->addAction(addCommand(u"ActionPrint"_s, u"הדפס"_s, u"הדפסת הדו\"ח"_s,
                                   {Qt::CTRL | Qt::Key_P}, &PreviewWindow::print));
    toolbar_->addAction(addCommand(u"ActionExportPdf"_s, u"שמור PDF"_s, u"שמירת הדו\"ח כקובץ PDF"_s,
                                   {}, &PreviewWindow::exportPdf));
    reportCommands_ = {addCommand(u"ActionExportHtml"_s, u"שמור HTML"_s,
                                  u"שמירת הדו\"ח כקובץ HTML"_s, {}, &PreviewWindow::exportHtml),
                       addCommand(u"ActionExportText"_s, u"שמור טקסט"_s,
                                  u"שמירת הדו\"ח כקובץ טקסט"_s, {}, &PreviewWindow::exportText)};
    toolbar_->addActions(reportCommands_);
    toolbar_->addSeparator();
    toolbar_->addAction(addCommand(u"ActionFind"_s, u"חפש"_s, u"חיפוש בדו\"ח"_s,
                                   {Qt::CTRL | Qt::Key_F}, &PreviewWindow::openFind));
    addActions({findBar_->nextAction(), findBar_->previousAction()});
    addCommand(u"ActionEscape"_s, u"סגור"_s, u"סגירה"_s, {Qt::Key_Escape}, &PreviewWindow::escape);
}

void PreviewWindow::connectPages()
{
    runtime::on(pages_, &PreviewPages::currentPageChanged, this, [this] { showPageNumber(); });
    runtime::on(pages_, &PreviewPages::pageCountChanged, this, [this] { showPageNumber(); });
    runtime::on(pages_, &PreviewPages::zoomFactorChanged, this, [this] { showZoom(); });
    runtime::on(
        documents_, &PreviewDocuments::chosen, this,
        [this](const std::shared_ptr<PrintedDocument>& document) { setDocument(document); });
    runtime::on(documents_, &PreviewDocuments::saved, this,
                [this](const QString& path) { savedBar_->confirm(path); });
    runtime::on(documents_, &PreviewDocuments::buttonsChanged, this, [this] { keys_->update(); });
    showZoom();
}

void PreviewWindow::goToFirst()
{
    pages_->setCurrentPage(1);
}

void PreviewWindow::goToPrevious()
{
    pages_->setCurrentPage(pages_->currentPage() - 1);
}

void PreviewWindow::goToNext()
{
    pages_->setCurrentPage(pages_->currentPage() + 1);
}

void PreviewWindow::goToLast()
{
    pages_->setCurrentPage(pages_->pageCount());
}

void PreviewWindow::goToTyped()
{
    bool isNumber = false;
    const int page = pageNumber_->text().trimmed().toInt(&isNumber);
    if (isNumber)
        pages_->setCurrentPage(page);
    pages_->setFocus();
}

void PreviewWindow::showPageNumber()
{
    const int page = pages_->currentPage();
    pageNumber_->setText(QString::number(page));
    pageCount_->setText(u" מתוך %1 "_s.arg(pages_->pageCount()));
    pages_->setAccessibleDescription(u"דף %1 מתוך %2"_s.arg(page).arg(pages_->pageCount()));
    first_->setEnabled(page > 1);
    previous_->setEnabled(page > 1);
    next_->setEnabled(page < pages_->pageCount());
    last_->setEnabled(page < pages_->pageCount());
}

void PreviewWindow::zoomIn()
{
    pages_->zoomIn();
}

void PreviewWindow::zoomOut()
{
    pages_->zoomOut();
}

void PreviewWindow::zoomToActualSize()
{
    pages_->setZoomFactor(1);
}

void PreviewWindow::fitPage()
{
    pages_->setFit(PreviewPages::Fit::Page);
}

void PreviewWindow::fitWidth()
{
    pages_->setFit(PreviewPages::Fit::Width);
}

void PreviewWindow::zoomToTyped()
{
    bool isNumber = false;
    const int percent = zoom_->currentText().remove(u'%').trimmed().toInt(&isNumber);
    if (isNumber)
        pages_->setZoomFactor(percent / 100.0);
    showZoom();
    pages_->setFocus();
}

void PreviewWindow::zoomToEntry(int index)
{
    const int entry = zoom_->itemData(index).toInt();
    if (entry == fitPageEntry)
        fitPage();
    else if (entry == fitWidthEntry)
        fitWidth();
    else
        pages_->setZoomFactor(entry / 100.0);
    showZoom();
}

void PreviewWindow::showZoom()
{
    zoom_->setEditText(u"%1%"_s.arg(qRound(pages_->zoomFactor() * 100)));
}

void PreviewWindow::print()
{
    pages_->readAll();
    const std::shared_ptr<PrintedDocument> printed = document_;
    printDocument(*printed, pages_->currentPage(), this);
}

/// Exports the report in the given format. `exported` keeps the report alive while the file dialog
/// is open, because the window may show another report in the meantime.
void PreviewWindow::exportAs(Format format)
{
    pages_->readAll();
    const std::shared_ptr<Document> exported = report_;
    if (const QString path = exportDocument(*exported, format, this); !path.isEmpty())
        savedBar_->confirm(path);
}

void PreviewWindow::exportPdf()
{
    if (document_ == report_)
        return exportAs(Format::Pdf);
    const std::shared_ptr<PrintedDocument> exported = document_;
    if (const QString path = report::exportPdf(*exported, this); !path.isEmpty())
        savedBar_->confirm(path);
}

void PreviewWindow::exportHtml()
{
    exportAs(Format::Html);
}

void PreviewWindow::exportText()
{
    exportAs(Format::Text);
}

void PreviewWindow::openFind()
{
    findBar_->open();
}

/// Closes the first of the following that is open: the expanded part of a toolbar, the search bar,
/// or the confirmation of a saved file. Closes the window if none of them is open.
void PreviewWindow::escape()
{
    if (keys_->collapse())
        return;
    if (findBar_->isVisible())
        findBar_->close();
    else if (savedBar_->isVisible())
        savedBar_->hide();
    else
        close();
}

} // namespace report
