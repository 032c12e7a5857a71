#include "shop/documents.h"

#include "shop/csv.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

QString csvCell(const Cell& cell)
{
    if (const auto* text = std::get_if<QString>(&cell))
        return textCell(*text);
    if (const auto* whole = std::get_if<int>(&cell))
        return QString::number(*whole);
    return numberText(std::get<double>(cell));
}

QByteArray csvOf(const Table& table)
{
    QList<QStringList> rows{table.columns};
    for (const std::vector<Cell>& each : table.rows) {
        QStringList cells;
        for (const Cell& cell : each)
            cells.append(csvCell(cell));
        rows.append(cells);
    }
    return csvText(rows);
}

QJsonObject barsJson(const GroupBars& bars)
{
    QJsonArray pieces;
    for (const Piece& each : bars.pieces)
        pieces.append(QJsonObject{{u"order"_s, each.order},
                                  {u"line"_s, each.line},
                                  {u"part"_s, partName(each.group.part)},
                                  {u"side"_s, sideName(each.side)},
                                  {u"length"_s, each.length}});
    return {{u"count"_s, bars.count}, {u"rest"_s, bars.rest}, {u"pieces"_s, pieces}};
}

QJsonObject groupJson(const GroupPlan& plan)
{
    QJsonArray bars;
    for (const GroupBars& each : plan.bars)
        bars.append(barsJson(each));
    return {{u"part"_s, partName(plan.group.part)},
            {u"profile"_s, plan.group.profile},
            {u"colour"_s, plan.group.colour},
            {u"barLength"_s, plan.settings.barLength},
            {u"kerf"_s, plan.settings.kerf},
            {u"trim"_s, plan.settings.trim},
            {u"bound"_s, plan.bound},
            {u"proved"_s, plan.proved},
            {u"stops"_s, plan.stops},
            {u"bars"_s, bars}};
}

} // namespace

const std::vector<DocumentKind>& documentKinds()
{
    static const std::vector<DocumentKind> kinds{
        {u"cut-list"_s, u"cut-list.csv"_s, cutListCsv},
        {u"bar-plan"_s, u"bar-plan.csv"_s, barPlanCsv},
        {u"glass"_s, u"glass.csv"_s, glassCsv},
        {u"mesh"_s, u"mesh.csv"_s, meshCsv},
        {u"json"_s, u"plan.json"_s, planJson},
    };
    return kinds;
}

QByteArray piecesCsv(const std::vector<Piece>& pieces, const SettingsByGroup& settings)
{
    return csvOf(piecesTable(pieces, settings));
}

QByteArray cutListCsv(const ShopPack& pack)
{
    return csvOf(cutListTable(pack));
}

QByteArray barPlanCsv(const ShopPack& pack)
{
    return csvOf(barPlanTable(pack));
}

QByteArray glassCsv(const ShopPack& pack)
{
    return csvOf(panesTable(pack.pieces.glass));
}

QByteArray meshCsv(const ShopPack& pack)
{
    return csvOf(panesTable(pack.pieces.mesh));
}

QByteArray explanationsCsv(const ShopPack& pack)
{
    return csvOf(explanationsTable(pack.explanations));
}

QByteArray planJson(const ShopPack& pack)
{
    QJsonArray groups;
    for (const GroupPlan& each : pack.groups)
        groups.append(groupJson(each));
    QJsonArray glass;
    for (const Pane& each : pack.pieces.glass)
        glass.append(QJsonObject{{u"order"_s, each.order},
                                 {u"line"_s, each.line},
                                 {u"width"_s, each.width},
                                 {u"height"_s, each.height},
                                 {u"count"_s, each.count},
                                 {u"kind"_s, each.kind},
                                 {u"colour"_s, each.colour}});
    QJsonArray errors;
    for (const Fault& each : pack.pieces.faults)
        errors.append(QJsonObject{{u"order"_s, each.order},
                                  {u"line"_s, each.line},
                                  {u"part"_s, partName(each.part)},
                                  {u"side"_s, sideName(each.side)},
                                  {u"reason"_s, reasonText(each)}});
    return QJsonDocument(
               QJsonObject{{u"groups"_s, groups}, {u"glass"_s, glass}, {u"errors"_s, errors}})
        .toJson(QJsonDocument::Compact);
}

} // namespace shop
