// Fuzzes the order report: rows with any values that a damaged or foreign store may hold are laid
// out, painted and exported as text and HTML.

#include "fuzz/fuzz.h"

#include "output/order_report_design.h"
#include "platform/dao/engine/values.h"
#include "platform/report/export.h"
#include "platform/report/memory_rows.h"
#include "platform/report/report_text.h"
#include "platform/runtime/run_time_error.h"

#include <QBuffer>
#include <QDateTime>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QPainter>

#include <array>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using testsupport::MemoryRows;

namespace {

// One more row than a page takes.
constexpr int mostRows = 5;
constexpr int longestText = 60;

const std::array types{dao::dbText,   dao::dbText, dao::dbLong,   dao::dbInteger,
                       dao::dbDouble, dao::dbDate, dao::dbBoolean};

/// Returns a value that a column may hold, regardless of the column's type.
QVariant storedValue(fuzz::Input& input)
{
    switch (input.takeBelow(8)) {
    case 0:
        return {};
    case 1:
        return qlonglong{input.take<qint64>()};
    case 2:
        return input.take<double>();
    case 3:
        return double{input.take<qint16>() / 100.0};
    case 4:
        return QDate(2026, 3, 1).addDays(input.take<qint16>()).toString(Qt::ISODate);
    case 5: {
        QString text(input.takeBelow(longestText), Qt::Uninitialized);
        for (QChar& c : text)
            c = QChar(input.take<char16_t>());
        return text;
    }
    default:
        return input.takeText(input.takeBelow(longestText));
    }
}

/// Returns the value as the engine converts it, or Null if the engine rejects it.
QVariant fieldValue(fuzz::Input& input)
{
    const dao::FieldInfo field{
        .name = u"Field"_s,
        .type = types[static_cast<std::size_t>(input.takeBelow(int(types.size())))]};
    const QVariant stored = storedValue(input);
    try {
        return dao::fromStored(field, stored);
    } catch (const runtime::RunTimeError& error) {
        fuzz::require(error.number() == runtime::DataTypeConversion ||
                          error.number() == runtime::Overflow,
                      "a value is accepted or rejected with its error", stored.toString());
        return {};
    }
}

const QStringList& columns()
{
    static const QStringList names = [] {
        QStringList all;
        for (const report::ControlDesign& control :
             report::sectionOf(output::orderReportDesign, report::Role::Detail)->controls) {
            if (control.kind == report::Kind::Field)
                all.append(control.text.toString());
        }
        return all;
    }();
    return names;
}

std::unique_ptr<report::Document> documentOf(int count, const MemoryRows::MakeRow& makeRow)
{
    return std::make_unique<report::Document>(
        output::orderReportDesign, report::makeSections(output::orderReportDesign),
        std::make_shared<MemoryRows>(columns(), count, makeRow), report::a4Portrait);
}

/// Checks that any text is laid out on one line.
void checkText(const QString& text)
{
    const report::DisplayText display = report::displayText(text, true);
    for (const QChar c : display.text)
        fuzz::require(c.category() != QChar::Other_Control &&
                          c.category() != QChar::Separator_Line &&
                          c.category() != QChar::Separator_Paragraph,
                      "a text is laid on one line", text);
}

/// Checks that every block is printed once and lies completely between header and footer.
void checkPages(report::Document& document, int rows)
{
    const report::Pagination& places = document.pagination();
    const int height = report::sectionOf(output::orderReportDesign, report::Role::Detail)->height;
    int blocks = 0;
    for (int index = 0; index < document.pageCount(); ++index) {
        int onPage = 0;
        for (const report::Band& band : document.page(index)->bands) {
            if (band.role != report::Role::Detail)
                continue;
            const int top = places.blockTop(onPage++);
            for (const report::PrintedControl& each : band.controls) {
                const int y = each.corner.y();
                fuzz::require(y >= top && y + each.control->design().height <= top + height,
                              "a control lies inside its block", each.text);
                checkText(each.text);
            }
            fuzz::require(top + height <= places.footerTop(), "no block is split", {});
        }
        blocks += onPage;
    }
    fuzz::require(blocks == rows, "every row is printed as one block", QString::number(blocks));
}

void paint(report::Document& document)
{
    QImage sheet(240, 340, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.scale(double(sheet.width()) / report::a4Portrait.width,
                  double(sheet.height()) / report::a4Portrait.height);
    for (int index = 0; index < document.pageCount(); ++index)
        document.paintPage(index, painter);
}

template <typename Write>
QByteArray written(Write write, report::Document& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const report::Outcome outcome = write(document, buffer, [](int, int) { return true; });
    fuzz::require(outcome == report::Outcome::Done, "the report is written", {});
    return buffer.data();
}

/// Returns the exported files of `rows` rows without values. They are cached.
const std::pair<QByteArray, QByteArray>& plainFiles(int rows)
{
    static QHash<int, std::pair<QByteArray, QByteArray>> made;
    if (!made.contains(rows)) {
        const auto plain = documentOf(
            rows, [](int) { return MemoryRows::Row(static_cast<std::size_t>(columns().size())); });
        made.insert(rows, {written(report::writeText, *plain), written(report::writeHtml, *plain)});
    }
    return *made.constFind(rows);
}

/// Checks that the values do not change the structure of the exported files.
void checkFiles(report::Document& document, int rows)
{
    const auto& [plainText, plainHtml] = plainFiles(rows);
    const QByteArray text = written(report::writeText, document);
    for (const char* sign : {"\n\n", "\t", "\r", "\f", "\v"})
        fuzz::require(text.count(sign) == plainText.count(sign),
                      "an empty line after each block and nowhere else", QString::fromUtf8(text));
    // The kind is a text line of its own, which is omitted if the kind is empty.
    const qsizetype kindLines = text.count('\n') - plainText.count('\n');
    fuzz::require(kindLines >= 0 && kindLines <= rows, "a text line per line of the block",
                  QString::fromUtf8(text));
    for (const QChar::SpecialCharacter sign : {QChar::LineSeparator, QChar::ParagraphSeparator})
        fuzz::require(!QString::fromUtf8(text).contains(QChar(sign)),
                      "no text contains a line break", QString::fromUtf8(text));
    const QByteArray html = written(report::writeHtml, document);
    for (const char* element : {"<section", "</section>", "<div", "</div>", "<img", "<script"})
        fuzz::require(html.count(element) == plainHtml.count(element),
                      "the HTML has one element per control", QString::fromUtf8(html));
    const auto elements = [](const QByteArray& all) {
        return all.count('<') - all.count("<span dir=") - all.count("</span>");
    };
    fuzz::require(elements(html) == elements(plainHtml), "no value creates an HTML element",
                  QString::fromUtf8(html));
}

} // namespace

int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    QLocale::setDefault(QLocale::c());
    return 0;
}

/// The first byte is the number of rows, followed by the values.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const int count = input.takeBelow(mostRows + 1);
    std::vector<MemoryRows::Row> rows(static_cast<std::size_t>(count));
    for (MemoryRows::Row& row : rows) {
        for (qsizetype i = 0; i < columns().size(); ++i)
            row.push_back(fieldValue(input));
    }
    const auto document =
        documentOf(count, [&rows](int row) { return rows[static_cast<std::size_t>(row)]; });
    checkPages(*document, count);
    paint(*document);
    checkFiles(*document, count);
    return 0;
}
