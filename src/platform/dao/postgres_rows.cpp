// The rows of a whole table on a server, by its own binary copying.

#include "platform/dao/answer_watch.h"
#include "platform/dao/postgres_connection.h"
#include "platform/dao/postgres_driver.h"
#include "platform/dao/row_bytes.h"
#include "platform/dao/row_stream.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QtEndian>

#include <array>
#include <libpq-fe.h>

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// What a binary copy begins with; two numbers of 32 bits follow, of which none says anything.
constexpr QByteArrayView signature("PGCOPY\n\377\r\n", 11);
constexpr qsizetype headLength = signature.size() + 8;
/// Stands in a row's place after the last one.
constexpr qint16 endMark = -1;
constexpr qsizetype blockSize = 1 << 18;

struct ResultCloser
{
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ResultCloser>;

struct MemoryCloser
{
    void operator()(char* memory) const { PQfreemem(memory); }
};
using Message = std::unique_ptr<char, MemoryCloser>;

/// One copying under way on a connection, whose every wait is bounded.
class Copying
{
public:
    Copying(const PostgresDriver& driver, SqlConnection& connection,
            std::chrono::milliseconds patience)
        : driver_(driver), connection_(connection), patience_(patience),
          handle_(
              *static_cast<PGconn* const*>(connection.database().driver()->handle().constData()))
    {
    }

    template <typename Call>
    auto watched(Call&& call)
    {
        const AnswerWatch watch(PQsocket(handle_), patience_);
        auto answer = call();
        if (watch.hasExpired())
            connection_.setLossReason(u"no answer within %1 s"_s.arg(
                std::chrono::duration_cast<std::chrono::seconds>(patience_).count()));
        return answer;
    }

    void start(const QString& sql, ExecStatusType expected)
    {
        const Result result =
            watched([&] { return Result(PQexec(handle_, sql.toUtf8().constData())); });
        if (PQresultStatus(result.get()) != expected)
            fail(result.get());
    }

    /// Waits for the end of the copying. Raises what went wrong with it.
    void end()
    {
        while (const Result result = watched([this] { return Result(PQgetResult(handle_)); })) {
            if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
                fail(result.get());
        }
    }

    /// Raises what the server says of a failure, or what keeps it from saying something.
    [[noreturn]] void fail(const PGresult* result) const
    {
        const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
        const char* message = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
        const char* context = PQresultErrorField(result, PG_DIAG_CONTEXT);
        QString text = QString::fromUtf8(message != nullptr ? message : PQerrorMessage(handle_));
        if (context != nullptr)
            text += u" ("_s + QString::fromUtf8(context).section(u'\n', 0, 0) + u')';
        throw driver_.error(
            QSqlError({}, text, QSqlError::StatementError, QString::fromLatin1(state)));
    }

    PGconn* handle() const { return handle_; }

private:
    const PostgresDriver& driver_;
    SqlConnection& connection_;
    std::chrono::milliseconds patience_;
    PGconn* handle_;
};

/// Brings values that the engines tell apart in bytes and not in meaning to one form.
class Canon
{
public:
    explicit Canon(const TableInfo& table) : table_(table) {}

    void apply(char* row, qsizetype length)
    {
        ++rows_;
        char* place = row + sizeof(qint16);
        const char* end = row + length;
        for (const FieldInfo& field : table_.fields) {
            if (end - place < static_cast<qsizetype>(sizeof(qint32)))
                throw RunTimeError(runtime::InternalError);
            const auto size = qFromBigEndian<qint32>(place);
            place += sizeof(qint32);
            if (size < 0)
                continue;
            apply(field, place);
            place += size;
        }
    }

private:
    void apply(const FieldInfo& field, char* value) const
    {
        if (field.type == dbDouble) {
            const double number = doubleOf(QByteArrayView(value, sizeof(double)));
            if (!qIsFinite(number))
                refuse(field);
            if (number == 0)
                std::fill_n(value, sizeof(double), '\0');
        } else if (field.type == dbBoolean) {
            const bool truth = int16Of(QByteArrayView(value, sizeof(qint16))) != 0;
            std::fill_n(value, sizeof(qint16), truth ? '\xff' : '\0');
        } else if (field.type == dbDate) {
            bound(field, value);
        }
    }

