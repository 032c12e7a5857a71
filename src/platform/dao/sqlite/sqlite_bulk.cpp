// Reads the rows of an embedded store's tables as bytes, and writes rows from bytes.

#include "platform/dao/sqlite/sqlite_bulk.h"
#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/row_bytes.h"
#include "platform/dao/engine/values.h"
#include "platform/dao/sqlite/sqlite_dialect.h"
#include "platform/dao/sqlite/sqlite_errors.h"

#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <limits>
#include <vector>

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

const QDate firstDay(2000, 1, 1);
constexpr qint64 secondsOfADay = 86400;

QStringList namesOf(const TableInfo& table)
{
    QStringList names;
    for (const FieldInfo& each : table.fields)
        names.append(each.name);
    return names;
}

/// Returns the seconds from the start of the year 2000 to a date such as 2026-03-01. Returns
/// nothing if the text has another form. Most stored dates have this form.
std::optional<qint64> dayOf(QStringView text)
{
    constexpr qsizetype length = 10; // 2026-03-01
    if (text.size() != length || text[4] != u'-' || text[7] != u'-')
        return {};
    const auto number = [&](qsizetype first, qsizetype count) {
        int value = 0;
        for (const QChar c : text.sliced(first, count)) {
            if (c < u'0' || c > u'9')
                return -1;
            value = value * 10 + (c.unicode() - u'0');
        }
        return value;
    };
    const QDate day(number(0, 4), number(5, 2), number(8, 2));
    if (!day.isValid() || day.year() < 1)
        return {};
    return firstDay.daysTo(day) * secondsOfADay;
}

qint64 secondsOf(const QVariant& moment)
{
    const qint64 days = firstDay.daysTo(moment.toDate()) * secondsOfADay;
    return moment.typeId() == QMetaType::QDate
               ? days
               : days + moment.toTime().msecsSinceStartOfDay() / 1000;
}

/// Appends a field value, which the function fromStored has returned, to the bytes of a row.
void addValue(RowWriter& row, const FieldInfo& field, const QVariant& value)
{
    switch (value.isValid() ? field.type : 0) {
    case 0:
        return row.addNull();
    case dbBoolean:
    case dbInteger:
        return row.addInt16(static_cast<qint16>(value.toInt()));
    case dbLong:
        return row.addInt32(value.toInt());
    case dbDouble:
        return row.addDouble(value.toDouble());
    case dbDate:
        return row.addMoment(secondsOf(value));
    default:
        return row.addText(value.toString());
    }
}

void addText(RowWriter& row, const FieldInfo& field, const QString& text)
{
    if (field.size > 0 && text.size() > field.size)
        throw RunTimeError(runtime::FieldTooSmall,
                           u"has %1 characters and takes %2"_s.arg(text.size()).arg(field.size));
    if (text.contains(QChar(u'\0')))
        throw RunTimeError(runtime::DataTypeConversion, u"holds a sign that has no place"_s);
    row.addText(text);
}

template <typename T>
const T& held(const QVariant& value)
{
    return *static_cast<const T*>(value.constData());
}

/// Appends the stored text of a text or date field to the bytes of a row. If the text must first be
/// converted to a field value, appends nothing and returns false.
bool addStoredText(RowWriter& row, const FieldInfo& field, const QString& text)
{
    if (text.isNull()) // Qt returns Null as a null QString.
        return false;
    if (field.type == dbText) {
        addText(row, field, text);
        return true;
    }
    const std::optional<qint64> day = field.type == dbDate ? dayOf(text) : std::nullopt;
    if (day)
        row.addMoment(*day);
    return day.has_value();
}

