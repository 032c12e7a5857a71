#pragma once

#include "shop/paper/flow.h"

namespace shop::paper {

struct Column
{
    QString title;
    int width;
    report::Align align = report::Align::Centre;
};

/// A table with columns from right to left. Each row is as high as its texts need. The last column
/// holds a list of items or a text, which continues in a further row if it is very long. The
/// headings are repeated on each sheet.
class TableLayout
{
public:
    /// Both must outlive the table. The widths of the columns are together Flow::width.
    TableLayout(Flow& flow, const std::vector<Column>& columns);
    ~TableLayout();
    TableLayout(const TableLayout&) = delete;
    TableLayout& operator=(const TableLayout&) = delete;

    /// Adds a row. It has one cell for each column but the last, and the items of the last one.
    void row(const QStringList& cells, const QStringList& items, bool bold = false);
    /// Adds a row whose last cell is a text. Each of its paragraphs begins on a line of its own.
    void textRow(const QStringList& cells, const QString& text);

private:
    void headings();
    void rowOfLines(const QStringList& cells, const QStringList& lines, bool bold);
    void cells(const QStringList& texts, int top, int height, bool bold, Fill fill);

    Flow& flow_;
    const std::vector<Column>& columns_;
};

} // namespace shop::paper
