#include "support/temporary_store.h"

#include "base/module1.h"
#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"
#include "store/schema.h"
#include "tools/store/builder.h"

#include <QDeadlineTimer>
#include <QFile>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

/// Returns the path of the store from which temporary stores are copied, and builds it at the first
/// use. Copying takes much less time than building.
QString pattern(TemporaryStore::Contents contents)
{
    static const QTemporaryDir folder;
    const bool delivered = contents == TemporaryStore::Contents::Delivered;
    const QString path = folder.filePath(delivered ? u"delivered.mdb"_s : u"empty.mdb"_s);
    if (!QFile::exists(path))
        storetools::createStore(path, delivered ? storetools::deliveredContents() : QString());
    return path;
}

/// Creates the tables of an embedded store in another database and copies all rows, including
/// counter values.
void copyRows(dao::Database& from, dao::Database& to)
{
    for (const store::TableSchema& schema : store::schema()) {
        dao::TableDef table = to.CreateTableDef(schema.name);
        for (const dao::FieldInfo& field : schema.fields)
            table.Fields().Append(dao::FieldDef(field));
        for (const dao::IndexInfo& index : schema.indexes)
            table.indexes().Append(dao::Index(index));
        to.tableDefs().Append(table);
        const auto source = from.OpenRecordset(schema.name, dao::dbOpenTable);
        const auto target = to.OpenRecordset(schema.name, dao::dbOpenTable);
        for (; !source->isEof(); source->MoveNext()) {
            target->AddNew();
            for (int i = 0; i < source->FieldCount(); ++i)
                target->Fields(i).SetValue(source->Fields(i).Value());
            target->Update();
        }
    }
    dao::makeStoreMark(to);
}

/// Returns the template database on the server of this test run. The first process that needs it
/// creates it.
QString patternDatabase(TemporaryStore::Contents contents)
{
    const bool delivered = contents == TemporaryStore::Contents::Delivered;
    const QString name = delivered ? u"delivered"_s : u"empty"_s;
    databaseOnce(name, [contents](const dao::Link& link) {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"link"_s));
        file.open(QIODevice::WriteOnly);
        file.write(dao::linkText(link));
        file.close();
        dao::DBEngine& engine = dao::DBEngine::instance();
        const auto from = engine.OpenDatabase(pattern(contents));
        const auto to = engine.OpenDatabase(file.fileName());
        to->BeginTrans();
        copyRows(*from, *to);
        to->CommitTrans();
        from->Close();
        to->Close();
        engine.Idle();
    });
    return name;
}

QString questionMarks(qsizetype count)
{
    return QStringList(count, u"?"_s).join(u", "_s);
}

} // namespace

std::unique_ptr<ThrowawayDatabase> TemporaryStore::write(Contents contents, const QString& path)
{
    if (isOnServer()) {
        auto database = std::make_unique<ThrowawayDatabase>(patternDatabase(contents));
        database->writeLink(path);
        return database;
    }
    if (!QFile::copy(pattern(contents), path))
        qFatal("cannot copy a store to %s", qUtf8Printable(path));
    return {};
}

TemporaryStore::TemporaryStore(Contents contents)
    : database_(write(contents, path())), sql_(std::make_unique<PlainSql>(path())),
      formerStorePath_(Module1::StorePath), formerLogoPath_(Module1::LogoPath)
{
    Module1::StorePath = path();
    Module1::LogoPath = folder_.filePath(u"Logo.jpg"_s);
}

TemporaryStore::~TemporaryStore()
{
    Module1::StorePath = formerStorePath_;
    Module1::LogoPath = formerLogoPath_;
}

QString TemporaryStore::path() const
{
    return folder_.filePath(u"Aluminium.mdb"_s);
}

QString TemporaryStore::folder() const
{
    return folder_.path();
}

void TemporaryStore::execute(const QString& sql, const QList<QVariant>& values)
{
    sql_->rows(sql, values);
}

QList<QList<QVariant>> TemporaryStore::rows(const QString& sql, const QList<QVariant>& values)
{
    return sql_->rows(sql, values);
}

QVariant TemporaryStore::scalar(const QString& sql, const QList<QVariant>& values)
{
    return sql_->scalar(sql, values);
}

