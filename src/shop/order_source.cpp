#include "shop/order_source.h"

#include "calculation/stored_lines.h"
#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "shop/bar_table.h"
#include "shop/store_snapshot.h"

#include <QSet>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace shop {

namespace {

std::optional<double> decimalIn(dao::Recordset& row, const QString& field)
{
    const QVariant value = row.Fields(field).Value();
    return value.isValid() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<int> wholeIn(dao::Recordset& row, const QString& field)
{
    const QVariant value = row.Fields(field).Value();
    return value.isValid() ? std::optional(value.toInt()) : std::nullopt;
}

QString textIn(dao::Recordset& row, const QString& field)
{
    return row.Fields(field).Value().toString();
}

OrderLine lineOf(dao::Recordset& row)
{
    OrderLine line;
    line.order = wholeIn(row, u"Order_Num"_s).value_or(0);
    line.line = wholeIn(row, u"NUM"_s).value_or(0);
    line.frame = {decimalIn(row, u"Mashkof_W"_s), decimalIn(row, u"Mashkof_H"_s),
                  wholeIn(row, u"Mahkof_Count"_s), textIn(row, u"Mashof_Kind"_s),
                  textIn(row, u"Mahkof_Color"_s)};
    line.sash = {decimalIn(row, u"Kanaf_W"_s), decimalIn(row, u"Kanaf_H"_s),
                 wholeIn(row, u"Kanaf_Count"_s), textIn(row, u"Kanaf_Kind"_s),
                 textIn(row, u"Kanaf_Color"_s)};
    line.glass = {decimalIn(row, u"Glass_W"_s), decimalIn(row, u"Glass_H"_s),
                  wholeIn(row, u"Glass_Count"_s), textIn(row, u"Glass_Kind"_s),
                  textIn(row, u"Glass_Color"_s)};
    line.mesh = {decimalIn(row, u"Reshet_W"_s), decimalIn(row, u"Reshet_H"_s),
                 wholeIn(row, u"Reshet_Count"_s), textIn(row, u"Reshet_Kind"_s),
                 textIn(row, u"Reshet_Color"_s)};
    line.uCut = decimalIn(row, u"U_Cut"_s);
    line.uVasa = decimalIn(row, u"U_Vasa"_s);
    line.slatWidth = decimalIn(row, u"Shalav_Width"_s);
    line.slatCount = wholeIn(row, u"Shalav_Count"_s);
    line.boxWidth = decimalIn(row, u"Argaz_Width"_s);
    return line;
}

OrderHead readHead(dao::Database& database, int order)
{
    const auto found = database.OpenRecordset(
        u"SELECT * FROM Orders WHERE Number = %1"_s.arg(order), dao::dbOpenDynaset);
    if (found->isEof())
        throw RunTimeError(runtime::NoCurrentRecord, u"There is no order %1."_s.arg(order));
    return {order, found->Fields(u"Order_Date"_s).Value().toDate(),
            textIn(*found, u"CustomerName"_s)};
}

/// Reads the lines of an order. If `catalogue` is given, also explains how the sizes of the lines
/// were computed.
void readLines(dao::Database& database, int order,
               const std::optional<std::vector<calculation::NamedSeries>>& catalogue,
               OrderSource& source)
{
    const auto rows = database.OpenRecordset(
        u"SELECT * FROM Cuts WHERE Order_Num = %1 ORDER BY NUM ASC"_s.arg(order),
        dao::dbOpenDynaset);
    for (; !rows->isEof(); rows->MoveNext()) {
        source.lines.push_back(lineOf(*rows));
        if (catalogue)
            source.explanations.push_back(explain(*rows, *catalogue));
    }
}

} // namespace

OrderSource readOrders(const QString& path, const QList<int>& orders, Explanations explanations)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    const StoreSnapshot snapshot(*database);
    std::optional<std::vector<calculation::NamedSeries>> catalogue;
    if (explanations == Explanations::Read)
        catalogue = calculation::readCatalogue(*database);
    OrderSource source;
    QSet<int> done;
    for (const int order : orders) {
        if (done.contains(order))
            continue;
        done.insert(order);
        source.orders.push_back(readHead(*database, order));
        readLines(*database, order, catalogue, source);
    }
    source.settings = readBarTable(*database);
    return source;
}

} // namespace shop
