#include "base/measures.h"

#include "platform/runtime/conversions.h"

namespace Module1 {

namespace {

std::int32_t hundredthsOf(double value)
{
    return runtime::toInt32(value * 100.0);
}

} // namespace

std::int16_t WholePart(double value)
{
    const std::int32_t whole = hundredthsOf(value) / 100;
    return runtime::toInt16(static_cast<double>(whole));
}

QString HundredthsText(double value)
{
    const std::int32_t rest = hundredthsOf(value) % 100;
    const QString digits = QString::number(rest);
    return rest < 10 ? u'0' + digits : digits;
}

double ReadMeasure(const QString& whole, const QString& hundredths)
{
    return runtime::toDouble(hundredths) / 100.0 + runtime::toDouble(whole);
}

} // namespace Module1
