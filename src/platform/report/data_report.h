#pragma once

#include "platform/report/sections.h"

#include <QPointer>

#include <memory>

namespace report {

class PreviewWindow;
class RowSource;

/// A report at run time: its record source, what is set of its controls, and its preview. What is
/// set afterwards reaches paper with the next Show.
class DataReport
{
public:
    /// The design must outlive the report.
    explicit DataReport(const ReportDesign& design);
    ~DataReport();
    DataReport(const DataReport&) = delete;
    DataReport& operator=(const DataReport&) = delete;

    /// The rows that the next Show prints. The preview keeps them for as long as it shows them.
    void setDataSource(std::shared_ptr<RowSource> rows);
    /// The sections in the order of the design, counted from 1. Raises 9 for another index.
    Section& Sections(int index);
    /// Opens the preview, modeless and maximised, at its first page; the window that stands
    /// already is taken again. Raises 91 without a data source, 3265 for a field that the record
    /// source does not have, 8519 where the paper is too narrow.
    void Show();

private:
    const ReportDesign& design_;
    std::vector<Section> sections_;
    std::shared_ptr<RowSource> rows_;
    QPointer<PreviewWindow> preview_;
};

} // namespace report
