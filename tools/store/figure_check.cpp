#include "tools/store/figure_check.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/advice.h"
#include "tools/store/layout.h"
#include "tools/store/line_figures.h"
#include "tools/store/words.h"

#include <QLocale>

#include <cmath>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Stored and computed figures, such as cut sizes, count as equal up to this difference in the
/// measures' unit. No saw cuts so exactly, and rounding errors are much smaller.
constexpr double tolerance = 1e-9;

StoredFields fieldsOf(const store::TableSchema& table, const dao::ExaminedRow& row)
{
    StoredFields fields;
    for (const dao::FieldInfo& field : store::tableSchema(table.name)->fields) {
        const int ordinal = table.ordinalOf(field.name);
        if (ordinal >= 0)
            fields.insert(field.name, row.values[std::size_t(ordinal)]);
    }
    return fields;
}

void readRows(dao::Database& database, const Layout& layout, const QString& table,
              const std::function<void(const StoredFields&)>& visitor)
{
    const store::TableSchema* found = tableIn(layout, table);
    if (found == nullptr)
        return;
    dao::examineRows(database, table,
                     [&](const dao::ExaminedRow& row) { visitor(fieldsOf(*found, row)); });
}

QString shown(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

bool isSame(const QVariant& stored, double computed)
{
    return stored.isValid() && std::abs(stored.toDouble() - computed) <= tolerance;
}

/// Compares the stored figures of an order line, such as its cut sizes, with the figures computed
/// from `series`. Returns one text for each difference.
QStringList differences(const StoredFields& line, const StoredFields& series)
{
    QStringList all;
    try {
        for (const auto& [field, computed] : figuresOf(line, series)) {
            const QVariant stored = line.value(field);
            if (!isSame(stored, computed))
                all.append(
                    stored.isValid()
                        ? say({u"%1 is %2, and its series gives %3", u"%1 הוא %2, ולפי הסדרה %3"},
                              field, shown(stored.toDouble()), shown(computed))
                        : say({u"%1 is empty, and its series gives %2", u"%1 ריק, ולפי הסדרה %2"},
                              field, shown(computed)));
        }
    } catch (const runtime::RunTimeError& error) {
        all.append(say({u"its series cannot be computed: %1", u"אי אפשר לחשב לפי הסדרה: %1"},
                       Phrase{happened(error)}));
    }
    return all;
}

QString ofLine(const StoredFields& line, const QString& difference)
{
    return say({u"Cuts, Code %1 (order %2, line %3): %4",
                u"ברשומה {Cuts, Code} %1 (הזמנה %2, שורה %3): %4"},
               line.value(u"Code"_s).toString(), line.value(u"Order_Num"_s).toString(),
               line.value(u"NUM"_s).toString(), Phrase{difference});
}

} // namespace

FigureReport checkFigures(dao::Database& database)
{
    const Layout layout = layoutOf(database);
    QMultiMap<QString, StoredFields> series;
    readRows(database, layout, u"Serials"_s, [&](const StoredFields& each) {
        series.insert(each.value(u"Name"_s).toString(), each);
    });
    FigureReport report;
    QMap<QString, int> unknown;
    readRows(database, layout, u"Cuts"_s, [&](const StoredFields& line) {
        const QString name = line.value(u"Name"_s).toString();
        std::optional<QStringList> fewest;
        for (const StoredFields& each : series.values(name)) {
            const QStringList found = differences(line, each);
            if (!fewest || found.size() < fewest->size())
                fewest = found;
        }
        if (!fewest)
            ++unknown[name];
        for (const QString& each : fewest.value_or(QStringList()))
            report.differences.append(ofLine(line, each));
    });
    for (auto each = unknown.cbegin(); each != unknown.cend(); ++each)
        report.remarks.append(
            say({u"Cuts: %1 lines cannot be computed again, there is no series '%2'",
                 u"שורות שאי אפשר לחשב מחדש, כי אין סדרה בשם '%2': %1"},
                each.value(), each.key()));
    return report;
}

} // namespace storetools
