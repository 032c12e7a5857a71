#include "shop/paper/sheet_document.h"

#include "platform/report/export.h"
#include "platform/runtime/run_time_error.h"

#include <QBuffer>

#include <deque>

namespace shop::paper {

namespace {

/// Contains the texts of a sheet as report controls, because the search of the preview reads only
/// report controls.
struct TextPage : report::Page
{
    std::deque<report::ControlDesign> designs;
    std::deque<report::Control> controls;

    void add(const TextItem& item, report::Band& band)
    {
        designs.push_back({report::Kind::Label, u"", u"", item.place.left(), item.place.top(),
                           item.place.width(), item.place.height()});
        controls.emplace_back(designs.back());
        band.controls.push_back({&controls.back(), item.place.topLeft(), item.text});
    }
};

} // namespace

SheetDocument::SheetDocument(QString title, report::Paper paper, std::vector<Sheet> sheets)
    : title_(report::fileTitle(std::move(title))), paper_(paper), sheets_(std::move(sheets))
{
}

std::unique_ptr<report::PrintedDocument> SheetDocument::onPaper(report::Paper paper)
{
    if (paper.width < paper_.width || paper.height < paper_.height)
        throw runtime::RunTimeError(runtime::InvalidProcedureCall);
    return std::make_unique<SheetDocument>(title_, paper, sheets_);
}

std::shared_ptr<const report::Page> SheetDocument::page(int index)
{
    auto page = std::make_shared<TextPage>();
    page->index = index;
    report::Band band{report::Role::Detail, {}};
    for (const TextItem& item : sheets_[static_cast<std::size_t>(index)].texts)
        page->add(item, band);
    page->bands.push_back(std::move(band));
    return page;
}

void SheetDocument::paintPage(const report::Page& page, QPainter& painter) noexcept
{
    ink_.draw(sheets_[static_cast<std::size_t>(page.index)], painter);
}

QByteArray pdfOf(report::PrintedDocument& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const report::Outcome outcome = report::writePdf(document, report::allPages(document), buffer,
                                                     [](int, int) { return true; });
    if (outcome != report::Outcome::Done)
        throw runtime::RunTimeError(runtime::DiskOrNetworkError);
    return buffer.data();
}

} // namespace shop::paper
