#include "platform/report/paper.h"

#include "platform/runtime/twips.h"

#include <QPageLayout>
#include <QRectF>

namespace report {

namespace {

int twips(double millimetres)
{
    constexpr double millimetresPerInch = 25.4;
    return qRound(millimetres / millimetresPerInch * runtime::twipsPerInch);
}

} // namespace

Paper paperOf(const QPageLayout& layout)
{
    const QSizeF sheet = layout.fullRect(QPageLayout::Millimeter).size();
    return {twips(sheet.width()), twips(sheet.height())};
}

} // namespace report
