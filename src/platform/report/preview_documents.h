#pragma once

#include "platform/report/further_documents.h"

#include <QToolBar>

#include <map>

class QAction;
class QComboBox;

namespace report {

/// The tool bar of the preview with the list of documents, the variants of the document on display,
/// and the commands. It is hidden if there is only the report.
class PreviewDocuments : public QToolBar
{
    Q_OBJECT

public:
    explicit PreviewDocuments(QWidget* parent);

    /// Lists the report and the further documents, and selects the report. A document that is being
    /// made meanwhile is not shown any more.
    void setDocuments(std::shared_ptr<PrintedDocument> report, FurtherDocuments further);

signals:
    /// The user has chosen this document.
    void chosen(const std::shared_ptr<report::PrintedDocument>& document);
    /// The data of a document was written to this file.
    void saved(const QString& path);
    /// The buttons of the tool bar are other ones than before.
    void buttonsChanged();

private:
    /// The second list of a document with variants.
    struct VariantList
    {
        QComboBox* list;
        QAction* action;
        int shown = 0;
    };

    void addVariants();
    void addCommands();
    void choose(int index);
    /// Returns the variant that the user has chosen in the list of a document. The lists show the
    /// document on display again, because the chosen one is not made yet.
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
