#include "platform/dao/sqlite/sqlite_session.h"

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/sqlite/sqlite_bulk.h"
#include "platform/dao/sqlite/sqlite_dialect.h"
#include "platform/dao/sqlite/sqlite_errors.h"
#include "platform/dao/sqlite/sqlite_presence.h"
#include "platform/runtime/call_watch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlRecord>
#include <QUrl>

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// The first bytes of every SQLite file, including the terminating zero.
constexpr QByteArrayView headerSignature("SQLite format 3", 16);

/// Returns the URI with which SQLite opens the file at the path. The URI contains the mode of
/// opening. The path may contain any characters.
QString uriOf(const QString& path, const QString& mode)
{
    QString absolute = QFileInfo(path).absoluteFilePath();
    if (!absolute.startsWith(u'/'))
        absolute.prepend(u'/');
    return u"file://%1?mode=%2"_s.arg(QString::fromLatin1(QUrl::toPercentEncoding(absolute, "/:")),
                                      mode);
}

QString keyOf(const QFileInfo& file, const QString& fileIdentity,
              std::chrono::milliseconds lockWait)
{
    return u"%1|%2|%3"_s.arg(file.absoluteFilePath(), fileIdentity).arg(lockWait.count());
}

} // namespace

SqliteSession::SqliteSession(std::shared_ptr<SqliteConnection> connection, const QString& path)
    : Session(path, SqliteDialect::instance()), connection_(std::move(connection))
{
}

SqliteSession::~SqliteSession()
{
    // A connection on which a statement has failed, or which is in a transaction, is closed and not
    // kept in the pool.
    if (!poolKey_.isEmpty() && !hasFailed_ && !inTransaction())
        ConnectionPool::instance().give(poolKey_, std::move(connection_));
}

QSqlQuery& SqliteSession::start(const QString& sql, const QVariantList& values)
{
    QSqlQuery& query = connection_->statement(sql);
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values[i]);
    if (query.lastError().isValid() || !query.exec())
        fail(sql, query);
    return query;
}

void SqliteSession::fail(const QString& sql, const QSqlQuery& query)
{
    const QSqlError failure = query.lastError();
    hasFailed_ = true;
    connection_->drop(sql);
    throw errorOf(failure);
}

Answer SqliteSession::execute(const QString& sql, const QVariantList& values)
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

std::unique_ptr<Session> SqliteSession::open(const QString& path,
                                             std::chrono::milliseconds lockWait)
{
    const QFileInfo file(path);
    if (!file.exists())
        throw RunTimeError(runtime::DatabaseFileNotFound, u"Could not find file '%1'."_s.arg(path));
    // SQLite treats an empty file as a new store, so a file that is too small is refused. Only the
    // size of the file is checked, because opening and closing the file here would release the
    // locks that this process holds on the file.
    if (file.isFile() && file.size() < headerSignature.size())
        throw RunTimeError(runtime::UnrecognizedFormat,
                           u"Unrecognized database format '%1'."_s.arg(path));
    const QString fileIdentity = fileIdentityOf(path);
    const QString key = keyOf(file, fileIdentity, lockWait);
    if (auto idle = ConnectionPool::instance().take(key)) {
        std::unique_ptr<SqliteSession> session(
            new SqliteSession(std::static_pointer_cast<SqliteConnection>(std::move(idle)), path));
        session->renewUse();
        session->fileIdentity_ = fileIdentity;
        session->recognise(session->storedMark());
        session->poolKey_ = key;
        return session;
    }
    std::unique_ptr<SqliteSession> session(
        new SqliteSession(std::make_shared<SqliteConnection>(), path));
    session->connection_->setPresence(Presence::at(path, fileIdentity));
    session->connect(u"rw"_s, lockWait);
    session->prepareUse();
    session->fileIdentity_ = fileIdentity;
    session->recognise(session->storedMark());
    session->poolKey_ = key;
    return session;
}

std::unique_ptr<Session> SqliteSession::create(const QString& path,
                                               std::chrono::milliseconds lockWait)
{
    if (QFileInfo::exists(path))
        throw RunTimeError(runtime::DatabaseExists, u"Database '%1' already exists."_s.arg(path));
    std::unique_ptr<SqliteSession> session(
        new SqliteSession(std::make_shared<SqliteConnection>(), path));
    session->connect(u"rwc"_s, lockWait);
    try {
        session->prepareUse();
        session->run(counterTableMaking());
        expectMark(path, {});
    } catch (const RunTimeError&) {
        session.reset();
        QFile::remove(path);
        throw;
    }
    return session;
}

