#pragma once

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "store/schema.h"
#include "tools/store/old_store/old_files.h"

#include <QDate>
#include <QLocale>

namespace storetooltest {

/// Returns the text of a value in a row list.
inline QString cellOf(const QVariant& value)
{
    if (!value.isValid())
        return u"\\N"_s;
    switch (value.typeId()) {
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    default:
        return value.toString()
            .replace(u"\\"_s, u"\\\\"_s)
            .replace(u"\r"_s, u"\\r"_s)
            .replace(u"\n"_s, u"\\n"_s)
            .replace(u"\t"_s, u"\\t"_s);
    }
}

/// Returns the rows of a store's table in row list format and in insertion order. If fields are
/// named, only those are included.
inline QStringList rowsOf(const QString& path, const QString& table, const QStringList& fields = {})
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    const store::TableSchema& schema = *store::tableSchema(table);
    QStringList lines;
    dao::examineRows(*database, table, [&](const dao::ExaminedRow& row) {
        QStringList cells{table};
        for (std::size_t i = 0; i < schema.fields.size(); ++i) {
            if (fields.isEmpty() || fields.contains(schema.fields[i].name))
                cells.append(cellOf(row.values[i]));
        }
        lines.append(cells.join(u'\t'));
    });
    return lines;
}

inline QStringList listedRows(const QString& name, const QString& table)
{
    QStringList rows;
    for (const QString& line : lines(contentsOf(oldFile(name)))) {
        if (line.section(u'\t', 0, 0) == table)
            rows.append(line);
    }
    return rows;
}

} // namespace storetooltest
