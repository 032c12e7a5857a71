#pragma once

#include "platform/report/document.h"

#include <QMainWindow>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QToolBar;

namespace report {

class FindBar;
struct FurtherDocuments;
class PreviewDocuments;
class PreviewPages;
class SavedBar;
class ToolbarKeys;
enum class Format;

/// The window that previews, prints and exports a report. Each command is a named action with a
/// keyboard shortcut.
class PreviewWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PreviewWindow(const ReportDesign& design);
    ~PreviewWindow() override;

    /// Shows the report from its first page in a maximised window in front of the other windows,
    /// and lists the further documents.
    void showDocument(std::shared_ptr<Document> document, FurtherDocuments further);

private:
    QAction* addCommand(const QString& name, const QString& caption, const QString& toolTip,
                        const QList<QKeySequence>& shortcuts, void (PreviewWindow::*command)());
    void addPageCommands();
    void addZoomCommands();
    void addOutputCommands();
    void addPageNumber();
    void addZoomList();
    void connectPages();
    void setDocument(std::shared_ptr<PrintedDocument> document);

    void goToFirst();
    void goToPrevious();
    void goToNext();
    void goToLast();
    void goToTyped();
    void showPageNumber();
    void zoomIn();
    void zoomOut();
    void zoomToActualSize();
    void fitPage();
    void fitWidth();
    void zoomToTyped();
    void zoomToEntry(int index);
    void showZoom();
    void print();
    void exportAs(Format format);
    void exportPdf();
    void exportHtml();
    void exportText();
    void openFind();
    void escape();

    std::shared_ptr<Document> report_;
    std::shared_ptr<PrintedDocument> document_; ///< The document on display.
    PreviewPages* pages_;
    FindBar* findBar_;
    PreviewDocuments* documents_;
    SavedBar* savedBar_;
    QToolBar* toolbar_;
    ToolbarKeys* keys_ = nullptr;
    QLineEdit* pageNumber_ = nullptr;
    QLabel* pageCount_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QAction* first_ = nullptr;
    QAction* previous_ = nullptr;
    QAction* next_ = nullptr;
    QAction* last_ = nullptr;
    QList<QAction*> reportCommands_; ///< Commands that only the report has.
};

} // namespace report
