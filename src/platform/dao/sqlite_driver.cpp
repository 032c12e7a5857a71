#include "platform/dao/sqlite_driver.h"

#include "platform/dao/connection_pool.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlRecord>
#include <QUrl>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// Primary result codes of SQLite.
enum ResultCode {
    Error = 1,
    Permission = 3,
    Busy = 5,
    LockedTable = 6,
    NoMemory = 7,
    ReadOnlyStore = 8,
    InputOutput = 10,
    Corrupt = 11,
    Full = 13,
    CannotOpen = 14,
    Constraint = 19,
    Authorization = 23,
    NotADatabase = 26,
};

int resultCode(const QSqlError& error)
{
    return error.nativeErrorCode().toInt() & 0xff; // the higher bits tell kinds of one code apart
}

/// What every store file begins with, its closing zero included.
constexpr QByteArrayView headerSignature("SQLite format 3", 16);

constexpr auto primaryKeyName = "PrimaryKey"_L1;

/// A file name as a URI, so that the mode of opening can be told; every sign of it may occur.
QString uriOf(const QString& path, const QString& mode)
{
    QString absolute = QFileInfo(path).absoluteFilePath();
    if (!absolute.startsWith(u'/'))
        absolute.prepend(u'/');
    return u"file://%1?mode=%2"_s.arg(QString::fromLatin1(QUrl::toPercentEncoding(absolute, "/:")),
                                      mode);
}

/// Type and size by a declared type's spelling; what is unknown is a text without limit.
void readDeclaredType(const QString& declared, FieldInfo& field)
{
    static const QRegularExpression spelling(
        uR"(^\s*([A-Za-z]+)\s*(?:\(\s*([0-9]{1,9})\s*\))?\s*$)"_s);
    const QRegularExpressionMatch match = spelling.match(declared);
    const QString name = match.captured(1).toUpper();
    field.type = dbText;
    if (name == "TEXT"_L1)
        field.size = match.captured(2).toInt();
    else if (name == "COUNTER"_L1 || name == "LONG"_L1)
        field.type = dbLong;
    else if (name == "INTEGER"_L1)
        field.type = dbInteger;
    else if (name == "DOUBLE"_L1)
        field.type = dbDouble;
    else if (name == "DATETIME"_L1)
        field.type = dbDate;
    else if (name == "BOOLEAN"_L1)
        field.type = dbBoolean;
    field.counter = name == "COUNTER"_L1;
}

QString declaredType(const FieldInfo& field)
{
    switch (field.type) {
    case dbBoolean:
        return u"BOOLEAN"_s;
    case dbInteger:
        return u"INTEGER"_s;
    case dbLong:
        return field.counter ? u"COUNTER"_s : u"LONG"_s;
    case dbDouble:
        return u"DOUBLE"_s;
    case dbDate:
        return u"DATETIME"_s;
    case dbText:
        break;
    }
    return field.size > 0 ? u"TEXT(%1)"_s.arg(field.size) : u"TEXT"_s;
}

/// A field's name, type and constraints, as they stand in CREATE TABLE and ADD COLUMN.
QString fieldDefinition(const FieldInfo& field)
{
    QString text = Driver::quoted(field.name) + u' ' + declaredType(field);
    if (field.type == dbBoolean)
        text += " NOT NULL DEFAULT 0"_L1;
    else if (field.required && !field.counter)
        text += " NOT NULL"_L1;
    return text;
}

QString literal(const QString& text)
{
    QString inner = text;
    return u'\'' + inner.replace(u'\'', u"''"_s) + u'\'';
}

/// Index names are one name space for all tables there, so a table's indexes carry its name.
QString storedIndexName(const QString& table, const QString& index)
{
    return table + u'.' + index;
}

QString shownIndexName(const QString& table, const QString& stored)
{
    const QString prefix = table + u'.';
    return stored.startsWith(prefix, Qt::CaseInsensitive) ? stored.mid(prefix.size()) : stored;
}

QString counterTriggerName(const QString& table, const QString& field)
{
    return table + u'.' + field + ".counter"_L1;
}

