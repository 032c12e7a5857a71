#include "platform/dao/query.h"

#include "platform/runtime/run_time_error.h"

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

/// Splits a query text into words, numbers and symbols from the front.
class Reader
{
public:
    explicit Reader(QStringView text) : rest_(text) { skipBlanks(); }

    bool atEnd() const { return rest_.isEmpty(); }

    bool takeKeyword(QLatin1StringView keyword)
    {
        if (word().compare(keyword, Qt::CaseInsensitive) != 0)
            return false;
        advance(word().size());
        return true;
    }

    void expectKeyword(QLatin1StringView keyword)
    {
        if (!takeKeyword(keyword))
            fail();
    }

    void expectSign(QChar sign)
    {
        if (atEnd() || rest_.front() != sign)
            fail();
        advance(1);
    }

    QString expectName()
    {
        const QStringView name = word();
        if (name.isEmpty() || name.front().isNumber())
            fail();
        for (const QLatin1StringView each : keywords) {
            if (name.compare(each, Qt::CaseInsensitive) == 0)
                fail();
        }
        QString result = name.toString();
        advance(name.size());
        return result;
    }

    QVariant expectNumber()
    {
        qsizetype length = !atEnd() && rest_.front() == u'-' ? 1 : 0;
        const qsizetype whole = digitsFrom(length);
        length += whole;
        const bool decimal = length < rest_.size() && rest_[length] == u'.';
        const qsizetype fraction = decimal ? digitsFrom(length + 1) : 0;
        if (decimal)
            length += 1 + fraction;
        if (whole + fraction == 0 || (length < rest_.size() && isWordSign(rest_[length])))
            fail();
        const QStringView text = rest_.first(length);
        bool fits = false;
        QVariant number = text.toLongLong(&fits);
        if (!fits) {
            const double value = text.toDouble();
            if (!std::isfinite(value))
                fail();
            number = value;
        }
        advance(length);
        return number;
    }

    [[noreturn]] static void fail() { throw runtime::RunTimeError(runtime::QuerySyntax); }

private:
    QStringView word() const
    {
        qsizetype length = 0;
        while (length < rest_.size() && isWordSign(rest_[length]))
            ++length;
        return rest_.first(length);
    }

    qsizetype digitsFrom(qsizetype start) const
    {
        qsizetype end = start;
        while (end < rest_.size() && isDigit(rest_[end]))
            ++end;
        return end - start;
    }

    void advance(qsizetype length)
    {
        rest_ = rest_.sliced(length);
        skipBlanks();
    }

    void skipBlanks()
    {
        while (!rest_.isEmpty() && rest_.front().isSpace())
            rest_ = rest_.sliced(1);
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
    reader.expectKeyword("SELECT"_L1);
    reader.expectSign(u'*');
    reader.expectKeyword("FROM"_L1);
    query.table = reader.expectName();
    if (reader.takeKeyword("WHERE"_L1)) {
        const QString field = reader.expectName();
        reader.expectSign(u'=');
        query.where = {field, reader.expectNumber()};
    }
    if (reader.takeKeyword("ORDER"_L1)) {
        reader.expectKeyword("BY"_L1);
        query.orderBy = reader.expectName();
        reader.takeKeyword("ASC"_L1);
    }
    if (!reader.atEnd())
        Reader::fail();
    return query;
}

} // namespace dao
