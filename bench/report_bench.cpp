// Benchmarks of the order report: drawing one page, exporting a thousand lines, and opening the
// preview. The time to open the preview must not depend on the number of lines.

#include "large_store.h"
#include "output/order_lines.h"
#include "output/order_report.h"
#include "output/query_rows.h"
#include "paired.h"
#include "platform/dao/connection.h"
#include "platform/report/doors.h"
#include "platform/report/export.h"
#include "platform/report/preview_pages.h"

#include <QApplication>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <map>

using namespace report;
using namespace Qt::StringLiterals;

namespace {

constexpr int manyLines = 1000;
constexpr int twipsPerInch = 1440;

/// Creates the given number of lines, alternating between ordinary, monoblock and door lines, each
/// with different sizes.
std::shared_ptr<RowSource> lines(int count)
{
    return std::make_shared<testsupport::MemoryRows>(
        testsupport::lineColumns(), count, [](int row) {
            const int number = row + 1;
            testsupport::Values line = row % 3 == 0   ? testsupport::ordinaryLine(number)
                                       : row % 3 == 1 ? testsupport::monoblockLine(number)
                                                      : testsupport::doorLine(number);
            for (const QString& size : {u"MyWidth"_s, u"MYHeight"_s, u"Mashkof_W"_s, u"Mashkof_H"_s,
                                        u"Kanaf_W"_s, u"Kanaf_H"_s, u"Glass_W"_s, u"Glass_H"_s})
                line[size] = line[size].toDouble() + row * 0.25;
            return testsupport::lineRow(line);
        });
}

std::unique_ptr<Document> document(int count)
{
    auto sections = makeSections(output::orderReportDesign);
    sections[1].Controls(u"LabelOrder_Num"_s).setCaption(u"17"_s);
    return std::make_unique<Document>(output::orderReportDesign, std::move(sections), lines(count),
                                      a4Portrait);
}

void preparePdf(QPdfWriter& writer)
{
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(twipsPerInch);
}

void writeReport()
{
    const auto report = document(manyLines);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (writePdf(*report, allPages(*report), buffer, [](int, int) { return true; }) !=
        Outcome::Done)
        qFatal("not written");
}

/// The baseline of the drawing benchmark: draws the texts, boxes and lines of the report directly
/// with QPainter, using fonts that are created only once.
class DrawnByHand
{
public:
    void drawPage(const Page& page, QPainter& painter)
    {
        for (const Band& band : page.bands) {
            for (const PrintedControl& printed : band.controls)
                draw(printed, painter);
        }
    }

private:
    void draw(const PrintedControl& printed, QPainter& painter)
    {
        const ControlDesign& design = printed.control->design();
        const QRectF place(printed.corner, QSizeF(design.width, design.height));
        if (design.kind == Kind::Line) {
            painter.drawLine(place.topLeft(), place.bottomRight());
        } else if (!printed.text.isEmpty()) {
            painter.setFont(font(design));
            painter.drawText(place.adjusted(0, 0, 0, 300), printed.text, option(design));
        }
        if ((design.style & Style::Boxed) != 0)
            painter.drawRect(place);
    }

    const QFont& font(const ControlDesign& design)
    {
        QFont& font = fonts_[{design.points, design.style & (Style::Bold | Style::Underlined)}];
        if (font.family() != u"David"_s) {
            font.setFamily(u"David"_s);
            font.setPixelSize(qRound(design.points * 20));
            font.setBold((design.style & Style::Bold) != 0);
            font.setUnderline((design.style & Style::Underlined) != 0);
            font.setHintingPreference(QFont::PreferNoHinting);
        }
        return font;
    }

    static QTextOption option(const ControlDesign& design)
    {
        const Qt::Alignment alignment = design.align == Align::Left    ? Qt::AlignLeft
                                        : design.align == Align::Right ? Qt::AlignRight
                                                                       : Qt::AlignHCenter;
        QTextOption option(alignment | Qt::AlignAbsolute);
        option.setWrapMode(QTextOption::NoWrap);
        option.setTextDirection((design.style & Style::RightToLeft) != 0 ? Qt::RightToLeft
                                                                         : Qt::LeftToRight);
        return option;
    }

