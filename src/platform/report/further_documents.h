#pragma once

#include "platform/report/printed_document.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <vector>

class QWidget;

namespace report {

/// A document that was made for the preview. Its functions stay valid as long as it exists, even if
/// other documents have been made since.
struct MadeDocument
{
    std::shared_ptr<PrintedDocument> document; ///< Null if the user has cancelled.
    std::function<QByteArray()> data;          ///< Returns the data of exactly this document.
    /// Makes the document again after a command has changed what it shows. If there is no such
    /// function, the document is made as if the user had chosen it.
    std::function<MadeDocument(QWidget* parent)> again = {};
};

/// The variants of a document, for example its papers. The preview offers them in a second list.
struct DocumentVariants
{
    QString name; ///< Object name of the list.
    QString toolTip;
    QStringList titles;
};

/// A document that the preview lists beside the report. It is made whenever the user chooses it.
struct FurtherDocument
{
    QString title;
    /// `variant` is an index into the titles of the variants, and 0 without variants.
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
    /// Returns true if the documents must be made again.
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
