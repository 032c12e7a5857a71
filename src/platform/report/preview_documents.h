#pragma once

#include "platform/report/further_documents.h"

#include <QToolBar>

#include <map>

class QAction;
class QComboBox;

namespace report {

/// The tool bar of the preview. It contains the list of documents, the variants of the displayed
/// document, and the commands. The tool bar is hidden if the report is the only document.
class PreviewDocuments : public QToolBar
{
    Q_OBJECT

public:
    explicit PreviewDocuments(QWidget* parent);

    /// Lists the report and the further documents, and selects the report. A document that is still
    /// being created during this call is not shown afterwards.
    void setDocuments(std::shared_ptr<PrintedDocument> report, FurtherDocuments further);

signals:
    /// The user has chosen this document.
    void chosen(const std::shared_ptr<report::PrintedDocument>& document);
    /// Emitted after the user has saved a document as a data file (CSV or JSON) with this path.
    void saved(const QString& path);
    /// Emitted after the buttons of the tool bar have been replaced.
    void buttonsChanged();

private:
    /// The list of a document's variants, for example paper sizes. It is beside the list of
    /// documents.
    struct VariantList
    {
        QComboBox* list;
        QAction* action;
        int shown = 0;
    };

    void addVariants();
    void addCommands();
    void choose(int index);
    /// Returns the index of the variant that the user has chosen for the document with this index.
    /// Also makes the lists of documents and variants show the displayed document again. The chosen
    /// document is not displayed before it has been created, and creating it may fail.
    int takeVariant(int index);
    void present(int index, int variant, MadeDocument made);
    void presentReport();
    void run(std::size_t command);
    void makeAgain();
    void exportData();
    const FurtherDocument& documentAt(int index) const
    {
        return further_.documents[static_cast<std::size_t>(index) - 1];
    }

    QComboBox* list_;
    QAction* exportData_;
    std::map<int, VariantList> variants_; ///< By the document's index in the list.
    QList<QAction*> commands_;
    std::shared_ptr<PrintedDocument> report_;
    MadeDocument shown_;
    FurtherDocuments further_;
    int generation_ = 0; ///< How often the documents were set.
    int current_ = 0;    ///< The index of the document on display.
};

} // namespace report
