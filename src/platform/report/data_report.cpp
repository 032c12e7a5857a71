#include "platform/report/data_report.h"

#include "platform/report/document.h"
#include "platform/report/doors.h"
#include "platform/report/preview_window.h"
#include "platform/runtime/run_time_error.h"

namespace report {

using runtime::RunTimeError;

DataReport::DataReport(const ReportDesign& design)
    : design_(design), sections_(makeSections(design))
{
}

DataReport::~DataReport()
{
    delete preview_;
}

void DataReport::setDataSource(std::shared_ptr<RowSource> rows)
{
    rows_ = std::move(rows);
}

Section& DataReport::Sections(int index)
{
    if (index < 1 || index > static_cast<int>(sections_.size()))
        throw RunTimeError(runtime::SubscriptOutOfRange);
    return sections_[static_cast<std::size_t>(index) - 1];
}

void DataReport::Show()
{
    if (rows_ == nullptr)
        throw RunTimeError(runtime::ObjectNotSet);
    auto document = std::make_shared<Document>(design_, sections_, rows_, defaultPaper());
    if (preview_.isNull())
        preview_ = new PreviewWindow(design_);
    preview_->showDocument(std::move(document), further_);
}

} // namespace report
