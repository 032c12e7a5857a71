#include "tools/store/row_check.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/advice.h"
#include "tools/store/number_range.h"
#include "tools/store/shared_texts.h"

#include <QMap>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Checks the rows of one table and collects the findings.
class TableCheck
{
public:
    TableCheck(const store::TableSchema& expected, const store::TableSchema& found)
        : expected_(expected), found_(found), keyField_(expected.indexes.front().fields.front()),
          keyOrdinal_(found.ordinalOf(keyField_)),
          limited_(expected.name == "Orders"_L1 || expected.name == "Serials"_L1)
    {
    }

    void take(const dao::ExaminedRow& row)
    {
        ++row_;
        for (const int ordinal : row.unreadable)
            add(row, say(cannotBeRead, found_.fields[std::size_t(ordinal)].name));
        for (const dao::FieldInfo& field : expected_.fields) {
            if (field.type == dao::dbText)
                checkLength(row, field);
        }
        if (keyOrdinal_ >= 0)
            checkKey(row, row.values[std::size_t(keyOrdinal_)]);
    }

    /// Returns the findings about single rows, followed by a finding for each key that several rows
    /// have.
    QStringList findings() const
    {
        QStringList all = findings_;
        for (auto each = keys_.cbegin(); each != keys_.cend(); ++each) {
            if (each.value() > 1)
                all.append(
                    say({u"%1: %2 %3 stands in %4 rows", u"בטבלה %1 המספר %2 %3 נמצא ב-%4 רשומות"},
                        expected_.name, keyField_, each.key(), each.value()));
        }
        return all;
    }

    const QMap<int, int>& rowsByKey() const { return keys_; }

private:
    /// Adds a finding about a row. The row is identified by its key if the key can be read, and
    /// otherwise by its position.
    void add(const dao::ExaminedRow& row, const QString& finding)
    {
        const QVariant key = keyOrdinal_ < 0 ? QVariant() : row.values[std::size_t(keyOrdinal_)];
        const QString name = key.isValid() ? keyField_ + u' ' + key.toString() : QString();
        findings_.append(ofRow(expected_.name, name, row_, finding));
    }

    void checkLength(const dao::ExaminedRow& row, const dao::FieldInfo& field)
    {
        const int ordinal = found_.ordinalOf(field.name);
        if (ordinal < 0)
            return;
        const qsizetype length = row.values[std::size_t(ordinal)].toString().size();
        if (length > field.size)
            add(row, say(textIsTooLong, field.name, length, field.size));
    }

    void checkKey(const dao::ExaminedRow& row, const QVariant& value)
    {
        if (!value.isValid()) {
            if (row.unreadable.empty() || row.unreadable.front() != keyOrdinal_)
                add(row, say(hasNoKey, keyField_));
            return;
        }
        const int key = value.toInt();
        ++keys_[key];
        if (limited_ && (key < lowestNumber || key > highestNumber))
            add(row, say(hasToLieBetween, keyField_, lowestNumber, highestNumber));
    }

    const store::TableSchema& expected_;
    const store::TableSchema& found_;
    QString keyField_;
    int keyOrdinal_;
    bool limited_;
    int row_ = 0;
    QStringList findings_;
    QMap<int, int> keys_;
};

/// Counts the order lines that have no order number or that belong to an order that does not exist.
class LineCheck
{
public:
    LineCheck(const store::TableSchema& cuts, QMap<int, int> orders)
        : ordinal_(cuts.ordinalOf(u"Order_Num"_s)), orders_(std::move(orders))
    {
    }

    void take(const dao::ExaminedRow& row)
    {
        if (ordinal_ < 0)
            return;
        const QVariant order = row.values[std::size_t(ordinal_)];
        if (!order.isValid())
            ++without_;
        else if (!orders_.contains(order.toInt()))
            ++lost_[order.toInt()];
    }

    QStringList findings() const
    {
        QStringList all;
        if (without_ > 0)
            all.append(say({u"Cuts: %1 lines have no order number", u"שורות בלי מספר הזמנה: %1"},
                           without_));
        for (auto each = lost_.cbegin(); each != lost_.cend(); ++each)
            all.append(say({u"Cuts: %1 lines belong to order %2, which does not exist",
                            u"שורות של הזמנה %2, שאינה קיימת: %1"},
                           each.value(), each.key()));
        return all;
    }

private:
    int ordinal_;
    QMap<int, int> orders_;
    int without_ = 0;
    QMap<int, int> lost_;
};

/// Reads all rows of a table. Returns a finding if the table cannot be read to its end.
QStringList readThrough(dao::Database& database, const QString& table,
                        const std::function<void(const dao::ExaminedRow&)>& visitor)
{
    try {
        dao::examineRows(database, table, visitor);
        return {};
    } catch (const runtime::RunTimeError& error) {
        return {
            say({u"%1: cannot be read to its end: %2", u"אי אפשר לקרוא את הטבלה %1 עד סופה: %2"},
                table, Phrase{happened(error)})};
    }
}

} // namespace

QStringList checkRows(dao::Database& database, const Layout& layout)
{
    QStringList findings;
    std::optional<QMap<int, int>> orders;
    for (const store::TableSchema& expected : store::wholeSchema()) {
        const store::TableSchema* found = tableIn(layout, expected.name);
        if (found == nullptr)
            continue;
        TableCheck rows(expected, *found);
        LineCheck lines(*found, orders.value_or(QMap<int, int>()));
        const bool withOrders = expected.name == "Cuts"_L1 && orders;
        const QStringList failure =
            readThrough(database, expected.name, [&](const dao::ExaminedRow& row) {
                rows.take(row);
                if (withOrders)
                    lines.take(row);
            });
        findings += rows.findings() + lines.findings() + failure;
        if (expected.name == "Orders"_L1 && failure.isEmpty())
            orders = rows.rowsByKey();
    }
    return findings;
}

} // namespace storetools
