#pragma once

#include "platform/report/printed_document.h"

#include <QByteArray>

#include <functional>
#include <vector>

class QWidget;

namespace report {

/// A document that the preview lists beside the report. It is made when the user chooses it.
struct FurtherDocument
{
    QString title;
    /// Returns nothing if the user has cancelled. Throws any error of reading.
    std::function<std::shared_ptr<PrintedDocument>(QWidget* parent)> make;
    QString dataName; ///< Proposed file name of the data, with its suffix.
    std::function<QByteArray()> data;
};

/// A command beside the list of documents. It may return a document to show, which is not listed.
struct FurtherCommand
{
    QString name; ///< Object name of the action.
    QString caption;
    QString toolTip;
    std::function<std::shared_ptr<PrintedDocument>(QWidget* parent)> run;
};

/// What the preview offers beside the report.
struct FurtherDocuments
{
    QString reportTitle; ///< How the list names the report.
    std::vector<FurtherDocument> documents;
    std::vector<FurtherCommand> commands;
};

} // namespace report
