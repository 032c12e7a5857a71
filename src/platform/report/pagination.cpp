#include "platform/report/pagination.h"

#include "platform/runtime/run_time_error.h"

#include <algorithm>

namespace report {

namespace {

int heightOf(const ReportDesign& design, Role role)
{
    const SectionDesign* section = sectionOf(design, role);
    return section == nullptr ? 0 : section->height;
}

} // namespace

Pagination::Pagination(const ReportDesign& design, Paper paper)
    : paper_(paper), left_(design.leftMargin), headerTop_(design.topMargin),
      detailTop_(headerTop_ + heightOf(design, Role::PageHeader)),
      footerTop_(paper.height - design.bottomMargin - heightOf(design, Role::PageFooter)),
      blockHeight_(heightOf(design, Role::Detail)),
      blocksPerPage_((footerTop_ - detailTop_) / blockHeight_)
{
    if (design.leftMargin + design.width + design.rightMargin > paper.width)
        throw runtime::RunTimeError(runtime::ReportWidthTooLarge);
    if (footerTop_ < detailTop_ || blocksPerPage_ < 1)
        throw runtime::RunTimeError(runtime::InvalidProcedureCall,
                                    QStringLiteral("Report section is higher than the paper."));
}

int Pagination::pageCount(int blocks) const
{
    return std::max(1, (blocks + blocksPerPage_ - 1) / blocksPerPage_);
}

int Pagination::blocksOn(int page, int blocks) const
{
    return std::clamp(blocks - firstBlock(page), 0, blocksPerPage_);
}

} // namespace report
