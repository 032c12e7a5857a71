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
/// contains a list of items or a text. A very long list or text continues in a further row. The
/// headings are repeated on each sheet.
class TableLayout
{
public:
    /// The objects `flow` and `columns` must outlive the table. The sum of the columns' widths must
    /// be Flow::width.
    TableLayout(Flow& flow, const std::vector<Column>& columns);
    ~TableLayout();
    TableLayout(const TableLayout&) = delete;
    TableLayout& operator=(const TableLayout&) = delete;

    /// Adds a row. `cells` contains one text for each column except the last one, `items` contains
    /// the items of the last column.
    void row(const QStringList& cells, const QStringList& items, bool bold = false);
    /// Adds a row with a text in the last column. Each paragraph of the text begins on a new line.
    void textRow(const QStringList& cells, const QString& text);

private:
    void headings();
    void rowOfLines(const QStringList& cells, const QStringList& lines, bool bold);
    void cells(const QStringList& texts, int top, int height, bool bold, Fill fill);

    Flow& flow_;
    const std::vector<Column>& columns_;
};

} // namespace shop::paper
