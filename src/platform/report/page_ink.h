#pragma once

#include "platform/report/page.h"
#include "platform/report/text_shaper.h"

#include <QLineF>
#include <QRectF>
#include <QVector>

namespace report {

/// Draws a page. All texts and pictures are drawn first. Then all lines and borders are drawn in
/// one call. The painter's unit must be the twip.
class PageInk
{
public:
    explicit PageInk(const ReportDesign& design) : shaper_(design.fontFamily, design.sections) {}

    void draw(const Page& page, QPainter& painter);

private:
    void drawControl(const PrintedControl& printed, QPainter& painter);
    void drawText(const PrintedControl& printed, QPainter& painter);

    TextShaper shaper_;
    QVector<QLineF> lines_;
    QVector<QRectF> borders_;
};

} // namespace report