    /// Whole seconds of the years that a date's text has room for.
    void bound(const FieldInfo& field, char* value) const
    {
        constexpr qint64 first = -63082281600; // 0001-01-01
        constexpr qint64 end = 252455616000;   // 10000-01-01
        const qint64 seconds = momentOf(QByteArrayView(value, sizeof(qint64)));
        if (seconds < first || seconds >= end)
            refuse(field);
        qToBigEndian(seconds * 1000000, value);
    }

    [[noreturn]] void refuse(const FieldInfo& field) const
    {
        throw RunTimeError(
            runtime::DataTypeConversion,
            u"%1, row %2: %3 cannot be read"_s.arg(table_.name).arg(rows_).arg(field.name));
    }

    const TableInfo& table_;
    qint64 rows_ = 0;
};

QString selected(const FieldInfo& field)
{
    const QString name = Driver::quoted(field.name);
    switch (field.type) {
    case dbBoolean:
        return u"coalesce(%1::integer, 0)::smallint"_s.arg(name);
    case dbInteger:
        return name + "::smallint"_L1;
    case dbLong:
        return name + "::integer"_L1;
    case dbDouble:
        return name + "::double precision"_L1;
    case dbDate:
        return name + "::timestamp without time zone"_L1;
    case dbText:
        break;
    }
    return name + "::text"_L1;
}

class PostgresStream final : public RowStream
{
public:
    PostgresStream(const Copying& copying, const TableInfo& table, const QString& rowNumber)
        : copying_(copying), table_(table), canon_(table_)
    {
        QStringList columns;
        for (const FieldInfo& each : table.fields)
            columns.append(selected(each));
        copying_.start(u"COPY (SELECT %1 FROM %2 ORDER BY %3) TO STDOUT (FORMAT binary)"_s.arg(
                           columns.join(u", "_s), Driver::quoted(table.name), rowNumber),
                       PGRES_COPY_OUT);
    }
    ~PostgresStream() override
    {
        if (!isOver_)
            giveUp();
    }
    PostgresStream(const PostgresStream&) = delete;
    PostgresStream& operator=(const PostgresStream&) = delete;

    std::optional<QByteArrayView> next() override
    {
        while (at_ == rows_.size()) {
            if (isOver_)
                return {};
            fetch();
        }
        const QByteArrayView row = rows_[at_++].bytes;
        return row;
    }

private:
    struct Row
    {
        Message message;
        QByteArrayView bytes;
    };

    /// Several rows under one watch.
    void fetch()
    {
        rows_.clear();
        at_ = 0;
        copying_.watched([this] {
            while (!isOver_ && rows_.size() < batch)
                fetchRow();
            return true;
        });
        if (isOver_)
            copying_.end();
    }

    void fetchRow()
    {
        char* data = nullptr;
        qsizetype length = PQgetCopyData(copying_.handle(), &data, 0);
        Message message(data);
        if (length < 0) {
            isOver_ = true; // what it was, the end says
            return;
        }
        if (isFirst_) {
            if (!QByteArrayView(data, length).startsWith(signature))
                throw RunTimeError(runtime::InternalError);
            data += headLength;
            length -= headLength;
            isFirst_ = false;
        }
        if (length == 0 || qFromBigEndian<qint16>(data) == endMark)
            return;
        canon_.apply(data, length);
        rows_.push_back({std::move(message), QByteArrayView(data, length)});
    }

    /// The connection is of no use with half a copying on it.
    void giveUp()
    {
        std::array<char, 256> text{};
        PGcancel* cancel = PQgetCancel(copying_.handle());
        PQcancel(cancel, text.data(), static_cast<int>(text.size()));
        PQfreeCancel(cancel);
        copying_.watched([this] {
            char* data = nullptr;
            while (PQgetCopyData(copying_.handle(), &data, 0) > 0)
                PQfreemem(data);
            while (const Result result{PQgetResult(copying_.handle())})
                ;
            return true;
        });
    }

    static constexpr std::size_t batch = 256;

