#include "shop/paper/table_layout.h"

#include "platform/runtime/direction_marks.h"

#include <algorithm>

namespace shop::paper {

namespace {

constexpr double cellPoints = 11;
constexpr int padding = 60;
/// Maximum number of text lines in a row of a table. A longer list continues in a further row,
/// which may be on the next sheet.
constexpr qsizetype linesPerRow = 20;

int textWidth(const Column& column)
{
    return column.width - 2 * padding;
}

} // namespace

TableLayout::TableLayout(Flow& flow, const std::vector<Column>& columns)
    : flow_(flow), columns_(columns)
{
    // A table starts on a new sheet unless the headings and a few rows fit on the present sheet.
    flow_.require(4 * lineHeight(cellPoints));
    headings();
    flow_.repeatOnNewSheets([this] { headings(); });
}

TableLayout::~TableLayout()
{
    flow_.repeatOnNewSheets({});
}

void TableLayout::headings()
{
    QStringList titles;
    for (const Column& each : columns_)
        titles.append(each.title);
    const int height = lineHeight(cellPoints) + padding;
    cells(titles, flow_.take(height), height, true, Fill::Medium);
}

void TableLayout::cells(const QStringList& texts, int top, int height, bool bold, Fill fill)
{
    int end = Flow::right;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Column& column = columns_[i];
        end -= column.width;
        flow_.add(BoxItem{{end, top, column.width, height}, fill});
        flow_.add(TextItem{{end + padding, top, textWidth(column), height},
                           texts[static_cast<qsizetype>(i)],
                           cellPoints,
                           bold,
                           column.align});
    }
}

void TableLayout::row(const QStringList& texts, const QStringList& items, bool bold)
{
    QStringList lines = brokenItems(items, cellPoints, textWidth(columns_.back()), bold);
    // A right-to-left mark is added to each line, because a line that contains only numbers would
    // be printed from left to right.
    for (QString& each : lines)
        each.prepend(runtime::rightToLeftMark);
    rowOfLines(texts, lines, bold);
}

void TableLayout::textRow(const QStringList& texts, const QString& text)
{
    QStringList lines;
    for (const QString& each : text.split(u'\n'))
        lines += brokenText(each, cellPoints, textWidth(columns_.back()));
    rowOfLines(texts, lines, false);
}

void TableLayout::rowOfLines(const QStringList& texts, const QStringList& lines, bool bold)
{
    const Column& last = columns_.back();
    const int height = lineHeight(cellPoints);
    QStringList shown;
    qsizetype lineCount = 1;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QStringList broken = brokenText(
            texts[i], cellPoints, textWidth(columns_[static_cast<std::size_t>(i)]), bold);
        shown.append(broken.join(u' '));
        lineCount = std::max(lineCount, broken.size());
    }
    shown.append(QString());
    for (qsizetype from = 0; from == 0 || from < lines.size(); from += linesPerRow) {
        const QStringList part = lines.mid(from, linesPerRow);
        const int rowHeight = height * static_cast<int>(std::max(lineCount, part.size())) + padding;
        const int top = flow_.take(rowHeight);
        cells(shown, top, rowHeight, bold, Fill::None);
        for (qsizetype i = 0; i < part.size(); ++i)
            flow_.add(
                TextItem{{Flow::left + padding, top + padding / 2 + static_cast<int>(i) * height,
                          textWidth(last), height},
                         part[i],
                         cellPoints,
                         bold,
                         last.align});
    }
}

} // namespace shop::paper