/// Appends a stored value to the bytes of a row. For the most common types, this needs no
/// conversion to a field value and is therefore faster.
void addStored(RowWriter& row, const FieldInfo& field, const QVariant& stored)
{
    switch (stored.typeId()) {
    case QMetaType::QString:
        if (addStoredText(row, field, held<QString>(stored)))
            return;
        break;
    case QMetaType::Double:
        if (field.type == dbDouble && qIsFinite(held<double>(stored)))
            return row.addDouble(held<double>(stored));
        break;
    case QMetaType::LongLong: {
        const auto number = held<qlonglong>(stored);
        if (field.type == dbLong && number == static_cast<qint32>(number))
            return row.addInt32(static_cast<qint32>(number));
        break;
    }
    default:
        break;
    }
    addValue(row, field, fromStored(field, stored));
}

class SqliteStream final : public RowStream
{
public:
    SqliteStream(const Session& session, const TableInfo& table, QSqlQuery query)
        : table_(table), query_(std::move(query))
    {
        query_.setForwardOnly(true);
        const QString number = session.rowNumber(table);
        if (!query_.exec(u"SELECT %1 FROM %2 ORDER BY %3"_s.arg(
                Dialect::quoted(namesOf(table)), Dialect::quoted(table.name), number)))
            throw errorOf(query_.lastError());
    }

    std::optional<QByteArrayView> next() override
    {
        if (!query_.next()) {
            if (query_.lastError().isValid())
                throw errorOf(query_.lastError());
            return {};
        }
        ++rows_;
        row_.clear();
        const std::size_t count = table_.fields.size();
        row_.begin(static_cast<int>(count));
        for (std::size_t i = 0; i < count; ++i)
            add(i);
        return row_.bytes();
    }

private:
    void add(std::size_t ordinal)
    {
        const FieldInfo& field = table_.fields[ordinal];
        try {
            addStored(row_, field, query_.value(static_cast<int>(ordinal)));
        } catch (const RunTimeError& error) {
            const bool own = error.number() == runtime::FieldTooSmall ||
                             error.description() != runtime::errorDescription(error.number());
            throw RunTimeError(
                error.number(),
                u"%1, %2: %3 %4"_s.arg(table_.name, place(), field.name,
                                       own ? error.description() : u"cannot be read"_s));
        }
    }

    /// Returns a text that describes the current row in messages. If the first field is a whole
    /// number, it usually is the key, and the text contains its name and value. Otherwise the text
    /// contains the position of the row.
    QString place() const
    {
        const QVariant key = query_.value(0);
        return key.typeId() == QMetaType::LongLong
                   ? table_.fields.front().name + u' ' + key.toString()
                   : u"row %1"_s.arg(rows_);
    }

    TableInfo table_;
    QSqlQuery query_;
    RowWriter row_;
    qint64 rows_ = 0;
};

/// Converts the bytes of a field to the value that is bound to the INSERT statement.
QVariant boundValue(const FieldInfo& field, const std::optional<QByteArrayView>& bytes)
{
    if (!bytes)
        return {};
    switch (field.type) {
    case dbBoolean:
    case dbInteger:
        return int{int16Of(*bytes)};
    case dbLong:
        return int{int32Of(*bytes)};
    case dbDouble:
        return doubleOf(*bytes);
    case dbDate: {
        const qint64 seconds = momentOf(*bytes);
        const qint64 days = seconds / secondsOfADay - (seconds % secondsOfADay < 0 ? 1 : 0);
        const QDate day = firstDay.addDays(days);
        const QTime time = QTime::fromMSecsSinceStartOfDay(
            static_cast<int>((seconds - days * secondsOfADay) * 1000));
        return toStored(field,
                        time == QTime(0, 0) ? QVariant(day) : QVariant(QDateTime(day, time)));
    }
    case dbText:
        break;
    }
    return QString::fromUtf8(*bytes);
}

class SqliteSink final : public RowSink
{
public:
    SqliteSink(const TableInfo& table, QSqlQuery query)
        : fields_(table.fields), query_(std::move(query)), last_(fields_.size())
    {
        const QStringList places(static_cast<qsizetype>(fields_.size()), u"?"_s);
        if (!query_.prepare(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(
                Dialect::quoted(table.name), Dialect::quoted(namesOf(table)),
                places.join(u", "_s))))
            throw errorOf(query_.lastError());
    }

