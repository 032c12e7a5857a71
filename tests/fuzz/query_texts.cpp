// Fuzzes the query parser.

#include "fuzz/fuzz.h"

#include "platform/dao/query.h"
#include "platform/runtime/run_time_error.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

std::optional<dao::SelectQuery> parsed(const QString& text)
{
    try {
        return dao::parseQuery(text);
    } catch (const runtime::RunTimeError& error) {
        fuzz::require(error.number() == runtime::QuerySyntax, "a rejected query is a syntax error",
                      text);
        return std::nullopt;
    }
}

bool isKeyword(const QString& name)
{
    static const QStringList keywords{u"SELECT"_s, u"FROM"_s, u"WHERE"_s, u"ORDER"_s,
                                      u"BY"_s,     u"ASC"_s,  u"DESC"_s};
    return keywords.contains(name, Qt::CaseInsensitive);
}

/// Returns true for a name of letters, digits and underscores that starts with no digit and is no
/// keyword. Such a name cannot end a quoted identifier.
bool isName(const QString& name)
{
    return !name.isEmpty() && !name.front().isNumber() && !isKeyword(name) &&
           std::all_of(name.begin(), name.end(),
                       [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
}

/// An independent implementation of the grammar as one regular expression, for texts with the
/// letters that the program itself uses.
const QRegularExpression& grammar()
{
    static const QRegularExpression pattern = [] {
        const QString blanks = uR"([\t-\r ]*+)"_s;
        const QString word = uR"([0-9A-Za-z_\x{5d0}-\x{5ea}])"_s;
        const QString end = u"(?!"_s + word + u')' + blanks;
        const QString name = u"((?!(?:SELECT|FROM|WHERE|ORDER|BY|ASC|DESC)"_s + end +
                             u")(?![0-9])"_s + word + u"++)"_s;
        const QString number = uR"((-?(?:[0-9]+(?:\.[0-9]*)?|\.[0-9]+)))"_s;
        return QRegularExpression(
            uR"(\A%1SELECT%2\*%1FROM%2%3%1)"
            uR"((?:WHERE%2%3%1=%1%4%2)?(?:ORDER%2BY%2%3%1(?:ASC%2)?)?\z)"_s.arg(blanks, end, name,
                                                                                number),
            QRegularExpression::CaseInsensitiveOption);
    }();
    return pattern;
}

bool isOfThePattern(QChar c)
{
    return (c >= u' ' && c <= u'~') || (c >= u'\t' && c <= u'\r') ||
           (c >= QChar(0x5d0) && c <= QChar(0x5ea));
}

void checkAgainstGrammar(const QString& text, const std::optional<dao::SelectQuery>& query)
{
    if (!std::all_of(text.begin(), text.end(), isOfThePattern))
        return;
    const QRegularExpressionMatch match = grammar().match(text);
    const QByteArray number = match.captured(3).toLatin1();
    const bool isFinite = std::isfinite(std::strtod(number.constData(), nullptr));
    fuzz::require(query.has_value() == (match.hasMatch() && isFinite), "a valid query is accepted",
                  text);
    if (!query)
        return;
    fuzz::require(query->table == match.captured(1), "the table is the one named", text);
    fuzz::require(query->where.has_value() == match.hasCaptured(2), "the condition is parsed",
                  text);
    fuzz::require(query->orderBy == match.captured(4), "the order is read", text);
    if (query->where) {
        fuzz::require(query->where->field == match.captured(2), "the field is read", text);
        fuzz::require(query->where->value.toDouble() == std::strtod(number.constData(), nullptr),
                      "the number is read", text);
    }
}

/// Returns the query in its canonical form.
QString spelled(const dao::SelectQuery& query)
{
    QString text = u"SELECT * FROM "_s + query.table;
    if (query.where) {
        const QVariant& value = query.where->value;
        text += u" WHERE "_s + query.where->field + u'=' +
                (value.typeId() == QMetaType::Double ? QString::number(value.toDouble(), 'f', 340)
                                                     : value.toString());
    }
    return query.orderBy.isEmpty() ? text : text + u" ORDER BY "_s + query.orderBy;
}

void checkRoundTrip(const QString& text, const dao::SelectQuery& query)
{
    fuzz::require(dao::isQuery(text), "an accepted text starts like a query", text);
    fuzz::require(isName(query.table), "the table is a name", text);
    fuzz::require(query.orderBy.isEmpty() || isName(query.orderBy), "the order is a name", text);
    if (query.where) {
        const QVariant& value = query.where->value;
        fuzz::require(isName(query.where->field), "the field is a name", text);
        fuzz::require(value.typeId() == QMetaType::LongLong ||
                          (value.typeId() == QMetaType::Double && std::isfinite(value.toDouble())),
                      "the value is a number", text);
    }
    const std::optional<dao::SelectQuery> again = parsed(spelled(query));
    fuzz::require(again.has_value(), "the canonical text is accepted", text);
    fuzz::require(again->table == query.table && again->orderBy == query.orderBy &&
                      again->where.has_value() == query.where.has_value(),
                  "the canonical text yields the same query", text);
    if (query.where)
        fuzz::require(
            again->where->field == query.where->field &&
                std::abs(again->where->value.toDouble() - query.where->value.toDouble()) <=
                    std::abs(query.where->value.toDouble()) * 1e-15,
            "its own spelling has the same number", text);
}

void check(const QString& text)
{
    const std::optional<dao::SelectQuery> query = parsed(text);
    checkAgainstGrammar(text, query);
    if (query)
        checkRoundTrip(text, *query);
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

/// The input is the query text, in UTF-8, or in UTF-16 after a leading zero byte.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    if (size > 0 && *data == 0) {
        input.take<std::uint8_t>();
        check(input.takeRestAsUtf16());
    } else {
        check(input.takeRest());
    }
    return 0;
}
