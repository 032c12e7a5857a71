#include "shop/paper/labels.h"

#include "platform/runtime/twips.h"
#include "shop/paper/flow.h"
#include "shop/paper/qr_code.h"
#include "shop/paper/words.h"

#include <cmath>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

constexpr int labelsAcross = 3;
constexpr int labelsDown = 8;
constexpr int margin = 220;
constexpr int codeSide = 1500;

struct TextLine
{
    QString text;
    double points;
    bool bold;
};

/// Returns the side of a code whose modules are whole dots of the printer.
double sideOf(int modules, LabelPaper paper)
{
    const double dot =
        double(runtime::twipsPerInch) / (paper == LabelPaper::Printer300 ? 300 : 203);
    return std::floor(codeSide / (modules * dot)) * modules * dot;
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

/// Adds the code at the left and the texts to its right.
void addLabel(const Piece& piece, const QString& code, const QString& customer, const QRect& place,
              LabelPaper paper, Sheet& sheet)
{
    const QImage picture = qrCode(code);
    const double side = sideOf(picture.width(), paper);
    sheet.codes.push_back(
        {{place.left() + margin + 60.0, place.top() + margin + 60.0, side, side}, picture});
    sheet.texts.push_back(
        {{place.left() + margin, place.top() + margin + codeSide + 60, codeSide, 220},
         code,
         8,
         false,
         report::Align::Centre,
         false});
    const TextLine lines[] = {
        {u"הזמנה %1 שורה %2"_s.arg(piece.order).arg(piece.line), 11, true},
        {customer, 10, false},
        {u"%1, %2"_s.arg(partWord(piece.group.part), sideWord(piece.side)), 11, true},
        {numberText(piece.length), 17, true},
        {kindWord(piece.group.profile), 10, false},
        {piece.group.colour, 10, false},
    };
    const int left = place.left() + margin + codeSide + 160;
    int top = place.top() + margin;
    for (const TextLine& each : lines) {
        const int height = static_cast<int>(each.points * 25);
        sheet.texts.push_back({{left, top, place.left() + place.width() - margin - left, height},
                               each.text,
                               each.points,
                               each.bold});
        top += height;
    }
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
    std::vector<Sheet> sheets;
    if (!pack.pieces.faults.empty() && paper == LabelPaper::A4) {
        Flow flow(u"מדבקות"_s, pack.orders);
        addFaults(pack.pieces.faults, flow);
        sheets = flow.take();
    }
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