void SqliteSession::connect(const QString& mode, std::chrono::milliseconds lockWait)
{
    connection_->database().setDatabaseName(uriOf(name(), mode));
    connection_->database().setConnectOptions(
        u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1"_s.arg(lockWait.count()));
    if (!connection_->database().open())
        throw openingError(connection_->database().lastError());
}

void SqliteSession::prepareUse()
{
    // This statement makes SQLite read the schema from the file. It therefore fails if the file is
    // locked, damaged or not a store. Otherwise a later statement would fail.
    QSqlQuery journal(connection_->database());
    if (!journal.exec(u"PRAGMA journal_mode"_s) || !journal.next())
        throw openingError(journal.lastError());
    const bool rollbackJournal = journal.value(0).toString() == "delete"_L1;
    journal.finish();
    QSqlQuery settings(connection_->database());
    // Tries to replace the store's write-ahead log by a rollback journal. While another station
    // uses the store, SQLite keeps the write-ahead log. The log can be used, too, because its
    // commits are also durable.
    if (!rollbackJournal)
        settings.exec(u"PRAGMA journal_mode = DELETE"_s);
    requireDurableCommits(settings);
    // The process has up to a dozen connections, and each connection has a page cache. A small
    // cache is enough, because the operating system also caches the file.
    settings.exec(u"PRAGMA cache_size = -400"_s); // KiB
    schema().mark = schemaMark();
}

/// Sets SQLite's option synchronous to EXTRA. SQLite then also synchronizes the folder with the
/// disk after a commit has removed the journal. With the value FULL, the journal could reappear
/// after a power cut, and SQLite would roll the commit back.
void SqliteSession::requireDurableCommits(QSqlQuery& settings) const
{
    constexpr int extra = 3;
    settings.exec(u"PRAGMA synchronous = EXTRA"_s);
    if (!settings.exec(u"PRAGMA synchronous"_s) || !settings.next())
        throw openingError(settings.lastError());
    const int set = settings.value(0).toInt();
    settings.finish();
    if (set != extra)
        throw RunTimeError(
            runtime::InternalError,
            u"The store '%1' cannot be used: SQLite has set synchronous to %2, not to EXTRA (%3)."_s
                .arg(name(), QString::number(set), QString::number(extra)));
}

/// Prepares a pooled connection for its next use by reading the schema mark, which changes when a
/// station changes the schema. If the file is locked or damaged, this throws the same error as
/// opening the file.
void SqliteSession::renewUse()
{
    const QString mark = schemaMark();
    if (mark != schema().mark)
        schema() = {mark, {}, {}, {}, {}, false};
}

QString SqliteSession::schemaMark()
{
    QSqlQuery query(connection_->database());
    if (!query.exec(u"PRAGMA schema_version"_s) || !query.next())
        throw openingError(query.lastError());
    return query.value(0).toString();
}

RunTimeError SqliteSession::openingError(const QSqlError& failure) const
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
    return errorOf(failure);
}

RowNumber SqliteSession::insert(const TableInfo&, const QString& sql, const QVariantList& values)
{
    const runtime::WatchedCall call([this] { return place(); });
    Transaction transaction(*this);
    const RowNumber number = start(sql, values).lastInsertId().toLongLong();
    transaction.commit();
    return number;
}

qint64 SqliteSession::write(const QString& sql, const QVariantList& values)
{
    Transaction transaction(*this);
    const qint64 affected = run(sql, values);
    transaction.commit();
    return affected;
}

/// Starts a transaction that can write. Compares the store's identifying mark with the mark that
/// this process expects. This is done after the lock has been taken, because a restore holds the
/// same lock until the new file is in place. A store without a mark gets a mark.
void SqliteSession::begin()
{
    run(u"BEGIN IMMEDIATE"_s);
    setInTransaction();
    try {
        requireSameFile();
        StoreMark stored = storedMark();
        if (stored.isEmpty()) {
            renewUse(); // Another station may have created the table since it was looked for.
            stored = storedMark();
        }
        recognise(stored);
        if (stored.isEmpty())
            storeMark(markOfOlderStore());
    } catch (const RunTimeError&) {
        rollback();
        throw;
    }
}

/// Throws StoreReplaced (3197) if the file at the path is not the file that the connection has
/// open. Does nothing if the file at the path is missing or cannot be reached, because SQLite
/// reports that error.
void SqliteSession::requireSameFile() const
{
    const QString found = fileIdentityOf(name());
    if (!fileIdentity_.isEmpty() && !found.isEmpty() && found != fileIdentity_)
        throw replacedError();
}

/// Starts a transaction that reads a snapshot. SQLite takes the snapshot at the first read, so the
/// function reads once.
void SqliteSession::beginSnapshot()
{
    run(u"BEGIN"_s);
    setInTransaction();
    rows(u"SELECT count(*) FROM sqlite_master"_s);
}

std::vector<TableInfo> SqliteSession::tables()
{
    std::vector<TableInfo> all;
    for (const StoredValues& row :
         rows(u"SELECT name, type = 'table' FROM sqlite_master WHERE type IN ('table', 'view') "
              "AND name NOT LIKE 'sqlite!_%' ESCAPE '!' AND name <> $1 ORDER BY rowid"_s,
              {QString(counterTable)}))
        all.push_back({row[0].toString(), row[1].toBool(), {}});
    return all;
}

std::optional<TableInfo> SqliteSession::table(const QString& name)
{
    const auto known = schema().tables.find(name);
    if (known != schema().tables.end())
        return known->second;
    std::vector<TableInfo> read =
        dialect().tablesOf(rows(SqliteDialect::instance().tableQuery(), {name}));
    std::optional<TableInfo> found;
    if (!read.empty())
        found = std::move(read.front());
    return schema().tables.emplace(name, std::move(found)).first->second;
}

std::unique_ptr<Bulk> SqliteSession::bulk()
{
    return std::make_unique<SqliteBulk>(*this, connection_->database());
}

} // namespace dao::sqlite
