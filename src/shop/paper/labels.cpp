#include "shop/paper/labels.h"

#include "platform/runtime/twips.h"
#include "shop/paper/flow.h"
#include "shop/paper/qr_code.h"
#include "shop/paper/words.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

constexpr int labelsAcross = 3;
constexpr int labelsDown = 8;
constexpr int freeEdge = 60;    ///< The free edge of the label at the top, the bottom and the left.
constexpr int margin = 200;     ///< The free edge around the texts.
constexpr int codePlace = 1600; ///< The side of the square for the code with its quiet zone.
/// The width of the empty margin (quiet zone) that a scanner needs around a QR code, in modules of
/// the code.
constexpr int quietModules = 4;
constexpr double pointsHeight = 25; ///< The height of a line, in twips for each point of its size.
constexpr double longTextPoints = 8;
constexpr double faultTextPoints = 10;

/// A text on a label and the number of lines that are reserved for the text.
struct LabelText
{
    QString text;
    double points;
    bool bold = false;
    int lines = 1;

    double height() const { return points * pointsHeight * lines; }
};

/// Returns the width in twips of one module of a QR code. The width is a whole number of the
/// printer's dots.
double moduleOf(int modules, LabelPaper paper)
{
    const double dot =
        double(runtime::twipsPerInch) / (paper == LabelPaper::Printer300 ? 300 : 203);
    return std::floor(codePlace / ((modules + 2 * quietModules) * dot)) * dot;
}

QRect labelPlace(int index, LabelPaper paper)
{
    if (paper != LabelPaper::A4)
        return {0, 0, labelPaper.width, labelPaper.height};
    const int column = index % labelsAcross;
    const int row = index / labelsAcross;
    const report::Paper sheet = report::a4Portrait;
    const int right = sheet.width - column * sheet.width / labelsAcross;
    const int left = sheet.width - (column + 1) * sheet.width / labelsAcross;
    const int top = row * sheet.height / labelsDown;
    return {left, top, right - left, (row + 1) * sheet.height / labelsDown - top};
}

/// Returns a text that the user has entered, with its font size and number of lines on a label. A
/// text that is too long for one line gets two lines in a smaller font.
LabelText userText(const QString& text, int width)
{
    constexpr double points = 10;
    const bool isShort = brokenText(text, points, width).size() <= 1;
    return isShort ? LabelText{text, points} : LabelText{text, longTextPoints, false, 2};
}

/// Adds the texts one below the other from the top of the rectangle. All texts are reduced in size
/// if they do not fit.
void addTexts(const std::vector<LabelText>& texts, const QRect& place, Sheet& sheet)
{
    double sum = 0;
    for (const LabelText& each : texts)
        sum += each.height();
    const double scale = std::min(1.0, place.height() / sum);
    double top = place.top();
    for (const LabelText& each : texts) {
        const double height = each.height() * scale;
        sheet.texts.push_back(
            {{place.left(), static_cast<int>(top), place.width(), static_cast<int>(height)},
             each.text,
             each.points * scale,
             each.bold});
        top += height;
    }
}

/// Adds the QR code at the left of the label, and the text of the code below it.
void addCode(const QString& code, const QRect& place, LabelPaper paper, Sheet& sheet)
{
    const QImage picture = qrCode(code);
    const double side = moduleOf(picture.width(), paper) * picture.width();
    const double inset = freeEdge + (codePlace - side) / 2;
    sheet.codes.push_back({{place.left() + inset, place.top() + inset, side, side}, picture});
    sheet.texts.push_back(
        {{place.left() + freeEdge, place.top() + freeEdge + codePlace, codePlace, 200},
         code,
         8,
         false,
         report::Align::Centre,
         false});
}

void addLabel(const Piece& piece, const QString& code, const QString& customer, const QRect& place,
              LabelPaper paper, Sheet& sheet)
{
    addCode(code, place, paper, sheet);
    const int width = place.width() - freeEdge - codePlace - margin;
    const QRect room(place.left() + freeEdge + codePlace, place.top() + margin, width,
                     place.height() - 2 * margin);
    std::vector<LabelText> texts{
        {u"הזמנה %1 שורה %2"_s.arg(piece.order).arg(piece.line), 11, true},
        userText(customer, width),
        {u"%1, %2"_s.arg(partWord(piece.group.part), sideWord(piece.side)), 11, true},
        {computedNumber(piece.length), 17, true},
        userText(kindWord(piece.group.profile), width),
        userText(piece.group.colour, width)};
    std::erase_if(texts, [](const LabelText& each) { return each.text.trimmed().isEmpty(); });
    addTexts(texts, room, sheet);
}

/// Returns a page for a label printer with the reason why some pieces or panes cannot be cut.
Sheet faultLabel(const Fault& fault)
{
    const QRect room(margin, margin, labelPaper.width - 2 * margin, labelPaper.height - 2 * margin);
    const QStringList lines = brokenText(faultWords(fault), faultTextPoints, room.width());
    Sheet sheet;
    addTexts({{u"לא ניתן לחתוך"_s, 12, true},
              {faultWords(fault), faultTextPoints, false, static_cast<int>(lines.size())}},
             room, sheet);
    return sheet;
}

/// Returns the sheets that say which pieces or panes cannot be cut and why.
std::vector<Sheet> faultSheets(const ShopPack& pack, LabelPaper paper)
{
    const std::vector<Fault>& faults = pack.pieces.faults;
    if (faults.empty())
        return {};
    if (paper == LabelPaper::A4) {
        Flow flow(u"מדבקות"_s, pack.orders);
        addFaults(faults, flow);
        return flow.take();
    }
    std::vector<Sheet> sheets;
    std::ranges::transform(faults, std::back_inserter(sheets), faultLabel);
    return sheets;
}

std::map<int, QString> customersOf(const std::vector<OrderHead>& orders)
{
    std::map<int, QString> customers;
    for (const OrderHead& each : orders)
        customers[each.number] = each.customer.simplified();
    return customers;
}

} // namespace

report::Paper paperOf(LabelPaper paper)
{
    return paper == LabelPaper::A4 ? report::a4Portrait : labelPaper;
}

QStringList labelCodes(const std::vector<Piece>& pieces)
{
    QStringList codes;
    std::map<std::tuple<int, int, Part>, int> counts;
    for (const Piece& each : pieces) {
        const int number = ++counts[{each.order, each.line, each.group.part}];
        codes.append(u"%1-%2-%3-%4"_s.arg(each.order)
                         .arg(each.line)
                         .arg(partName(each.group.part))
                         .arg(number));
    }
    return codes;
}

std::vector<Sheet> labelSheets(const ShopPack& pack, LabelPaper paper)
{
    std::vector<Sheet> sheets = faultSheets(pack, paper);
    const int perSheet = paper == LabelPaper::A4 ? labelsAcross * labelsDown : 1;
    const std::map<int, QString> customers = customersOf(pack.orders);
    const QStringList codes = labelCodes(pack.pieces.pieces);
    for (qsizetype i = 0; i < codes.size(); ++i) {
        const int index = static_cast<int>(i % perSheet);
        if (index == 0)
            sheets.emplace_back();
        const Piece& piece = pack.pieces.pieces[static_cast<std::size_t>(i)];
        const auto customer = customers.find(piece.order);
        addLabel(piece, codes[i], customer == customers.end() ? QString() : customer->second,
                 labelPlace(index, paper), paper, sheets.back());
    }
    if (sheets.empty())
        sheets.emplace_back();
    return sheets;
}

} // namespace shop::paper