    Copying copying_;
    TableInfo table_;
    Canon canon_;
    std::vector<Row> rows_;
    std::size_t at_ = 0;
    bool isFirst_ = true;
    bool isOver_ = false;
};

class PostgresSink final : public RowSink
{
public:
    PostgresSink(const Copying& copying, const TableInfo& table) : copying_(copying)
    {
        QStringList names;
        for (const FieldInfo& each : table.fields)
            names.append(each.name);
        // Rows of a table that nobody else sees yet need not be marked as seen one by one later.
        copying_.start(u"COPY %1 (%2) FROM STDIN (FORMAT binary, FREEZE)"_s.arg(
                           Driver::quoted(table.name), Driver::quoted(names)),
                       PGRES_COPY_IN);
        block_.reserve(blockSize * 2);
        block_.append(signature.data(), signature.size()).append(qsizetype{8}, '\0');
    }
    ~PostgresSink() override
    {
        if (!isFinished_)
            giveUp();
    }
    PostgresSink(const PostgresSink&) = delete;
    PostgresSink& operator=(const PostgresSink&) = delete;

    void add(QByteArrayView row) override
    {
        block_.append(row.data(), row.size());
        if (block_.size() >= blockSize)
            send();
    }

    void finish() override
    {
        const qint16 mark = qToBigEndian(endMark);
        block_.append(reinterpret_cast<const char*>(&mark), sizeof(mark));
        send();
        isFinished_ = true;
        copying_.watched([this] { return PQputCopyEnd(copying_.handle(), nullptr); });
        copying_.end();
    }

private:
    void send()
    {
        const int sent = copying_.watched([this] {
            return PQputCopyData(copying_.handle(), block_.constData(),
                                 static_cast<int>(block_.size()));
        });
        block_.resize(0);
        if (sent == 1)
            return;
        isFinished_ = true;
        copying_.end();
        copying_.fail(nullptr);
    }

    void giveUp()
    {
        copying_.watched([this] {
            PQputCopyEnd(copying_.handle(), "the rows could not be read");
            while (const Result result{PQgetResult(copying_.handle())})
                ;
            return true;
        });
    }

    Copying copying_;
    QByteArray block_;
    bool isFinished_ = false;
};

} // namespace

void PostgresDriver::beginReading()
{
    run(u"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"_s);
    setInTransaction();
    run(u"SET LOCAL idle_in_transaction_session_timeout = 0"_s);
}

std::unique_ptr<RowStream> PostgresDriver::rowStream(const TableInfo& table)
{
    return std::make_unique<PostgresStream>(Copying(*this, sqlConnection(), waits_.answer), table,
                                            rowNumber(table));
}

std::unique_ptr<RowSink> PostgresDriver::rowSink(const TableInfo& table)
{
    run(u"SET LOCAL idle_in_transaction_session_timeout = 0"_s);
    return std::make_unique<PostgresSink>(Copying(*this, sqlConnection(), waits_.answer), table);
}

std::optional<qint64> PostgresDriver::counterMark(const QString& table, const QString& field)
{
    if (!counterValue(table, field).isEmpty())
        return {};
    return rows(u"SELECT coalesce(pg_sequence_last_value("
                "pg_get_serial_sequence(?, ?)::regclass), 0)"_s,
                {quoted(table), field})
        .front()
        .front()
        .toLongLong();
}

qint64 PostgresDriver::highestGiven(const QString& table, const QString& field)
{
    return rows(u"SELECT greatest((SELECT max(%1) FROM %2), "
                "pg_sequence_last_value(pg_get_serial_sequence(?, ?)::regclass), 0)"_s.arg(
                    quoted(field), quoted(table)),
                {quoted(table), field})
        .front()
        .front()
        .toLongLong();
}

void PostgresDriver::countOnFrom(const QString& table, const QString& field, qint64 highest)
{
    if (highest > 0)
        rows(u"SELECT setval(pg_get_serial_sequence(?, ?), ?)"_s, {quoted(table), field, highest});
}

void PostgresDriver::learnContents(const QString& table)
{
    run(u"ANALYZE "_s + quoted(table));
}

QString PostgresDriver::setAside(const QStringList& tables)
{
    const QString first = u"before_restore"_s;
    QString schema = first;
    for (int number = 2; !rows(u"SELECT 1 FROM pg_namespace WHERE nspname = ?"_s, {schema}).empty();
         ++number)
        schema = u"%1_%2"_s.arg(first).arg(number);
    run(u"CREATE SCHEMA "_s + quoted(schema));
    for (const QString& each : tables)
        run(u"ALTER TABLE %1 SET SCHEMA %2"_s.arg(quoted(each), quoted(schema)));
    return u"schema '%1' of %2"_s.arg(schema, link_.place());
}

} // namespace dao
