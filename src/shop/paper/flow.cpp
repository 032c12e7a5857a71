#include "shop/paper/flow.h"

#include "platform/report/shaped_text.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/direction_marks.h"
#include "shop/paper/sheet_ink.h"
#include "shop/paper/words.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

constexpr int topMargin = 600;
constexpr double titlePoints = 18;
constexpr double headPoints = 11;
constexpr double faultPoints = 10;
constexpr qsizetype namedOrders = 6;

/// The smallest fraction of its usual width that a word can get by condensing it and reducing its
/// size. A word that is still too wide is split.
constexpr double narrowest = report::narrowestStretch * report::smallestSize / 10000.0;

/// Returns the texts without duplicates, separated by commas. If there are many, returns the first
/// ones and the number of the others.
QString listed(QStringList texts)
{
    texts.removeDuplicates();
    texts.removeAll(QString());
    const qsizetype others = texts.size() - namedOrders;
    if (others <= 0)
        return texts.join(u", "_s);
    return texts.first(namedOrders).join(u", "_s) + u" ועוד %1"_s.arg(others);
}

/// Returns the texts that are printed side by side below the title of a sheet: the numbers, dates
/// and customers of the orders.
QStringList headOf(const std::vector<OrderHead>& orders)
{
    QStringList numbers;
    QStringList dates;
    QStringList customers;
    for (const OrderHead& each : orders) {
        numbers.append(QString::number(each.number));
        dates.append(each.date.isValid() ? runtime::toShortDate(each.date) : QString());
        customers.append(each.customer.simplified());
    }
    const QString word = orders.size() == 1 ? u"הזמנה: "_s : u"הזמנות: "_s;
    return {word + listed(numbers), u"תאריך: "_s + listed(dates), u"לקוח: "_s + listed(customers)};
}

/// Splits a text at blanks. A formula between the marks of a left-to-right isolate is one word,
/// because its parts would be in the wrong order if they were separated.
QStringList wordsOf(const QString& text)
{
    QStringList words;
    QString word;
    bool isIsolated = false;
    for (const QChar each : text) {
        isIsolated =
            each == runtime::leftToRightIsolate || (isIsolated && each != runtime::popIsolate);
        if (each != u' ' || isIsolated)
            word += each;
        else if (!word.isEmpty())
            words.append(std::exchange(word, {}));
    }
    if (!word.isEmpty())
        words.append(word);
    return words;
}

/// Splits a word that is too wide even if it is condensed as far as possible. Each part fits into
/// the width.
QStringList wordPieces(const QString& word, const QFont& font, int width)
{
    QStringList pieces{QString()};
    for (const QChar each : word) {
        if (!pieces.back().isEmpty() &&
            report::textWidth(pieces.back() + each, false, font) > width)
            pieces.append(QString());
        pieces.back() += each;
    }
    return pieces;
}

} // namespace

int lineHeight(double points)
{
    return static_cast<int>(points * 27);
}

QStringList brokenItems(const QStringList& items, double points, int width, bool bold)
{
    const QFont font = report::twipFont(paperFamily(), points, bold);
    const double blank = report::textWidth(u"0"_s, false, font);
    QStringList lines;
    double used = 0;
    for (const QString& each : items) {
        const double own = report::textWidth(each, false, font);
        if (lines.isEmpty() || used + blank + own > width) {
            lines.append(each);
            used = own;
        } else {
            lines.back() += u' ' + each;
            used += blank + own;
        }
    }
    return lines;
}

QStringList brokenText(const QString& text, double points, int width, bool bold)
{
    const QFont font = report::twipFont(paperFamily(), points, bold);
    QStringList words;
    for (const QString& each : wordsOf(text)) {
        if (report::textWidth(each, false, font) * narrowest <= width)
            words.append(each);
        else
            words.append(wordPieces(each, font, width));
    }
    return brokenItems(words, points, width, bold);
}

Flow::Flow(const QString& title, const std::vector<OrderHead>& orders)
    : title_(title), head_(headOf(orders))
{
    newSheet();
}

void Flow::newSheet()
{
    sheets_.emplace_back();
    top_ = topMargin;
    line(title_, titlePoints, true);
    const int third = width / 3;
    int end = right;
    int lowest = top_;
    for (int i = 0; i < 3; ++i) {
        const int wide = i == 2 ? third + third / 2 : third - third / 4;
        const int available = wide - 100;
        const QStringList lines = brokenText(head_[i], headPoints, available, true);
        const int height = lineHeight(headPoints) * static_cast<int>(lines.size());
        add(TextItem{
            {end - available, top_, available, height}, lines.join(u' '), headPoints, true});
        lowest = std::max(lowest, top_ + height);
        end -= wide;
    }
    top_ = lowest + 60;
    add(BoxItem{{left, top_, width, 1}});
    top_ += 120;
}

void Flow::require(int height)
{
    if (top_ + height <= bottom)
        return;
    newSheet();
    if (headings_)
        headings_();
}

int Flow::take(int height)
{
    require(height);
    top_ += height;
    return top_ - height;
}

void Flow::line(const QString& text, double points, bool bold)
{
    const int height = lineHeight(points);
    const int top = take(height);
    add(TextItem{{left, top, width, height}, text, points, bold});
}

void Flow::paragraph(const QString& text, double points, bool bold)
{
    for (const QString& each : brokenText(text, points, width, bold))
        line(each, points, bold);
}

void numberPages(std::vector<Sheet>& sheets)
{
    int number = 0;
    for (Sheet& each : sheets)
        each.texts.push_back({{Flow::left, Flow::bottom + 150, Flow::width, 300},
                              u"דף %1 מתוך %2"_s.arg(++number).arg(sheets.size()),
                              headPoints,
                              false,
                              report::Align::Centre});
}

void addFaults(const std::vector<Fault>& faults, Flow& flow)
{
    if (faults.empty())
        return;
    flow.line(u"לא ניתן לחתוך, ולא נכלל בתוכנית:"_s, headPoints, true);
    for (const Fault& each : faults)
        flow.paragraph(faultWords(each), faultPoints);
    flow.skip(150);
}

} // namespace shop::paper
