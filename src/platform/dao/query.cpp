#include "platform/dao/query.h"

#include "platform/runtime/run_time_error.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array keywords = {"SELECT"_L1, "FROM"_L1, "WHERE"_L1, "ORDER"_L1,
                                 "BY"_L1,     "ASC"_L1,  "DESC"_L1};

bool isWordSign(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

void require(bool isCorrect)
{
    if (!isCorrect)
        throw runtime::RunTimeError(runtime::QuerySyntax);
}

/// Splits a query text into words, numbers and symbols, from the start to the end.
class Reader
{
public:
    explicit Reader(QStringView text) : rest_(text.trimmed()) {}

    bool atEnd() const { return rest_.isEmpty(); }

    bool takeKeyword(QLatin1StringView keyword)
    {
        if (word().compare(keyword, Qt::CaseInsensitive) != 0)
            return false;
        take(word().size());
        return true;
    }

    void expectSign(QChar sign)
    {
        require(rest_.startsWith(sign));
        take(1);
    }

    QString expectName()
    {
        const QStringView name = word();
        require(!name.isEmpty() && !name.front().isNumber());
        for (const QLatin1StringView each : keywords)
            require(name.compare(each, Qt::CaseInsensitive) != 0);
        return take(name.size()).toString();
    }

    QVariant expectNumber()
    {
        const qsizetype sign = rest_.startsWith(u'-') ? 1 : 0;
        const qsizetype whole = run(sign, isDigit);
        qsizetype length = sign + whole;
        qsizetype fraction = 0;
        if (rest_.sliced(length).startsWith(u'.')) {
            fraction = run(length + 1, isDigit);
            length += 1 + fraction;
        }
        require(whole + fraction > 0 && run(length, isWordSign) == 0);
        const QStringView text = take(length);
        bool fits = false;
        const qlonglong number = text.toLongLong(&fits);
        if (fits)
            return number;
        const double decimal = text.toDouble();
        require(std::isfinite(decimal));
        return decimal;
    }

private:
    QStringView word() const { return rest_.first(run(0, isWordSign)); }

    /// Returns the number of consecutive characters, from position `start` on, for which `isOfKind`
    /// is true.
    qsizetype run(qsizetype start, bool (*isOfKind)(QChar)) const
    {
        const QStringView signs = rest_.sliced(start);
        return std::find_if_not(signs.begin(), signs.end(), isOfKind) - signs.begin();
    }

    QStringView take(qsizetype length)
    {
        const QStringView front = rest_.first(length);
        rest_ = rest_.sliced(length).trimmed();
        return front;
    }

    QStringView rest_;
};

} // namespace

bool isQuery(const QString& source)
{
    return Reader(source).takeKeyword("SELECT"_L1);
}

SelectQuery parseQuery(const QString& text)
{
    Reader reader(text);
    SelectQuery query;
    require(reader.takeKeyword("SELECT"_L1));
    reader.expectSign(u'*');
    require(reader.takeKeyword("FROM"_L1));
    query.table = reader.expectName();
    if (reader.takeKeyword("WHERE"_L1)) {
        const QString field = reader.expectName();
        reader.expectSign(u'=');
        query.where = {field, reader.expectNumber()};
    }
    if (reader.takeKeyword("ORDER"_L1)) {
        require(reader.takeKeyword("BY"_L1));
        query.orderBy = reader.expectName();
        reader.takeKeyword("ASC"_L1);
    }
    require(reader.atEnd());
    return query;
}

} // namespace dao
