#include "tools/store/contents.h"

#include "platform/runtime/run_time_error.h"
#include "store/schema.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

QStringList cells(QByteArray line)
{
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line).split(u'\t');
}

void checkHeading(const QString& place, const QString& table, const QStringList& fields)
{
    const store::TableSchema* schema = store::tableSchema(table);
    for (const QString& field : fields) {
        if (schema == nullptr || schema->ordinalOf(field) < 0)
            throw RunTimeError(runtime::ItemNotFound,
                               u"%1: %2 has no field '%3'."_s.arg(place, table, field));
    }
}

} // namespace

TableContents readContents(const QString& folder, const QString& table)
{
    TableContents contents{.table = table, .fields = {}, .rows = {}};
    QFile file(QDir(folder).filePath(table + u".tsv"_s));
    if (!file.exists())
        return contents;
    if (!file.open(QIODevice::ReadOnly))
        throw RunTimeError(runtime::FileNotFound,
                           u"%1: %2"_s.arg(file.fileName(), file.errorString()));
    contents.fields = cells(file.readLine());
    checkHeading(file.fileName(), table, contents.fields);
    for (int line = 2; !file.atEnd(); ++line) {
        const QStringList row = cells(file.readLine());
        if (row.size() != contents.fields.size())
            throw RunTimeError(runtime::DataTypeConversion,
                               u"%1, line %2: %3 cells under %4 headings."_s.arg(file.fileName())
                                   .arg(line)
                                   .arg(row.size())
                                   .arg(contents.fields.size()));
        contents.rows.append(row);
    }
    return contents;
}

} // namespace storetools
