#include "sample_store.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace controlstest {

SampleStore::SampleStore()
{
    dao::Workspace& workspace = dao::DBEngine::instance().Workspaces(0);
    workspace.setLockWait(std::chrono::milliseconds(20));
    std::shared_ptr<dao::Database> made;
    if (testsupport::isOnServer()) {
        database_ = std::make_unique<testsupport::ThrowawayDatabase>();
        database_->writeLink(path());
        made = workspace.OpenDatabase(path());
    } else {
        made = workspace.CreateDatabase(path());
    }
    dao::TableDef lines = made->CreateTableDef(u"Lines"_s);
    lines.Fields().Append(lines.CreateCounter(u"Code"_s));
    lines.Fields().Append(lines.CreateField(u"Name"_s, dao::dbText, 10));
    lines.Fields().Append(lines.CreateField(u"Size"_s, dao::dbDouble));
    lines.Fields().Append(lines.CreateField(u"Day"_s, dao::dbDate));
    lines.Fields().Append(lines.CreateField(u"Num"_s, dao::dbLong));
    lines.indexes().Append(dao::Index({u"PrimaryKey"_s, {u"Code"_s}, true, true}));
    made->tableDefs().Append(lines);
    sql_ = std::make_unique<testsupport::PlainSql>(path());
}

SampleStore::~SampleStore()
{
    dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(5));
}

QList<QVariantList> SampleStore::sql(const QString& text, const QVariantList& values)
{
    return sql_->rows(text, values);
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
