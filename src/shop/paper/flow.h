#pragma once

#include "shop/paper/sheet.h"
#include "shop/pieces.h"

#include <functional>

namespace shop::paper {

/// The font sizes, in points, of the heading of a group of pieces and of the figures below the
/// heading.
inline constexpr double groupPoints = 13;
inline constexpr double factPoints = 11;

/// Places texts and boxes one below the other on A4 sheets. Each sheet begins with the title of the
/// document and with the numbers, dates and customers of its orders.
class Flow
{
public:
    Flow(const QString& title, const std::vector<OrderHead>& orders);

    static constexpr int left = 600;
    static constexpr int right = report::a4Portrait.width - 600;
    static constexpr int width = right - left;
    static constexpr int bottom = report::a4Portrait.height - 1000;

    /// Sets the function that adds the headings, such as those of a table, at the top of each
    /// further sheet.
    void repeatOnNewSheets(std::function<void()> headings) { headings_ = std::move(headings); }
    /// Starts a new sheet if the free height of the current sheet is less than `height`, in twips.
    void require(int height);
    /// Reserves an area of the given height and returns its top edge, in twips. If the area does
    /// not fit on the current sheet, it is on a new sheet.
    int take(int height);
    void skip(int height) { top_ += height; }
    void add(const TextItem& item) { sheets_.back().texts.push_back(item); }
    void add(const BoxItem& item) { sheets_.back().boxes.push_back(item); }
    /// Adds one line of text that is as wide as the printable area of the sheet.
    void line(const QString& text, double points, bool bold = false);
    /// Adds a text that is as wide as the printable area of the sheet, on as many lines as needed.
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

/// Returns the height of a text line, in twips, for a font size in points. The height includes some
/// space between lines.
int lineHeight(double points);

/// Joins the items with blanks into lines that are at most `width` twips wide. An item is never
/// split, so a wider item is a line of its own.
QStringList brokenItems(const QStringList& items, double points, int width, bool bold = false);
/// Breaks a text at its blanks into lines that are at most `width` twips wide. A wider word is
/// condensed, or broken at any character if it still does not fit. Blanks between U+2066 and
/// U+2069, the marks around a left-to-right text, are not used for breaking.
QStringList brokenText(const QString& text, double points, int width, bool bold = false);

/// Prints a sentence about each fault, that is a reason why pieces or panes cannot be made.
void addFaults(const std::vector<Fault>& faults, Flow& flow);

} // namespace shop::paper
