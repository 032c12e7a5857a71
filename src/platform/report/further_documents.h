#pragma once

#include "platform/report/printed_document.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <vector>

class QWidget;

namespace report {

/// A document that was created for the preview, with the functions that belong to it. The functions
/// stay valid as long as this object exists, even if other documents have been created since.
struct MadeDocument
{
    std::shared_ptr<PrintedDocument> document; ///< Null if the user has cancelled.
    std::function<QByteArray()> data;          ///< Returns the data of exactly this document.
    /// Creates the document again after a toolbar command has changed the displayed data. If this
    /// function is empty, the preview calls FurtherDocument::make instead.
    std::function<MadeDocument(QWidget* parent)> again = {};
};

/// The variants of a document, for example the paper sizes. The preview lists the variants in a
/// second list.
struct DocumentVariants
{
    QString name; ///< Object name of the list.
    QString toolTip;
    QStringList titles;
};

/// A document that the preview lists beside the report. The document is created each time the user
/// chooses it.
struct FurtherDocument
{
    QString title;
    /// Creates the document. `variant` is an index into the titles of `variants`, and 0 if there
    /// are no variants.
    std::function<MadeDocument(QWidget* parent, int variant)> make;
    QString dataName; ///< Proposed file name of the data, with its suffix.
    DocumentVariants variants = {};
};

/// A command beside the list of documents.
struct FurtherCommand
{
    QString name; ///< Object name of the action.
    QString caption;
    QString toolTip;
    /// Executes the toolbar command. Returns true if the command has changed the displayed data, so
    /// that the preview must create the documents again.
    std::function<bool(QWidget* parent)> run;
};

/// What the preview offers beside the report.
struct FurtherDocuments
{
    QString reportTitle; ///< How the list names the report.
    std::vector<FurtherDocument> documents;
    std::vector<FurtherCommand> commands;
};

} // namespace report