    std::map<std::pair<double, int>, QFont> fonts_;
};

void drawByHand()
{
    const auto report = document(manyLines);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    preparePdf(writer);
    QPainter painter(&writer);
    painter.setPen(QPen(Qt::black, 15));
    DrawnByHand byHand;
    for (int page = 0; page < report->pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        byHand.drawPage(*report->page(page), painter);
    }
}

/// Returns the report's texts as one HTML table for a QTextDocument.
QString htmlTable(Document& report)
{
    QString html = u"<table border=\"1\" dir=\"rtl\">"_s;
    for (int page = 0; page < report.pageCount(); ++page) {
        for (const Band& band : report.page(page)->bands) {
            html += u"<tr>"_s;
            int cells = 0;
            for (const PrintedControl& printed : band.controls) {
                if (printed.text.isEmpty())
                    continue;
                html += u"<td>"_s + printed.text.toHtmlEscaped() + u"</td>"_s;
                if (++cells % 6 == 0)
                    html += u"</tr><tr>"_s;
            }
            html += u"</tr>"_s;
        }
    }
    return html + u"</table>"_s;
}

void printRichTextTable()
{
    const auto report = document(manyLines);
    QTextDocument table;
    table.setDefaultFont(QFont(u"David"_s, 12));
    table.setHtml(htmlTable(*report));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    preparePdf(writer);
    table.print(&writer);
}

/// Opens the preview of the report and paints its first page.
void openPreview(DataReport& report, const std::shared_ptr<RowSource>& rows)
{
    report.setDataSource(rows);
    report.Show();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* pages = window->findChild<PreviewPages*>())
            benchmark::DoNotOptimize(pages->viewport()->grab());
    }
}

void pdfAgainstDrawingByHand(benchmark::State& state)
{
    bench::runPaired(state, 1.3, writeReport, drawByHand);
}

void pdfAgainstARichTextTable(benchmark::State& state)
{
    bench::runPaired(state, 0.1, writeReport, printRichTextTable);
}

void firstPageOfTenThousandLinesAgainstTen(benchmark::State& state)
{
    DataReport report(output::orderReportDesign);
    const auto many = lines(10000);
    const auto few = lines(10);
    openPreview(report, few);
    bench::runPaired(
        state, 1.5, [&] { openPreview(report, many); }, [&] { openPreview(report, few); });
}

/// Returns the rows of a query for the lines of an order. The orders 1, 2 and 3 of the queried
/// store have 10,000, 10 and 80 lines.
std::shared_ptr<RowSource> storedLines(int order)
{
    static const auto store = [] {
        constexpr int mostLines = 10000;
        auto made = std::make_unique<testsupport::TemporaryStore>();
        bench::fillStore(*made, 3, mostLines);
        made->execute(u"DELETE FROM Cuts WHERE Order_Num = 2 AND NUM > 10"_s);
        made->execute(u"DELETE FROM Cuts WHERE Order_Num = 3 AND NUM > 80"_s);
        return made;
    }();
    ado::Connection connection;
    connection.Open(u"Data Source="_s + store->path());
    return output::rowsOf(connection.Execute(
        u"SELECT * FROM CUTS WHERE ORDER_NUM = %1 ORDER BY NUM ASC"_s.arg(order)));
}

/// Measures the time from the query for an order's lines to the painted first page of the report.
/// The order whose number is the benchmark's argument is compared with the order that has ten
/// lines.
void firstPageOfAStoredOrder(benchmark::State& state)
{
    DataReport report(output::orderReportDesign);
    openPreview(report, storedLines(2));
    bench::runPaired(
        state, 1.5, [&] { openPreview(report, storedLines(static_cast<int>(state.range(0)))); },
        [&] { openPreview(report, storedLines(2)); });
}

/// Measures the query alone, without the preview.
void executeTheQueryOfAStoredOrder(benchmark::State& state)
{
    storedLines(2);
    for ([[maybe_unused]] auto _ : state)
        storedLines(static_cast<int>(state.range(0)));
}

/// Draws one page at screen resolution.
void inkOnePage(benchmark::State& state)
{
    const auto report = document(4);
    QImage sheet(794, 1123, QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter painter(&sheet);
        painter.scale(1 / 15.0, 1 / 15.0);
        report->paintPage(0, painter);
    }
}

BENCHMARK(pdfAgainstDrawingByHand)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(pdfAgainstARichTextTable)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(firstPageOfTenThousandLinesAgainstTen)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(100);
BENCHMARK(firstPageOfAStoredOrder)
    ->Arg(1)
    ->Arg(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(100);
BENCHMARK(executeTheQueryOfAStoredOrder)->DenseRange(1, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(inkOnePage)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    paperDoor().replace([] { return a4Portrait; });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
