#include "output/order_report.h"

#include <QCoreApplication>

#include <utility>

namespace output {

using report::DataReport;

namespace {

DataReport* keptReport = nullptr;

} // namespace

DataReport& dataReport1()
{
    if (keptReport == nullptr) {
        keptReport = new DataReport(orderReportDesign);
        // The report is deleted before the application object, because the report owns a preview
        // window.
        qAddPostRoutine([] { delete std::exchange(keptReport, nullptr); });
    }
    return *keptReport;
}

} // namespace output
