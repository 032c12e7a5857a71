#pragma once

#include "platform/report/further_documents.h"
#include "platform/report/sections.h"

#include <QPointer>

#include <memory>

namespace report {

class PreviewWindow;
class RowSource;

/// A report at run time. It holds the record source, the captions and pictures that are set at run
/// time, and the preview window. Later changes take effect at the next Show.
class DataReport
{
public:
    /// The design must outlive the report.
    explicit DataReport(const ReportDesign& design);
    ~DataReport();
    DataReport(const DataReport&) = delete;
    DataReport& operator=(const DataReport&) = delete;

    /// Sets the rows that the next Show displays. The preview keeps them while it shows them.
    void setDataSource(std::shared_ptr<RowSource> rows);
    /// Sets the documents that the next Show lists beside the report.
    void setFurtherDocuments(FurtherDocuments further) { further_ = std::move(further); }
    /// Returns a section by its position in the design, counted from 1. Throws SubscriptOutOfRange
    /// (9) for any other index.
    Section& Sections(int index);
    /// Opens the modeless, maximised preview at the first page. An existing preview window is used
    /// again. Throws ObjectNotSet (91) without a record source, ItemNotFound (3265) if the record
    /// source lacks a field of the design, and ReportWidthTooLarge (8519) if the report is wider
    /// than the paper.
    void Show();

private:
    const ReportDesign& design_;
    std::vector<Section> sections_;
    std::shared_ptr<RowSource> rows_;
    FurtherDocuments further_;
    QPointer<PreviewWindow> preview_;
};

} // namespace report
