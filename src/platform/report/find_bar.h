#pragma once

#include "platform/report/search.h"

#include <QToolBar>

class QAction;
class QLabel;
class QLineEdit;

namespace report {

class PreviewPages;

/// The search bar below the pages of the preview. The bar is hidden until the user opens it.
class FindBar : public QToolBar
{
    Q_OBJECT

public:
    FindBar(PreviewPages& pages, QWidget* parent);

    void setDocument(std::shared_ptr<PrintedDocument> document);
    void open();
    void close();
    /// Shows the next or previous hit of the typed text. Opens the bar first if the bar is hidden
    /// or its text is empty.
    void find(SearchDirection direction);

    QAction* nextAction() const { return next_; }
    QAction* previousAction() const { return previous_; }

private:
    void forget();

    PreviewPages& pages_;
    std::shared_ptr<PrintedDocument> document_;
    QLineEdit* text_;
    QLabel* result_;
    QAction* next_;
    QAction* previous_;
};

} // namespace report
