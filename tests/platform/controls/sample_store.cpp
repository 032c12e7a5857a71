#include "sample_store.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

#include <chrono>

using namespace Qt::StringLiterals;

namespace controlstest {

SampleStore::SampleStore() : connection_(QUuid::createUuid().toString())
{
    dao::Workspace& workspace = dao::DBEngine::instance().Workspaces(0);
    workspace.setLockWait(std::chrono::milliseconds(20));
    const std::shared_ptr<dao::Database> made = workspace.CreateDatabase(path());
    dao::TableDef lines = made->CreateTableDef(u"Lines"_s);
    lines.Fields().Append(lines.CreateCounter(u"Code"_s));
    lines.Fields().Append(lines.CreateField(u"Name"_s, dao::dbText, 10));
    lines.Fields().Append(lines.CreateField(u"Size"_s, dao::dbDouble));
    lines.Fields().Append(lines.CreateField(u"Day"_s, dao::dbDate));
    lines.Fields().Append(lines.CreateField(u"Num"_s, dao::dbLong));
    lines.indexes().Append(dao::Index({u"PrimaryKey"_s, {u"Code"_s}, true, true}));
    made->tableDefs().Append(lines);

    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection_);
    database.setDatabaseName(path());
    if (!database.open())
        qFatal("%s", qUtf8Printable(database.lastError().text()));
}

SampleStore::~SampleStore()
{
    dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(5));
    QSqlDatabase::database(connection_, false).close();
    QSqlDatabase::removeDatabase(connection_);
}

QList<QVariantList> SampleStore::sql(const QString& text, const QVariantList& values)
{
    QSqlQuery query(QSqlDatabase::database(connection_));
    bool good = query.prepare(text);
    for (const QVariant& each : values)
        query.addBindValue(each);
    good = good && query.exec();
    if (!good)
        qFatal("%s\n%s", qUtf8Printable(text), qUtf8Printable(query.lastError().text()));
    QList<QVariantList> rows;
    while (query.next()) {
        QVariantList row;
        for (int i = 0; i < query.record().count(); ++i)
            row.append(query.isNull(i) ? QVariant() : query.value(i));
        rows.append(row);
    }
    return rows;
}

void SampleStore::addLines(const QStringList& names)
{
    int number = sql(u"SELECT COUNT(*) FROM Lines"_s)[0][0].toInt();
    for (const QString& name : names)
        sql(u"INSERT INTO Lines (Name, Num) VALUES (?, ?)"_s, {name, ++number});
}

void SampleStore::addLines(int count)
{
    sql(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
        "INSERT INTO Lines (Name, Num) SELECT 'n' || i, i FROM n"_s.arg(count));
}

QStringList SampleStore::names()
{
    QStringList names;
    for (const QVariantList& row : sql(u"SELECT Name FROM Lines ORDER BY Code"_s))
        names.append(row[0].isValid() ? row[0].toString() : u"NULL"_s);
    return names;
}

QString SampleStore::path() const
{
    return folder_.filePath(u"sample.mdb"_s);
}

std::shared_ptr<dao::Recordset> SampleStore::table() const
{
    return dao::DBEngine::instance().OpenDatabase(path())->OpenRecordset(u"Lines"_s,
                                                                         dao::dbOpenTable);
}

std::shared_ptr<dao::Recordset> SampleStore::dynaset() const
{
    return dao::DBEngine::instance().OpenDatabase(path())->OpenRecordset(
        u"SELECT * FROM Lines ORDER BY Num ASC"_s, dao::dbOpenDynaset);
}

} // namespace controlstest
