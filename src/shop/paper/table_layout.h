#pragma once

#include "shop/paper/flow.h"

namespace shop::paper {

struct Column
{
    QString title;
    int width;
    report::Align align = report::Align::Centre;
};

/// A table with columns from right to left. The last column holds a list of items, which continues
/// on further lines. The headings are repeated on each sheet.
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

private:
    void headings();
    void cells(const QStringList& texts, int top, int height, bool bold, Fill fill);

    Flow& flow_;
    const std::vector<Column>& columns_;
};

} // namespace shop::paper
