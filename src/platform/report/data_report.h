#pragma once

#include "platform/report/further_documents.h"
#include "platform/report/sections.h"

#include <QPointer>

#include <memory>

namespace report {

class PreviewWindow;
class RowSource;

/// A report at run time. It contains the record source, the captions and pictures that are set at
/// run time, and the preview window. A change takes effect at the next call of Show.
class DataReport
{
public:
    /// The design must outlive the report.
    explicit DataReport(const ReportDesign& design);
    ~DataReport();
    DataReport(const DataReport&) = delete;
    DataReport& operator=(const DataReport&) = delete;

    /// Sets the rows that the next call of Show displays. The preview keeps the rows alive while it
    /// displays them.
    void setDataSource(std::shared_ptr<RowSource> rows);
    /// Sets the documents that the preview lists beside the report after the next call of Show.
    void setFurtherDocuments(FurtherDocuments further) { further_ = std::move(further); }
    /// Returns a section of the report. `index` is the position of the section in the design,
    /// counted from 1. Throws SubscriptOutOfRange (9) for any other index.
    Section& Sections(int index);
    /// Opens the preview as a modeless, maximised window and shows the first page. An existing
    /// preview window is reused. Throws ObjectNotSet (91) if there is no record source,
    /// ItemNotFound (3265) if the record source lacks a field of the design, and
    /// ReportWidthTooLarge (8519) if the report is wider than the paper.
    void Show();

private:
    const ReportDesign& design_;
    std::vector<Section> sections_;
    std::shared_ptr<RowSource> rows_;
    FurtherDocuments further_;
    QPointer<PreviewWindow> preview_;
};

} // namespace report