/// Numbers a new row past the highest number that the table holds or has ever held. The high-water
/// mark lies in the engine's own sequence table, which every station sees and which goes with the
/// insertion's own transaction.
QString counterTrigger(const QString& table, const QString& field)
{
    return QStringLiteral(
               "CREATE TRIGGER %1 AFTER INSERT ON %2 BEGIN "
               "UPDATE %2 SET %3 = 1 + max(ifnull((SELECT max(%3) FROM %2), 0), "
               "ifnull((SELECT max(seq) FROM sqlite_sequence WHERE name = %4), 0)) "
               "WHERE rowid = NEW.rowid AND %3 IS NULL; "
               "INSERT INTO sqlite_sequence (name, seq) SELECT %4, 0 "
               "WHERE NOT EXISTS (SELECT 1 FROM sqlite_sequence WHERE name = %4); "
               "UPDATE sqlite_sequence SET seq = (SELECT %3 FROM %2 WHERE rowid = NEW.rowid) "
               "WHERE name = %4 AND seq < (SELECT %3 FROM %2 WHERE rowid = NEW.rowid); "
               "END")
        .arg(Driver::quoted(counterTriggerName(table, field)), Driver::quoted(table),
             Driver::quoted(field), literal(table));
}

/// What tells one store file from another that took its place under the same name.
QString identityOf(const QFileInfo& file)
{
#ifdef Q_OS_UNIX
    struct stat status = {};
    if (stat(QFile::encodeName(file.absoluteFilePath()).constData(), &status) == 0)
        return u"%1:%2"_s.arg(status.st_dev).arg(status.st_ino);
#endif
    return QString::number(file.birthTime().toMSecsSinceEpoch());
}

QString keyOf(const QFileInfo& file, std::chrono::milliseconds lockWait)
{
    return u"%1|%2|%3"_s.arg(file.absoluteFilePath(), identityOf(file)).arg(lockWait.count());
}

} // namespace

SqliteDriver::SqliteDriver(std::shared_ptr<SqliteConnection> connection, const QString& path)
    : Driver(path), connection_(std::move(connection))
{
}

SqliteDriver::~SqliteDriver()
{
    // A connection that has failed or is in the middle of something is closed.
    if (!poolKey_.isEmpty() && !hasFailed_ && !inTransaction())
        ConnectionPool::instance().give(poolKey_, std::move(connection_));
}

QSqlQuery& SqliteDriver::start(const QString& sql, const QVariantList& values)
{
    QSqlQuery& query = connection_->statement(sql);
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values[i]);
    if (query.lastError().isValid() || !query.exec())
        fail(sql, query);
    return query;
}

void SqliteDriver::fail(const QString& sql, const QSqlQuery& query)
{
    const QSqlError failure = query.lastError();
    hasFailed_ = true;
    connection_->drop(sql);
    throw error(failure);
}

Answer SqliteDriver::execute(const QString& sql, const QVariantList& values)
{
    QSqlQuery& query = start(sql, values);
    Answer answer;
    if (!query.isSelect()) {
        answer.affected = query.numRowsAffected();
        return answer;
    }
    const int columns = query.record().count();
    while (query.next()) {
        StoredValues row;
        row.reserve(static_cast<std::size_t>(columns));
        for (int i = 0; i < columns; ++i)
            row.push_back(query.value(i));
        answer.rows.push_back(std::move(row));
    }
    if (query.lastError().isValid())
        fail(sql, query);
    query.finish();
    return answer;
}

std::unique_ptr<Driver> SqliteDriver::open(const QString& path, std::chrono::milliseconds lockWait)
{
    const QFileInfo file(path);
    if (!file.exists())
        throw RunTimeError(runtime::DatabaseFileNotFound, u"Could not find file '%1'."_s.arg(path));
    // The engine takes a file without contents for a new store. Here only the size is asked for:
    // opening and closing the file past the engine would drop the locks that this process holds on
    // it.
    if (file.isFile() && file.size() < headerSignature.size())
        throw RunTimeError(runtime::UnrecognizedFormat,
                           u"Unrecognized database format '%1'."_s.arg(path));
    const QString key = keyOf(file, lockWait);
    if (auto idle = ConnectionPool::instance().take(key)) {
        std::unique_ptr<SqliteDriver> driver(
            new SqliteDriver(std::static_pointer_cast<SqliteConnection>(std::move(idle)), path));
        driver->renewUse();
        driver->poolKey_ = key;
        return driver;
    }
    std::unique_ptr<SqliteDriver> driver(
        new SqliteDriver(std::make_shared<SqliteConnection>(), path));
    driver->connect(u"rw"_s, lockWait);
    driver->prepareUse();
    driver->poolKey_ = key;
    return driver;
}

