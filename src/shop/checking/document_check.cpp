#include "shop/checking/plan_check.h"
#include "shop/csv.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <variant>

using namespace Qt::StringLiterals;

namespace shop::checking {

namespace {

constexpr double noiseOfLengths = 1e-9;

/// An expected number that is computed from other numbers. Its last digits depend on the order of
/// the operations, so a small difference is accepted.
struct Computed
{
    double value = 0;
};
using ExpectedCell = std::variant<QString, double, Computed>;

struct ExpectedTable
{
    QStringList heading;
    std::vector<std::vector<ExpectedCell>> rows;
};

bool isEqual(const QString& found, const ExpectedCell& expected)
{
    if (const auto* text = std::get_if<QString>(&expected))
        return found == *text || (found.startsWith(u'\'') && textCell(*text) == found);
    bool isNumber = false;
    const double number = found.toDouble(&isNumber);
    if (const auto* exact = std::get_if<double>(&expected))
        return isNumber && number == *exact;
    // A computed number in a document is rounded to nine decimals, so a small difference from the
    // expected number is accepted.
    const double wanted = std::get<Computed>(expected).value;
    return isNumber && std::abs(number - wanted) <= noiseOfLengths + 1e-12 * std::abs(wanted);
}

/// Compares a CSV document with the expected rows. Returns only the first difference, because after
/// a missing row all later rows differ as well.
QStringList compareRows(const QString& name, const QByteArray& file, const ExpectedTable& expected)
{
    const QList<QStringList> rows = readCsv(file).value_or(QList<QStringList>());
    if (rows.isEmpty() || rows.front() != expected.heading)
        return {u"%1: the heading is wrong"_s.arg(name)};
    for (std::size_t i = 0; i < expected.rows.size(); ++i) {
        const qsizetype row = static_cast<qsizetype>(i) + 1;
        if (row >= rows.size())
            return {u"%1: there are only %2 rows instead of %3"_s.arg(name)
                        .arg(rows.size() - 1)
                        .arg(expected.rows.size())};
        for (std::size_t cell = 0; cell < expected.rows[i].size(); ++cell) {
            const qsizetype column = static_cast<qsizetype>(cell);
            const QString found = rows[row].value(column);
            if (!isEqual(found, expected.rows[i][cell]))
                return {u"%1: row %2: the %3 '%4' is wrong"_s.arg(name).arg(row + 1).arg(
                    expected.heading[column], found)};
        }
    }
    if (rows.size() - 1 > static_cast<qsizetype>(expected.rows.size()))
        return {u"%1: there are %2 rows instead of %3"_s.arg(name)
                    .arg(rows.size() - 1)
                    .arg(expected.rows.size())};
    return {};
}

std::vector<ExpectedCell> groupCells(const QJsonObject& group)
{
    return {group["part"_L1].toString(), group["profile"_L1].toString(),
            group["colour"_L1].toString()};
}

/// Maps each size to the greatest size that differs from it only by floating-point noise, so that
/// such sizes count as one.
std::map<double, double> representatives(const std::set<double>& sizes)
{
    std::map<double, double> result;
    double greatest = 0;
    for (const double each : std::vector<double>(sizes.rbegin(), sizes.rend())) {
        if (result.empty() || greatest - each >= noiseOfLengths)
            greatest = each;
        result[each] = greatest;
    }
    return result;
}

QString lineName(const std::pair<int, int>& line)
{
    return u"%1-%2"_s.arg(line.first).arg(line.second);
}

/// The number of pieces of one length in a group of pieces, and the order lines to which they
/// belong.
struct Cuts
{
    int count = 0;
    std::set<std::pair<int, int>> lines;
};
using CutsByLength = std::map<double, Cuts, std::greater<>>;

CutsByLength cutsOf(const QJsonObject& group)
{
    std::vector<QJsonObject> pieces;
    std::set<double> lengths;
    for (const QJsonValue bars : group["bars"_L1].toArray()) {
        for (const QJsonValue piece : bars["pieces"_L1].toArray()) {
            pieces.push_back(piece.toObject());
            lengths.insert(piece["length"_L1].toDouble());
        }
    }
    const std::map<double, double> greatest = representatives(lengths);
    CutsByLength cuts;
    for (const QJsonObject& each : pieces) {
        Cuts& same = cuts[greatest.at(each["length"_L1].toDouble())];
        ++same.count;
        same.lines.emplace(each["order"_L1].toInt(), each["line"_L1].toInt());
    }
    return cuts;
}

ExpectedTable expectedCutList(const QJsonObject& plan)
{
    constexpr double closest = 0.3;
    ExpectedTable table{{u"part"_s, u"profile"_s, u"colour"_s, u"length"_s, u"count"_s, u"total"_s,
                         u"lines"_s, u"close"_s},
                        {}};
    for (const QJsonValue each : plan["groups"_L1].toArray()) {
        const CutsByLength cuts = cutsOf(each.toObject());
        for (auto cut = cuts.begin(); cut != cuts.end(); ++cut) {
            const auto isNear = [&](auto other) {
                return std::abs(other->first - cut->first) < closest - noiseOfLengths;
            };
            const bool isClose = (cut != cuts.begin() && isNear(std::prev(cut))) ||
                                 (std::next(cut) != cuts.end() && isNear(std::next(cut)));
            QStringList lines;
            for (const std::pair<int, int>& line : cut->second.lines)
                lines.append(lineName(line));
            std::vector<ExpectedCell> row = groupCells(each.toObject());
            const double count = cut->second.count;
            row.insert(row.end(), {cut->first, count, Computed{cut->first * count},
                                   lines.join(u' '), isClose ? 1.0 : 0.0});
            table.rows.push_back(std::move(row));
        }
    }
    return table;
}

ExpectedTable expectedBarPlan(const QJsonObject& plan)
{
    ExpectedTable table{{u"part"_s, u"profile"_s, u"colour"_s, u"bar"_s, u"count"_s, u"position"_s,
                         u"order"_s, u"line"_s, u"side"_s, u"length"_s, u"rest"_s},
                        {}};
    for (const QJsonValue group : plan["groups"_L1].toArray()) {
        double bar = 0;
        for (const QJsonValue bars : group["bars"_L1].toArray()) {
            ++bar;
            const QJsonArray pieces = bars["pieces"_L1].toArray();
            const qsizetype perBar = pieces.size() / std::max(1, bars["count"_L1].toInt());
            for (qsizetype i = 0; i < pieces.size(); ++i) {
                const QJsonObject piece = pieces[i].toObject();
                std::vector<ExpectedCell> row = groupCells(group.toObject());
                row.insert(row.end(), {bar, bars["count"_L1].toDouble(),
                                       static_cast<double>(i % std::max<qsizetype>(perBar, 1) + 1),
                                       piece["order"_L1].toDouble(), piece["line"_L1].toDouble(),
                                       piece["side"_L1].toString(), piece["length"_L1].toDouble(),
                                       bars["rest"_L1].toDouble()});
                table.rows.push_back(std::move(row));
            }
        }
    }
    return table;
}

ExpectedTable expectedPanes(const std::vector<Pane>& panes)
{
    std::set<double> widths;
    std::set<double> heights;
    for (const Pane& each : panes) {
        widths.insert(each.width);
        heights.insert(each.height);
    }
    const std::map<double, double> width = representatives(widths);
    const std::map<double, double> height = representatives(heights);
    std::map<std::tuple<QString, QString, double, double>, std::pair<double, QStringList>> rows;
    for (const Pane& each : panes) {
        auto& [count, lines] =
            rows[{each.kind, each.colour, -width.at(each.width), -height.at(each.height)}];
        count += each.count;
        const QString line = lineName({each.order, each.line});
        if (lines.isEmpty() || lines.back() != line)
            lines.append(line);
    }
    ExpectedTable table{
        {u"width"_s, u"height"_s, u"count"_s, u"kind"_s, u"colour"_s, u"area"_s, u"lines"_s}, {}};
    for (const auto& [key, row] : rows) {
        const auto& [kind, colour, w, h] = key;
        const auto& [count, lines] = row;
        table.rows.push_back(
            {-w, -h, count, kind, colour, Computed{w * h * count / 10000}, lines.join(u' ')});
    }
    return table;
}

} // namespace

QStringList checkDocuments(const QMap<QString, QByteArray>& files, const QJsonObject& plan,
                           const Pieces& wanted)
{
    QStringList findings;
    if (const QString name = u"cut-list.csv"_s; files.contains(name))
        findings += compareRows(name, files[name], expectedCutList(plan));
    if (const QString name = u"bar-plan.csv"_s; files.contains(name))
        findings += compareRows(name, files[name], expectedBarPlan(plan));
    if (const QString name = u"glass.csv"_s; files.contains(name))
        findings += compareRows(name, files[name], expectedPanes(wanted.glass));
    if (const QString name = u"mesh.csv"_s; files.contains(name))
        findings += compareRows(name, files[name], expectedPanes(wanted.mesh));
    return findings;
}

} // namespace shop::checking
