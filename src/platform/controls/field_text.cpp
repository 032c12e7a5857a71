#include "platform/controls/field_text.h"

#include "platform/dao/engine/field_search.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace controls {

namespace {

bool isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

/// Rounds to `decimals` decimals. A half is rounded away from zero. Only the first 15 significant
/// digits of the number are used, so 2.005 becomes 2.01 with two decimals.
QString fixedText(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    const double scaled = QString::number(std::fabs(value) * scale, 'g', 15).toDouble();
    QString text = QString::number(std::round(scaled) / scale, 'f', decimals);
    text.replace(QStringLiteral("."), QLocale().decimalPoint());
    const bool isNegative = value < 0 && std::round(scaled) > 0;
    return isNegative ? u'-' + text : text;
}

} // namespace

QString fieldText(const QVariant& value, int decimals)
{
    if (runtime::isNull(value))
        return {};
    if (decimals >= 0 && isNumber(value))
        return fixedText(value.toDouble(), decimals);
    return runtime::toText(value);
}

QStringList fieldTexts(dao::Recordset& rows, const QString& field)
{
    const int ordinal = dao::ordinalOf(rows.fieldInfos(), field);
    if (ordinal < 0)
        throw runtime::RunTimeError(runtime::ItemNotFound);
    const std::unique_ptr<dao::RecordsetPages> pages = rows.pages();
    QStringList texts;
    for (int row = 0; row < pages->rowCount(); ++row) {
        if (!pages->isLoaded(row))
            pages->load(row);
        texts.append(fieldText(pages->value(row, ordinal)));
    }
    return texts;
}

bool readsRightToLeft(const QString& text)
{
    return std::ranges::any_of(text, [](QChar c) {
        return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
    });
}

} // namespace controls
