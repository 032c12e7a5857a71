#pragma once

#include "platform/report/further_documents.h"

#include <QToolBar>

class QAction;
class QComboBox;

namespace report {

/// The tool bar of the preview with the list of documents and their commands. It is hidden if there
/// is only the report.
class PreviewDocuments : public QToolBar
{
    Q_OBJECT

public:
    explicit PreviewDocuments(QWidget* parent);

    /// Lists the report and the further documents, and selects the report.
    void setDocuments(std::shared_ptr<PrintedDocument> report, FurtherDocuments further);

signals:
    /// The user has chosen this document.
    void chosen(const std::shared_ptr<report::PrintedDocument>& document);
    /// The data of a document was written to this file.
    void saved(const QString& path);

private:
    void choose(int index);
    void present(int index, std::shared_ptr<PrintedDocument> document);
    void addCommands();
    void run(std::size_t command);
    void exportData();

    QComboBox* list_;
    QAction* exportData_;
    QList<QAction*> commands_;
    std::shared_ptr<PrintedDocument> report_;
    std::shared_ptr<PrintedDocument> shown_;
    FurtherDocuments further_;
    int current_ = 0; ///< The index of the document on display; -1 for one that is not listed.
};

} // namespace report
