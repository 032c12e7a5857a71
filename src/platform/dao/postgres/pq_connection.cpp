#include "platform/dao/postgres/pq_connection.h"

#include "platform/dao/postgres/pq_login.h"

#include <QLocale>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// The object ids of PostgreSQL's built-in types.
enum TypeNumber : Oid {
    Unspecified = 0,
    Boolean = 16,
    Int8 = 20,
    Int2 = 21,
    Int4 = 23,
    ObjectNumber = 26,
    Float4 = 700,
    Float8 = 701,
    Numeric = 1700,
};

/// The maximum number of prepared statements of a connection. Further statements are executed
/// unprepared. The forms repeat fewer different statements than this.
constexpr std::size_t mostKept = 200;

/// Converts the parameter values of a statement to the arrays that libpq takes. A number is sent
/// with its type. For any other value, the server infers the type from the statement.
class Parameters
{
public:
    explicit Parameters(const QVariantList& values)
    {
        for (const QVariant& each : values)
            add(each);
        for (const QByteArray& each : texts_)
            pointers_.push_back(each.isNull() ? nullptr : each.constData());
    }

    int count() const { return static_cast<int>(types_.size()); }
    const Oid* types() const { return types_.data(); }
    const char* const* values() const { return pointers_.data(); }
    /// Returns a text that represents the types of the parameters. Parameters of different types
    /// have different texts.
    QString signature() const
    {
        QString all;
        for (const Oid each : types_)
            all += QString::number(each) + u',';
        return all;
    }

private:
    void add(const QVariant& value)
    {
        Oid type = Unspecified;
        QByteArray text;
        if (value.isValid() && !value.isNull()) {
            switch (value.typeId()) {
            case QMetaType::Bool:
                type = Int8;
                text = value.toBool() ? "-1" : "0";
                break;
            case QMetaType::Int:
            case QMetaType::LongLong:
                type = Int8;
                text = QByteArray::number(value.toLongLong());
                break;
            case QMetaType::Double:
                type = qIsFinite(value.toDouble()) ? Numeric : Unspecified;
                text = QByteArray::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
                break;
            default:
                text = textOf(value.toString());
            }
        }
        types_.push_back(type);
        texts_.push_back(text);
    }

    static QByteArray textOf(const QString& text)
    {
        if (text.contains(QChar(u'\0')))
            throw RunTimeError(runtime::DataTypeConversion);
        return text.isEmpty() ? QByteArray("") : text.toUtf8();
    }

    std::vector<Oid> types_;
    std::vector<QByteArray> texts_;
    std::vector<const char*> pointers_;
};

QVariant decimalOf(QByteArrayView text)
{
    if (text == "NaN")
        return qQNaN();
    if (text == "Infinity")
        return qInf();
    if (text == "-Infinity")
        return -qInf();
    return text.toDouble();
}

QVariant valueIn(const PGresult* result, int row, int column)
{
    if (PQ(getisnull)(result, row, column) != 0)
        return {};
    const QByteArrayView text(PQ(getvalue)(result, row, column),
                              PQ(getlength)(result, row, column));
    switch (PQ(ftype)(result, column)) {
    case Boolean:
        return text == "t";
    case Int2:
    case Int4:
        return text.toInt();
    case Int8:
    case ObjectNumber:
        return text.toLongLong();
    case Float4:
    case Float8:
    case Numeric:
        return decimalOf(text);
    default:
        return QString::fromUtf8(text);
    }
}

QString stateOf(const PGresult* result)
{
    return QString::fromLatin1(PQ(resultErrorField)(result, PG_DIAG_SQLSTATE));
}

/// Returns true if the server has refused to execute a prepared statement, because its tables have
/// changed or because the server no longer has the prepared statement.
bool isOutdated(const PGresult* result)
{
    const QString state = stateOf(result);
    return state == "0A000"_L1 || state == "26000"_L1;
}

bool isFailure(const PGresult* result)
{
    switch (PQ(resultStatus)(result)) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_EMPTY_QUERY:
    case PGRES_COPY_IN:
    case PGRES_COPY_OUT:
        return false;
    default:
        return true;
    }
}

} // namespace