std::unique_ptr<Driver> SqliteDriver::create(const QString& path,
                                             std::chrono::milliseconds lockWait)
{
    if (QFileInfo::exists(path))
        throw RunTimeError(runtime::DatabaseExists, u"Database '%1' already exists."_s.arg(path));
    std::unique_ptr<SqliteDriver> driver(
        new SqliteDriver(std::make_shared<SqliteConnection>(), path));
    driver->connect(u"rwc"_s, lockWait);
    try {
        // The sequence table comes into being with the first table that asks for one, and stays.
        Together together(*driver);
        driver->run(u"CREATE TABLE first (number INTEGER PRIMARY KEY AUTOINCREMENT)"_s);
        driver->run(u"DROP TABLE first"_s);
        together.commit();
        driver->prepareUse();
    } catch (const RunTimeError&) {
        driver.reset();
        QFile::remove(path);
        throw;
    }
    return driver;
}

void SqliteDriver::connect(const QString& mode, std::chrono::milliseconds lockWait)
{
    connection().setDatabaseName(uriOf(name(), mode));
    connection().setConnectOptions(
        u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1"_s.arg(lockWait.count()));
    if (!connection().open())
        throw openingError(connection().lastError());
}

void SqliteDriver::prepareUse()
{
    // Asking for the journal reads the schema, so a file that is no store, or a locked or damaged
    // one, fails here and not at some later statement.
    QSqlQuery journal(connection());
    if (!journal.exec(u"PRAGMA journal_mode"_s) || !journal.next())
        throw openingError(journal.lastError());
    const bool rollbackJournal = journal.value(0).toString() == "delete"_L1;
    journal.finish();
    QSqlQuery settings(connection());
    // A journal of another kind is changed as soon as no other station is at work; it is safe too.
    if (!rollbackJournal)
        settings.exec(u"PRAGMA journal_mode = DELETE"_s);
    settings.exec(u"PRAGMA synchronous = FULL"_s);
    // A dozen connections are kept, each with pages of its own; the system caches the file for all.
    settings.exec(u"PRAGMA cache_size = -400"_s); // KiB
    schema().mark = schemaMark();
}

/// A connection that was idle: it touches the file as an opening does, so that a locked or damaged
/// one fails here, and learns whether another station has changed the schema meanwhile.
void SqliteDriver::renewUse()
{
    const QString mark = schemaMark();
    if (mark != schema().mark)
        schema() = {mark, {}, {}, {}, {}};
}

QString SqliteDriver::schemaMark()
{
    QSqlQuery query(connection());
    if (!query.exec(u"PRAGMA schema_version"_s) || !query.next())
        throw openingError(query.lastError());
    return query.value(0).toString();
}

RunTimeError SqliteDriver::openingError(const QSqlError& failure) const
{
    switch (resultCode(failure)) {
    case CannotOpen:
    case Permission:
        if (!QFileInfo::exists(name()))
            return RunTimeError(runtime::DatabaseFileNotFound,
                                u"Could not find file '%1'."_s.arg(name()));
        break;
    case NotADatabase: {
        QFile file(name());
        if (file.open(QIODevice::ReadOnly) && file.read(headerSignature.size()) == headerSignature)
            return RunTimeError(runtime::CorruptDatabase);
        return RunTimeError(runtime::UnrecognizedFormat,
                            u"Unrecognized database format '%1'."_s.arg(name()));
    }
    default:
        break;
    }
    return error(failure);
}

RunTimeError SqliteDriver::error(const QSqlError& failure) const
{
    const QString text = failure.databaseText();
    switch (resultCode(failure)) {
    case Busy:
    case LockedTable:
        return RunTimeError(runtime::Locked);
    case ReadOnlyStore:
        return RunTimeError(runtime::ReadOnly);
    case Full:
        return RunTimeError(runtime::DiskFull);
    case InputOutput:
        return RunTimeError(runtime::DiskOrNetworkError);
    case Corrupt:
    case NotADatabase:
        return RunTimeError(runtime::CorruptDatabase);
    case CannotOpen:
    case Permission:
    case Authorization:
        return RunTimeError(runtime::PermissionDenied);
    case NoMemory:
        return RunTimeError(runtime::OutOfMemory);
    case Constraint:
        return RunTimeError(text.contains("NOT NULL"_L1) ? runtime::FieldRequired
                                                         : runtime::DuplicateKey);
    default:
        break;
    }
    if (text.contains("no such table"_L1))
        return RunTimeError(runtime::TableNotFound);
    if (text.contains("duplicate column name"_L1))
        return RunTimeError(runtime::FieldDefinedTwice);
    return RunTimeError(runtime::InternalError, text);
}

std::vector<TableInfo> SqliteDriver::tables()
{
    std::vector<TableInfo> all;
    for (const StoredValues& row :
         rows(u"SELECT name, type = 'table' FROM sqlite_master WHERE type IN ('table', 'view') "
              "AND name NOT LIKE 'sqlite!_%' ESCAPE '!' ORDER BY rowid"_s))
        all.push_back({row[0].toString(), row[1].toBool(), {}});
    return all;
}

std::optional<TableInfo> SqliteDriver::table(const QString& name)
{
    const auto known = schema().tables.find(name);
    if (known != schema().tables.end())
        return known->second;
    return schema().tables.emplace(name, readTable(name)).first->second;
}

std::optional<TableInfo> SqliteDriver::readTable(const QString& name)
{
    std::optional<TableInfo> found;
    for (const StoredValues& row :
         rows(u"SELECT m.name, m.type = 'table', c.name, c.type, c.\"notnull\" "
              "FROM sqlite_master m, pragma_table_info(m.name) c "
              "WHERE m.name = $1 COLLATE NOCASE AND m.type IN ('table', 'view') ORDER BY c.cid"_s,
              {name})) {
        if (!found)
            found = TableInfo{row[0].toString(), row[1].toBool(), {}};
        FieldInfo field;
        field.name = row[2].toString();
        field.required = row[4].toBool();
        readDeclaredType(row[3].toString(), field);
        found->fields.push_back(field);
    }
    return found;
}

std::vector<IndexInfo> SqliteDriver::indexes(const QString& table)
{
    const auto known = schema().indexes.find(table);
    if (known != schema().indexes.end())
        return known->second;
    return schema().indexes.emplace(table, readIndexes(table)).first->second;
}

std::vector<IndexInfo> SqliteDriver::readIndexes(const QString& table)
{
    std::vector<IndexInfo> all;
    IndexInfo primary{primaryKeyName, {}, true, true};
    for (const StoredValues& row :
         rows(u"SELECT name FROM pragma_table_info($1) WHERE pk > 0 ORDER BY pk"_s, {table}))
        primary.fields.append(row[0].toString());
    if (!primary.fields.isEmpty())
        all.push_back(primary);
    QString stored;
    for (const StoredValues& row :
         rows(u"SELECT l.name, i.name, l.\"unique\" FROM pragma_index_list($1) l "
              "JOIN sqlite_master m ON m.type = 'index' AND m.name = l.name "
              "JOIN pragma_index_info(l.name) i "
              "WHERE l.origin <> 'pk' AND NOT l.partial "
              "AND NOT EXISTS (SELECT 1 FROM pragma_index_info(l.name) e WHERE e.name IS NULL) "
              "ORDER BY m.rowid, i.seqno"_s,
              {table})) {
        if (all.empty() || stored != row[0].toString()) {
            stored = row[0].toString();
            all.push_back({shownIndexName(table, stored), {}, false, row[2].toBool()});
        }
        all.back().fields.append(row[1].toString());
    }
    return all;
}

QString SqliteDriver::rowNumber(const TableInfo& table) const
{
    for (const QString& each : {u"rowid"_s, u"_rowid_"_s}) {
        if (table.ordinalOf(each) < 0)
            return each;
    }
    return u"oid"_s;
}

RowNumber SqliteDriver::insert(const TableInfo&, const QString& sql, const QVariantList& values)
{
    return start(sql, values).lastInsertId().toLongLong();
}

QString SqliteDriver::joined(const QString& select) const
{
    // The limit, which is none, keeps the engine from dropping the inner order.
    return u"WITH listed(n) AS (%1 LIMIT -1) SELECT group_concat(n) AS numbers FROM listed"_s.arg(
        select);
}

QString SqliteDriver::firstOf(const QString& joined) const
{
    return u"CAST(%1 AS INTEGER)"_s.arg(joined); // the digits that the text begins with
}

QString SqliteDriver::counterValue(const QString& table, const QString& field)
{
    const QString counter = table + u'.' + field;
    const auto known = schema().counters.find(counter);
    if (known != schema().counters.end())
        return known->second;
    return schema().counters.emplace(counter, readCounterValue(table, field)).first->second;
}

/// The engine itself gives the number of a deleted last row to the next one. A station that has the
/// former still in its list would then work on the latter, so the number follows the table's
/// counter, which goes on counting.
QString SqliteDriver::newRowNumber(const TableInfo& table)
{
    const auto counter = std::find_if(table.fields.begin(), table.fields.end(),
                                      [](const FieldInfo& each) { return each.counter; });
    // A store that was made past this engine may keep no high-water mark.
    if (counter == table.fields.end() || !counterValue(table.name, counter->name).isEmpty())
        return {};
    return QStringLiteral("(SELECT 1 + max(ifnull((SELECT max(%1) FROM %2), 0), "
                          "ifnull((SELECT max(seq) FROM sqlite_sequence WHERE name = %3), 0)))")
        .arg(rowNumber(table), quoted(table.name), literal(table.name));
}

QString SqliteDriver::readCounterValue(const QString& table, const QString& field)
{
    if (!rows(u"SELECT 1 FROM sqlite_master WHERE type = 'trigger' AND name = $1 COLLATE NOCASE"_s,
              {counterTriggerName(table, field)})
             .empty())
        return {};
    return u"(SELECT ifnull(max(%1), 0) + 1 FROM %2)"_s.arg(quoted(field), quoted(table));
}

QStringList SqliteDriver::createTable(const TableInfo& table,
                                      const std::vector<IndexInfo>& indexes) const
{
    QStringList parts;
    QStringList following;
    QString primaryKey;
    QStringList keyFields;
    for (const IndexInfo& each : indexes) {
        if (!each.primary) {
            following.append(createIndex(table.name, each));
            continue;
        }
        keyFields = each.fields;
        primaryKey = u", PRIMARY KEY (%1)"_s.arg(quoted(each.fields));
    }
    for (FieldInfo each : table.fields) {
        each.required = each.required || keyFields.contains(each.name, Qt::CaseInsensitive);
        parts.append(fieldDefinition(each));
        if (each.counter)
            following.append(counterTrigger(table.name, each.name));
    }
    return QStringList(u"CREATE TABLE %1 (%2%3)"_s.arg(quoted(table.name), parts.join(u", "_s),
                                                       primaryKey)) +
           following;
}

QString SqliteDriver::createIndex(const QString& table, const IndexInfo& index) const
{
    return u"CREATE %1 %2 ON %3 (%4)"_s.arg(index.unique ? u"UNIQUE INDEX"_s : u"INDEX"_s,
                                            quoted(storedIndexName(table, index.name)),
                                            quoted(table), quoted(index.fields));
}

QStringList SqliteDriver::addField(const QString& table, const FieldInfo& field) const
{
    return {u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(quoted(table), fieldDefinition(field))};
}

void SqliteDriver::begin()
{
    run(u"BEGIN IMMEDIATE"_s);
    setInTransaction();
}

QStringList SqliteDriver::integrityFindings()
{
    QStringList findings;
    for (const StoredValues& row : rows(u"PRAGMA integrity_check"_s))
        findings.append(row.front().toString());
    // The one line of a sound store.
    if (findings == QStringList(u"ok"_s))
        findings.clear();
    return findings;
}

} // namespace dao