    /// Inserts a row. A value that equals the previous row's value of the same field is still bound
    /// to the INSERT statement and need not be converted again. This saves most conversions,
    /// because the lines of an order are similar.
    void add(QByteArrayView row) override
    {
        thisRow_.resize(0); // Unlike clear(), this keeps the allocated memory.
        thisRow_.append(row);
        RowReader reader(thisRow_);
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const std::optional<QByteArrayView> field = reader.next();
            if (isFirst_ || !isSame(field, last_[i]))
                query_.bindValue(static_cast<int>(i), boundValue(fields_[i], field));
            last_[i] = field;
        }
        isFirst_ = false;
        std::swap(lastRow_, thisRow_); // last_ refers to the bytes of the previous row.
        if (!query_.exec())
            throw errorOf(query_.lastError());
    }

    void finish() override { query_ = QSqlQuery(); }

private:
    using Field = std::optional<QByteArrayView>;

    static bool isSame(const Field& one, const Field& other)
    {
        if (!one || !other)
            return one.has_value() == other.has_value();
        return *one == *other;
    }

    std::vector<FieldInfo> fields_;
    QSqlQuery query_;
    std::vector<Field> last_;
    QByteArray lastRow_;
    QByteArray thisRow_;
    bool isFirst_ = true;
};

} // namespace

QStringList SqliteBulk::integrityFindings()
{
    QStringList findings;
    for (const StoredValues& row : session_.rows(u"PRAGMA integrity_check"_s))
        findings.append(row.front().toString());
    // For a store without defects, PRAGMA integrity_check returns the single line "ok". This line
    // is not a defect.
    if (findings == QStringList(u"ok"_s))
        findings.clear();
    return findings;
}

bool SqliteBulk::exists(const QString& type, const QString& name)
{
    return !session_
                .rows(u"SELECT 1 FROM sqlite_master WHERE type = $1 AND name = $2 COLLATE NOCASE"_s,
                      {type, name})
                .empty();
}

std::optional<qint64> SqliteBulk::counterMark(const QString& table, const QString& field)
{
    if (!exists(u"trigger"_s, insertTriggerName(table, field)) ||
        !exists(u"trigger"_s, updateTriggerName(table, field)))
        return {};
    return storedMark(table);
}

std::optional<qint64> SqliteBulk::storedMark(const QString& table)
{
    if (!exists(u"table"_s, counterTable))
        return {};
    const std::vector<StoredValues> found = session_.rows(
        u"SELECT last_number FROM %1 WHERE table_name = $1"_s.arg(counterTable), {table});
    if (found.empty())
        return {};
    return found.front().front().toLongLong();
}

qint64 SqliteBulk::highestGiven(const QString& table, const QString& field)
{
    const qint64 stored =
        session_.rows("SELECT "_L1 + highestStored(table, field)).front().front().toLongLong();
    return std::max(stored, storedMark(table).value_or(0));
}

void SqliteBulk::countOnFrom(const QString& table, const QString&, qint64 highest)
{
    session_.run(
        u"INSERT OR REPLACE INTO %1 (table_name, last_number) VALUES ($1, $2)"_s.arg(counterTable),
        {table, highest});
}

std::unique_ptr<RowStream> SqliteBulk::rowStream(const TableInfo& table)
{
    return std::make_unique<SqliteStream>(session_, table, QSqlQuery(database_));
}

std::unique_ptr<RowSink> SqliteBulk::rowSink(const TableInfo& table)
{
    // A large cache keeps SQLite from writing changed pages to the disk before the commit.
    QSqlQuery(database_).exec(u"PRAGMA cache_size = -16384"_s); // KiB
    return std::make_unique<SqliteSink>(table, QSqlQuery(database_));
}

} // namespace dao::sqlite