PqConnection::PqConnection(Link link, const Timeouts& timeouts)
    : link_(std::move(link)), timeouts_(timeouts), handle_(logIn(link_, timeouts_))
{
}

Answer PqConnection::execute(const QString& sql, const QVariantList& values)
{
    const QByteArray text = sql.toUtf8();
    if (values.isEmpty())
        return answerOf(
            lastResult(PQ(sendQuery)(handle_.get(), text.constData()) == 1, timeouts_.answer));
    const Parameters parameters(values);
    const int sent =
        PQ(sendQueryParams)(handle_.get(), text.constData(), parameters.count(), parameters.types(),
                            parameters.values(), nullptr, nullptr, 0);
    return answerOf(lastResult(sent == 1, timeouts_.answer));
}

Answer PqConnection::executeKept(const QString& sql, const QVariantList& values)
{
    const Parameters parameters(values);
    const auto [kept, isNew] = kept_.try_emplace(parameters.signature() + sql);
    if (isNew) {
        if (kept_.size() > mostKept)
            kept_.erase(kept);
        return execute(sql, values);
    }
    if (kept->second.isEmpty()) {
        const QByteArray name = "zomrel_" + QByteArray::number(++keptCount_);
        const int sent = PQ(sendPrepare)(handle_.get(), name.constData(), sql.toUtf8().constData(),
                                         parameters.count(), parameters.types());
        answerOf(lastResult(sent == 1, timeouts_.answer));
        kept->second = name;
    }
    const int sent =
        PQ(sendQueryPrepared)(handle_.get(), kept->second.constData(), parameters.count(),
                              parameters.values(), nullptr, nullptr, 0);
    const Result result = lastResult(sent == 1, timeouts_.answer);
    if (!isOutdated(result.get()))
        return answerOf(result);
    kept_.erase(kept);
    return execute(sql, values);
}

void PqConnection::prepare(const QByteArray& name, const QString& sql,
                           std::chrono::milliseconds patience)
{
    const int sent =
        PQ(sendPrepare)(handle_.get(), name.constData(), sql.toUtf8().constData(), 0, nullptr);
    answerOf(lastResult(sent == 1, patience));
}

Answer PqConnection::executePrepared(const QByteArray& name, std::chrono::milliseconds patience)
{
    const int sent =
        PQ(sendQueryPrepared)(handle_.get(), name.constData(), 0, nullptr, nullptr, nullptr, 0);
    return answerOf(lastResult(sent == 1, patience));
}

bool PqConnection::isLost()
{
    // A server that shuts down sends a message and then closes the connection. The first call of
    // PQconsumeInput reads the message. The second call detects that the connection is closed.
    PQ(consumeInput)(handle_.get());
    PQ(consumeInput)(handle_.get());
    return PQ(status)(handle_.get()) != CONNECTION_OK;
}

bool PqConnection::hasFailedTransaction() const
{
    return PQ(transactionStatus)(handle_.get()) == PQTRANS_INERROR;
}

void PqConnection::abandon(const QString& reason)
{
    lossReason_ = reason;
    handle_.reset();
}

RunTimeError PqConnection::lossError(const QString& reason) const
{
    const QString told = !lossReason_.isEmpty() ? lossReason_
                         : !reason.isEmpty()    ? reason
                                                : u"it is closed"_s;
    return RunTimeError(runtime::CallFailed,
                        u"The connection to %1 was lost: %2"_s.arg(link_.place(), told));
}

void PqConnection::startCopy(const QString& sql)
{
    const bool isSent = PQ(sendQuery)(handle_.get(), sql.toUtf8().constData()) == 1;
    const Deadline deadline(timeouts_.answer);
    if (isSent)
        flush(deadline);
    const Result result = nextResult(deadline);
    const ExecStatusType status = PQ(resultStatus)(result.get());
    if (status == PGRES_COPY_IN || status == PGRES_COPY_OUT)
        return;
    while (nextResult(deadline))
        ;
    fail(result.get());
}

