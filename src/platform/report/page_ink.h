#pragma once

#include "platform/report/document.h"
#include "platform/report/text_shaper.h"

#include <QLineF>
#include <QRectF>
#include <QVector>

namespace report {

/// Draws pages: texts, then all lines and borders at once, under a painter scaled to twips.
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
