#pragma once

#include "shop/paper/sheet.h"
#include "shop/pieces.h"

#include <functional>

namespace shop::paper {

/// The sizes of the heading above a group and of the facts below it.
inline constexpr double groupPoints = 13;
inline constexpr double factPoints = 11;

/// Places blocks one below the other on A4 sheets. Each sheet begins with the document's title and
/// the numbers, dates and customers of its orders.
class Flow
{
public:
    Flow(const QString& title, const std::vector<OrderHead>& orders);

    static constexpr int left = 600;
    static constexpr int right = report::a4Portrait.width - 600;
    static constexpr int width = right - left;
    static constexpr int bottom = report::a4Portrait.height - 1000;

    /// Sets what every further sheet repeats below its head, such as the headings of a table.
    void repeatOnNewSheets(std::function<void()> headings) { headings_ = std::move(headings); }
    /// Starts a new sheet if less than this height is free.
    void require(int height);
    /// Reserves a height, on a new sheet if it does not fit, and returns its top edge.
    int take(int height);
    void skip(int height) { top_ += height; }
    void add(const TextItem& item) { sheets_.back().texts.push_back(item); }
    void add(const BoxItem& item) { sheets_.back().boxes.push_back(item); }
    /// Adds one line of text over the whole width.
    void line(const QString& text, double points, bool bold = false);
    /// Adds a text over the whole width, on as many lines as it needs.
    void paragraph(const QString& text, double points, bool bold = false);

    std::vector<Sheet> take() { return std::move(sheets_); }

private:
    void newSheet();

    QString title_;
    QStringList head_;
    std::vector<Sheet> sheets_;
    int top_ = 0;
    std::function<void()> headings_;
};

/// Adds "page x of y" to each A4 sheet.
void numberPages(std::vector<Sheet>& sheets);

/// Returns a font's line height, with some space.
int lineHeight(double points);

/// Breaks items separated by blanks into lines of at most this width.
QStringList brokenItems(const QStringList& items, double points, int width, bool bold = false);
/// Breaks a text at its blanks into lines of at most this width, and a very long word at any
/// character. Text between the marks U+2066 and U+2069 is never broken.
QStringList brokenText(const QString& text, double points, int width, bool bold = false);

/// Adds the faults in words, if there are any.
void addFaults(const std::vector<Fault>& faults, Flow& flow);

} // namespace shop::paper
