#pragma once

#include "platform/report/design.h"

#include <QMainWindow>

namespace report {

/// The window in which a report is looked at, printed and exported.
class PreviewWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PreviewWindow(const ReportDesign& design);
};

} // namespace report