QByteArray TemporaryStore::contents()
{
    if (!sql_->isOnServer()) {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    const QString tables = u"SELECT quote_ident(relname), string_agg(attname || ' ' || "
                           "format_type(atttypid, atttypmod), ', ' ORDER BY attnum) "
                           "FROM pg_class c JOIN pg_attribute a ON attrelid = c.oid "
                           "WHERE relnamespace = 'public'::regnamespace AND attnum > 0 "
                           "AND NOT attisdropped AND relkind IN ('r', 'v') "
                           "GROUP BY relname ORDER BY relname"_s;
    QString all;
    for (const QList<QVariant>& table : sql_->exactly(tables)) {
        const QString name = table[0].toString();
        all += name + u": "_s + table[1].toString() + u'\n';
        all +=
            sql_->exactly(
                    u"SELECT string_agg(t::text, '\n' ORDER BY t::text) FROM %1 AS t"_s.arg(name))
                .first()
                .first()
                .toString() +
            u'\n';
    }
    return all.toUtf8();
}

void TemporaryStore::waitUntilLeft()
{
    if (!sql_->isOnServer())
        return;
    dao::DBEngine::instance().Idle();
    const QDeadlineTimer deadline(std::chrono::seconds(30));
    const QString sql = u"SELECT count(*), pg_sleep(0.002) FROM pg_stat_activity WHERE datname = "
                        "current_database() AND application_name = 'Zomrel'"_s;
    while (sql_->exactly(sql).first().first().toInt() > 0) {
        if (deadline.hasExpired())
            qFatal("an ended program still has a connection to the store");
    }
}

int TemporaryStore::addSeries(const QString& name, const QList<double>& deductions, int kanafNum,
                              int nativNum, const QVariant& sign)
{
    if (deductions.size() != store::deductionFields().size())
        qFatal("a series needs %lld deductions",
               static_cast<long long>(store::deductionFields().size()));
    QList<QVariant> values{name};
    for (const double deduction : deductions)
        values.append(deduction);
    values << kanafNum << nativNum << sign;
    execute(u"INSERT INTO Serials (Name, %1, Kanaf_Num, Nativ_Num, Sign) VALUES (%2)"_s.arg(
                store::deductionFields().join(u", "_s), questionMarks(values.size())),
            values);
    return scalar(u"SELECT max(AutoNum) FROM Serials"_s).toInt();
}

void TemporaryStore::addOrder(int number, bool closed, const QString& isoDate)
{
    execute(u"INSERT INTO Orders (Number, Order_Date, Open_Close) VALUES (?, ?, ?)"_s,
            {number, isoDate, closed ? -1 : 0});
}

void TemporaryStore::addLine(int orderNumber, int lineNumber, const QString& name)
{
    // A normal window of 120 by 100 with two sashes. The deductions are -0.6 for the frame, -2.8
    // and -6.5 for the sash, -19.6 and -19.7 for the glass, -2.4 and -6.9 for the mesh.
    const QList<std::pair<QString, QVariant>> cells{
        {u"Order_Num"_s, orderNumber},
        {u"NUM"_s, lineNumber},
        {u"Order_Date"_s, u"2026-01-02"_s},
        {u"Name"_s, name},
        {u"Kind"_s, u"אור"_s},
        {u"MyWidth"_s, 120.0},
        {u"MYHeight"_s, 100.0},
        {u"Mashkof_W"_s, 119.4},
        {u"Mashkof_H"_s, 99.4},
        {u"Kanaf_W"_s, 58.6},
        {u"Kanaf_H"_s, 93.5},
        {u"Glass_W"_s, 50.2},
        {u"Glass_H"_s, 80.3},
        {u"Reshet_W"_s, 58.8},
        {u"Reshet_H"_s, 93.1},
        {u"Mashof_Kind"_s, u"משקוף רגיל"_s},
        {u"Mahkof_Color"_s, u"לבן"_s},
        {u"Mahkof_Count"_s, 2},
        {u"Kanaf_Kind"_s, u"כנף רגילה"_s},
        {u"Kanaf_Color"_s, u"ברונזה"_s},
        {u"Kanaf_Count"_s, 4},
        {u"Glass_Kind"_s, u"זכוכית 5 מ\"מ"_s},
        {u"Glass_Color"_s, u"שקוף"_s},
        {u"Glass_Count"_s, 2},
        {u"Reshet_Kind"_s, u"רשת פיברגלס"_s},
        {u"Reshet_Color"_s, u"אפור"_s},
        {u"Reshet_Count"_s, 2},
    };
    QStringList fields;
    QList<QVariant> values;
    for (const auto& [field, value] : cells) {
        fields.append(field);
        values.append(value);
    }
    // A normal line has 0 in the fields that only monoblocks and doors use.
    for (const QString& field :
         {u"MyWidth_2"_s, u"MYHeight_2"_s, u"U_Thick"_s, u"U_Cut"_s, u"U_Vasa"_s, u"Shalav_Thick"_s,
          u"Shalav_Width"_s, u"Shalav_Count"_s, u"Argaz_Width"_s, u"Argaz_Height"_s}) {
        fields.append(field);
        values.append(0);
    }
    execute(u"INSERT INTO Cuts (%1) VALUES (%2)"_s.arg(fields.join(u", "_s),
                                                       questionMarks(values.size())),
            values);
}

} // namespace testsupport
