#include "platform/report/document.h"

#include "platform/report/page_ink.h"
#include "platform/report/report_text.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"

#include <algorithm>

namespace report {

using runtime::RunTimeError;

namespace {

/// The maximum number of pages in the cache. A screen shows fewer pages at once.
constexpr std::size_t keptPageCount = 32;

bool forbiddenInFileName(QChar c)
{
    return c.category() == QChar::Other_Control || QStringView(u"/\\:*?\"<>|").contains(c);
}

} // namespace

QString fileTitle(QString title)
{
    title.removeIf(forbiddenInFileName);
    return title.simplified();
}

Document::Document(const ReportDesign& design, std::vector<Section> sections,
                   std::shared_ptr<RowSource> rows, Paper paper)
    : design_(design), sections_(std::move(sections)), rows_(std::move(rows)),
      pagination_(design, paper), ink_(std::make_unique<PageInk>(design))
{
    bindFields();
}

Document::~Document() = default;

std::unique_ptr<PrintedDocument> Document::onPaper(Paper paper)
{
    readAll(); // Both documents share the rows, so neither may reload them later.
    return std::make_unique<Document>(design_, sections_, rows_, paper);
}

QString Document::title() const
{
    QString title = design_.documentWord.toString();
    for (const Section& section : sections_) {
        for (const Control& control : section.controls()) {
            if (control.design().name == design_.documentNumberLabel)
                title += u' ' + control.Caption();
        }
    }
    return fileTitle(title);
}

void Document::bindFields()
{
    for (const Section& section : sections_) {
        std::vector<int>& ordinals = ordinals_.emplace_back();
        for (const Control& control : section.controls()) {
            int ordinal = -1;
            if (control.design().kind == Kind::Field) {
                ordinal = rows_->ordinalOf(control.design().text.toString());
                if (ordinal < 0)
                    throw RunTimeError(runtime::ItemNotFound);
            }
            ordinals.push_back(ordinal);
        }
    }
}

int Document::blockCount() const
{
    return rows_->rowCount();
}

bool Document::isWhole() const
{
    return rows_->rowsAtHand() == rows_->rowCount();
}

bool Document::hasPage(int index) const
{
    const int end = pagination_.firstBlock(index) + pagination_.blocksOn(index, blockCount());
    return isWhole() || end <= rows_->rowsAtHand();
}

bool Document::readAll()
{
    if (!rows_->readAll())
        return false;
    keptPages_.clear();
    return true;
}

std::shared_ptr<const Page> Document::page(int index)
{
    if (!hasPage(index))
        readAll();
    const auto found = std::find_if(keptPages_.begin(), keptPages_.end(),
                                    [&](const auto& page) { return page->index == index; });
    if (found != keptPages_.end())
        return *found;
    std::shared_ptr<const Page> made = makePage(index);
    if (keptPages_.size() == keptPageCount)
        keptPages_.pop_front();
    keptPages_.push_back(made);
    return made;
}

std::shared_ptr<const Page> Document::makePage(int index)
{
    const int blocks = pagination_.blocksOn(index, blockCount());
    const auto rows =
        blocks == 0 ? std::vector<Row>() : rows_->rows(pagination_.firstBlock(index), blocks);
    auto page = std::make_shared<Page>();
    page->index = index;
    for (const Section& section : sections_) {
        switch (section.design().role) {
        case Role::PageHeader:
            page->bands.push_back(band(section, pagination_.headerTop(), index, {}));
            break;
        case Role::Detail:
            for (int i = 0; i < static_cast<int>(rows.size()); ++i)
                page->bands.push_back(band(section, pagination_.blockTop(i), index,
                                           rows[static_cast<std::size_t>(i)]));
            break;
        case Role::PageFooter:
            page->bands.push_back(band(section, pagination_.footerTop(), index, {}));
            break;
        case Role::ReportHeader:
        case Role::ReportFooter:
            break;
        }
    }
    return page;
}

Band Document::band(const Section& section, int top, int pageIndex, const Row& row) const
{
    const auto& ordinals = ordinals_[static_cast<std::size_t>(&section - sections_.data())];
    Band band{section.design().role, {}};
    band.controls.reserve(ordinals.size());
    for (std::size_t i = 0; i < ordinals.size(); ++i) {
        const Control& control = section.controls()[i];
        const QPoint corner(pagination_.left() + control.design().left, top + control.design().top);
        band.controls.push_back({&control, corner, textOf(control, ordinals[i], pageIndex, row)});
    }
    return band;
}

QString Document::textOf(const Control& control, int ordinal, int pageIndex, const Row& row) const
{
    if (ordinal >= 0)
        return row.empty() ? QString() : valueText(row[static_cast<std::size_t>(ordinal)]);
    const QString& caption = control.Caption();
    // Only captions in the design contain placeholders, such as "%p" for the page number. A caption
    // that was set at run time is shown unchanged, even if it is "%p".
    if (control.isCaptionSet())
        return caption;
    if (caption == u"%p")
        return QString::number(pageIndex + 1);
    if (caption == u"%P")
        return QString::number(pageCount());
    if (caption == u"%d")
        return runtime::toShortDate(runtime::Today());
    return caption;
}

void Document::paintPage(const Page& page, QPainter& painter) noexcept
{
    ink_->draw(page, painter);
}

} // namespace report
