#include "platform/dao/engine/session.h"

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

bool mayChangeTheSchema(const QString& sql)
{
    for (const auto verb : {"SELECT"_L1, "WITH"_L1, "INSERT"_L1, "UPDATE"_L1, "DELETE"_L1}) {
        if (sql.startsWith(verb))
            return false;
    }
    return true;
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

qint64 Driver::run(const QString& sql, const QVariantList& values)
{
    return execute(sql, values).affected;
}

std::vector<StoredValues> Driver::rows(const QString& sql, const QVariantList& values)
{
    return execute(sql, values).rows;
}

RowNumbers Driver::rowNumbers(const QString& joined)
{
    RowNumbers numbers;
    if (joined.isEmpty())
        return numbers;
    numbers.reserve(static_cast<std::size_t>(joined.count(u',')) + 1);
    for (const QStringView each : QStringTokenizer(joined, u','))
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
