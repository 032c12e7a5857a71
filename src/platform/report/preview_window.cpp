#include "platform/report/preview_window.h"

namespace report {

PreviewWindow::PreviewWindow(const ReportDesign& design)
{
    setObjectName(design.name.toString());
    setWindowTitle(design.caption.toString());
    setLayoutDirection(Qt::RightToLeft);
    setAttribute(Qt::WA_QuitOnClose, false);
}

} // namespace report