std::optional<QByteArrayView> PqConnection::nextCopied()
{
    copied_.reset();
    const Deadline deadline(timeouts_.answer);
    char* data = nullptr;
    constexpr int withoutWaiting = 1;
    int length = 0;
    while ((length = PQ(getCopyData)(handle_.get(), &data, withoutWaiting)) == 0) {
        await(Readiness::ToRead, deadline);
        if (PQ(consumeInput)(handle_.get()) == 0)
            fail(nullptr);
    }
    if (length > 0) {
        copied_.reset(data);
        return QByteArrayView(data, length);
    }
    answerOf(lastResult(true, timeouts_.answer));
    return {};
}

void PqConnection::sendCopied(QByteArrayView block)
{
    const Deadline deadline(timeouts_.answer);
    int queued = 0;
    while ((queued =
                PQ(putCopyData)(handle_.get(), block.data(), static_cast<int>(block.size()))) == 0)
        flush(deadline);
    if (queued < 0)
        fail(nullptr);
    flush(deadline);
}

void PqConnection::endCopy(const char* refusal)
{
    int ended = 0;
    while ((ended = PQ(putCopyEnd)(handle_.get(), refusal)) == 0)
        flush(Deadline(timeouts_.answer));
    const Result result = lastResult(ended == 1, timeouts_.answer);
    if (refusal == nullptr)
        answerOf(result);
}

void PqConnection::await(Readiness readiness, const Deadline& deadline)
{
    if (waitFor(handle_.get(), readiness, deadline))
        return;
    abandon(deadline.message());
    throw lossError();
}

void PqConnection::flush(const Deadline& deadline)
{
    int unsent = 0;
    while ((unsent = PQ(flush)(handle_.get())) == 1) {
        await(Readiness::ToReadOrWrite, deadline);
        // While the program sends data, it also reads what the server has sent. Otherwise the
        // server may stop receiving data.
        PQ(consumeInput)(handle_.get());
    }
}

Result PqConnection::nextResult(const Deadline& deadline)
{
    while (PQ(isBusy)(handle_.get()) == 1) {
        await(Readiness::ToRead, deadline);
        if (PQ(consumeInput)(handle_.get()) == 0)
            break; // PQgetResult returns the error.
    }
    return Result(PQ(getResult)(handle_.get()));
}

/// Reads all results of a statement and returns the last result. If the statement has failed, the
/// last result contains the error.
Result PqConnection::lastResult(bool isSent, std::chrono::milliseconds patience)
{
    if (!isSent)
        fail(nullptr);
    const Deadline deadline(patience);
    flush(deadline);
    Result last;
    while (Result next = nextResult(deadline))
        last = std::move(next);
    return last;
}

Answer PqConnection::answerOf(const Result& result)
{
    if (!result || isFailure(result.get()))
        fail(result.get());
    Answer answer;
    const int columns = PQ(nfields)(result.get());
    const int rows = PQ(ntuples)(result.get());
    answer.rows.reserve(static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
        StoredValues values;
        values.reserve(static_cast<std::size_t>(columns));
        for (int column = 0; column < columns; ++column)
            values.push_back(valueIn(result.get(), row, column));
        answer.rows.push_back(std::move(values));
    }
    answer.affected = QByteArrayView(PQ(cmdTuples)(result.get())).toLongLong();
    return answer;
}

/// Throws the error in the result. If the result contains no error, throws the error of the
/// connection.
void PqConnection::fail(const PGresult* result)
{
    const char* context = PQ(resultErrorField)(result, PG_DIAG_CONTEXT);
    const char* message = context != nullptr ? PQ(resultErrorField)(result, PG_DIAG_MESSAGE_PRIMARY)
                          : result != nullptr ? PQ(resultErrorMessage)(result)
                                              : PQ(errorMessage)(handle_.get());
    QString text = QString::fromUtf8(message).simplified();
    if (context != nullptr)
        text += u" ("_s + QString::fromUtf8(context).section(u'\n', 0, 0) + u')';
    if (isLost())
        throw lossError(text);
    throw errorOf(stateOf(result), text, link_);
}

} // namespace dao::postgres
