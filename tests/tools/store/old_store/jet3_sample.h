#pragma once

#include "store/schema.h"
#include "tools/store/old_store/jet3_file.h"

#include <QtEndian>

#include <algorithm>
#include <map>

namespace storetooltest {

using namespace Qt::StringLiterals;

template <typename Number>
QByteArray bytesOf(Number number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/// Returns the eleven tables without rows; decimals have the type Single.
inline std::vector<Jet3Table> emptyTables()
{
    std::vector<Jet3Table> tables;
    for (const store::TableSchema& schema : store::schema()) {
        Jet3Table table{schema.name.toLatin1(), {}, {}};
        for (const dao::FieldInfo& field : schema.fields) {
            const auto type = field.type == dao::dbDouble ? storetools::OldSingle
                                                          : storetools::OldType(field.type);
            table.columns.push_back({field.name, type});
        }
        tables.push_back(table);
    }
    return tables;
}

inline Jet3Table& tableIn(std::vector<Jet3Table>& tables, const QByteArray& name)
{
    return *std::ranges::find(tables, name, &Jet3Table::name);
}

/// Adds a row in which all columns except the named ones are Null, and Booleans are False.
inline void addRow(Jet3Table& table, const std::map<QString, QByteArray>& cells)
{
    storetools::OldRow row;
    for (const storetools::OldColumn& column : table.columns) {
        const auto cell = cells.find(column.name);
        if (cell != cells.end())
            row.push_back(cell->second);
        else
            row.push_back(column.type == storetools::OldBoolean
                              ? storetools::OldCell(QByteArray(1, '\0'))
                              : storetools::OldCell());
    }
    table.rows.push_back(row);
}

inline const QByteArray cohen = "\xeb\xe4\xef";                            // כהן
inline const QByteArray herzl = "\xf8\xe7' \xe4\xf8\xf6\xec 5 \xfa\"\xe0"; // רח' הרצל 5 ת"א
inline const QByteArray sliding = "\xe4\xe6\xe6\xe4";                      // הזזה

inline void addOrders(std::vector<Jet3Table>& tables)
{
    Jet3Table& orders = tableIn(tables, "Orders");
    addRow(orders, {{u"Number"_s, bytesOf(qint32{1})},
                    {u"Order_Date"_s, bytesOf(36161.0)},
                    {u"Open_Close"_s, QByteArray(1, '\1')},
                    {u"CustomerName"_s, cohen},
                    {u"CustomerAddress"_s, herzl},
                    {u"CustomerTel"_s, ""}});
    addRow(orders, {{u"Number"_s, bytesOf(qint32{2})}});
}

/// Adds lines whose texts start beyond byte 256 and byte 512 of their row.
inline void addLines(std::vector<Jet3Table>& tables)
{
    Jet3Table& cuts = tableIn(tables, "Cuts");
    for (int code = 1; code <= 30; ++code) {
        const QByteArray filling(code, '\xe0'); // א
        std::map<QString, QByteArray> cells{{u"Code"_s, bytesOf(qint32{code})},
                                            {u"Name"_s, sliding},
                                            {u"MyWidth"_s, bytesOf(48.35F)},
                                            {u"Order_Num"_s, bytesOf(qint32{1 + code % 2})},
                                            {u"NUM"_s, bytesOf(qint32{(code + 1) / 2})}};
        for (const QString& field :
             {u"Mashof_Kind"_s, u"Mahkof_Color"_s, u"Kanaf_Kind"_s, u"Kanaf_Color"_s,
              u"Glass_Kind"_s, u"Glass_Color"_s, u"Reshet_Kind"_s, u"Reshet_Color"_s})
            cells[field] = filling;
        cells[u"Kanaf_Color"_s] = QByteArray();
        cells[u"Sign"_s] = "d2000";
        addRow(cuts, cells);
    }
}

} // namespace storetooltest
