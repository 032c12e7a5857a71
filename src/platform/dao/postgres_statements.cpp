// Statements as a server gets them.

#include "platform/dao/postgres_connection.h"

#include <QLocale>
#include <QSqlError>

#include <functional>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

QString literalText(const QString& text)
{
    if (text.contains(QChar(u'\0')))
        throw RunTimeError(runtime::DataTypeConversion);
    QString inner = text;
    return u'\'' + inner.replace(u'\'', u"''"_s) + u'\'';
}

QString literal(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return u"NULL"_s;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"-1"_s : u"0"_s;
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    case QMetaType::Double: {
        const QString number =
            QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
        return qIsFinite(value.toDouble()) ? number : literalText(number);
    }
    default:
        return literalText(value.toString());
    }
}

/// The type that the server takes the value's literal for; unknown where the place decides.
QString literalType(const QVariant& value)
{
    if (value.isValid() && !value.isNull()) {
        switch (value.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::LongLong:
            return u"bigint"_s;
        case QMetaType::Double:
            return qIsFinite(value.toDouble()) ? u"numeric"_s : u"unknown"_s;
        default:
            break;
        }
    }
    return u"unknown"_s;
}

/// The statement with what stands for the first, second ... value in the places of `count` question
/// marks.
QString filled(const QString& sql, qsizetype count,
               const std::function<QString(qsizetype)>& standIn)
{
    QString whole;
    qsizetype next = 0;
    QChar quote;
    for (const QChar c : sql) {
        if (!quote.isNull()) {
            if (c == quote)
                quote = {};
        } else if (c == u'"' || c == u'\'') {
            quote = c;
        } else if (c == u'?' && next < count) {
            whole += standIn(next++);
            continue;
        }
        whole += c;
    }
    return whole;
}

/// Enough for all that the forms ask again and again.
constexpr std::size_t mostKept = 200;

/// What is kept no longer fits the tables, or another hand has taken it away. Nothing has been done
/// then.
bool isOutdated(const QSqlError& failure)
{
    const QString state = failure.nativeErrorCode();
    return state == "0A000"_L1 || state == "26000"_L1;
}

} // namespace

QString withValues(const QString& sql, const QVariantList& values)
{
    return filled(sql, values.size(), [&](qsizetype i) { return literal(values[i]); });
}

QSqlQuery& executeKept(SqlConnection& connection, const QString& sql, const QVariantList& values,
                       std::chrono::milliseconds patience)
{
    QStringList types;
    QStringList literals;
    for (const QVariant& each : values) {
        types.append(literalType(each));
        literals.append(literal(each));
    }
    std::map<QString, QString>& names = connection.serverStatements();
    const auto [kept, isNew] = names.try_emplace(types.join(u',') + u' ' + sql);
    if (isNew) {
        if (names.size() > mostKept)
            names.erase(kept);
        return execute(connection, withValues(sql, values), patience);
    }
    if (kept->second.isEmpty()) {
        const QString name = u"zomrel_%1"_s.arg(connection.nextStatementNumber());
        const QString text =
            filled(sql, values.size(), [](qsizetype i) { return u"$%1"_s.arg(i + 1); });
        QSqlQuery& made = execute(
            connection, u"PREPARE %1 (%2) AS "_s.arg(name, types.join(u", "_s)) + text, patience);
        if (made.lastError().isValid())
            return made; // so would the statement itself
        kept->second = name;
    }
    QSqlQuery& query = execute(
        connection, u"EXECUTE %1 (%2)"_s.arg(kept->second, literals.join(u", "_s)), patience);
    if (!isOutdated(query.lastError()))
        return query;
    names.erase(kept);
    return execute(connection, withValues(sql, values), patience);
}

} // namespace dao::postgres
