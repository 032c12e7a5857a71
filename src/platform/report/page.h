#pragma once

#include "platform/report/sections.h"

#include <QPoint>

#include <vector>

namespace report {

/// One control of a page with what it says there.
struct PrintedControl
{
    const Control* control;
    QPoint corner; ///< Twips from the corner of the sheet.
    QString text;  ///< Placeholders and fields filled in; empty for lines and images.
};

/// A section as it stands on a page, its controls in the order of the design.
struct Band
{
    Role role;
    std::vector<PrintedControl> controls;
};

/// What stands on one sheet: page header, one band per block, page footer. Good for as long as its
/// document lives.
struct Page
{
    int index = 0; ///< From 0.
    std::vector<Band> bands;
};

} // namespace report
