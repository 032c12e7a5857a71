#include "platform/dao/driver.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QStringTokenizer>

namespace dao {

using namespace Qt::StringLiterals;

int TableInfo::ordinalOf(const QString& fieldName) const
{
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].name.compare(fieldName, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

namespace {

QString nextConnectionName()
{
    static int made = 0;
    return u"dao-%1"_s.arg(++made);
}

} // namespace

SqlConnection::SqlConnection(const QString& plugin)
    : name_(nextConnectionName()), database_(QSqlDatabase::addDatabase(plugin, name_))
{
}

SqlConnection::~SqlConnection()
{
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

void Driver::commit()
{
    run(u"COMMIT"_s);
    inTransaction_ = false;
}

void Driver::rollback()
{
    inTransaction_ = false;
    run(u"ROLLBACK"_s);
}

QSqlQuery Driver::run(const QString& sql, const QVariantList& values)
{
    QSqlQuery query(connection_.database());
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        throw error(query.lastError());
    for (const QVariant& each : values)
        query.addBindValue(each);
    if (!query.exec())
        throw error(query.lastError());
    return query;
}

std::vector<StoredValues> Driver::rows(const QString& sql, const QVariantList& values)
{
    QSqlQuery query = run(sql, values);
    const int columns = query.record().count();
    std::vector<StoredValues> all;
    while (query.next()) {
        StoredValues row;
        row.reserve(static_cast<std::size_t>(columns));
        for (int i = 0; i < columns; ++i)
            row.push_back(query.value(i));
        all.push_back(std::move(row));
    }
    if (query.lastError().isValid())
        throw error(query.lastError());
    return all;
}

RowNumbers Driver::rowNumbers(const QString& select, const QVariantList& values)
{
    const QString text = rows(joined(select), values).front().front().toString();
    RowNumbers numbers;
    if (text.isEmpty())
        return numbers;
    numbers.reserve(static_cast<std::size_t>(text.count(u',')) + 1);
    for (const QStringView each : QStringTokenizer(text, u','))
        numbers.push_back(each.toLongLong());
    return numbers;
}

QString Driver::quoted(const QString& name)
{
    QString inner = name;
    return u'"' + inner.replace(u'"', u"\"\""_s) + u'"';
}

QString Driver::quoted(const QStringList& names)
{
    QStringList all;
    for (const QString& each : names)
        all.append(quoted(each));
    return all.join(u", "_s);
}

Together::Together(Driver& driver) : driver_(driver), own_(!driver.inTransaction())
{
    if (own_)
        driver_.begin();
}

Together::~Together()
{
    if (!own_)
        return;
    try {
        driver_.rollback();
    } catch (const runtime::RunTimeError&) {
        // The engine has rolled back by itself; the failure that led here is the one to tell.
        return;
    }
}

void Together::commit()
{
    if (own_)
        driver_.commit();
    own_ = false;
}

} // namespace dao
