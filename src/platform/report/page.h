#pragma once

#include "platform/report/sections.h"

#include <QPoint>

#include <vector>

namespace report {

/// A control on a page, with the text that the control shows on that page.
struct PrintedControl
{
    const Control* control;
    QPoint corner; ///< Twips from the corner of the sheet.
    QString text;  ///< Placeholders and fields filled in; empty for lines and images.
};

/// A section on a page. The controls are in the order of the design.
struct Band
{
    Role role;
    std::vector<PrintedControl> controls;
};

/// The contents of one sheet in bands: the page header, the detail section of each row, and the
/// page footer. A page is valid while its document exists.
struct Page
{
    int index = 0; ///< From 0.
    std::vector<Band> bands;
};

} // namespace report
