#include "catalogue/deductions.h"

#include "base/measures.h"

using namespace Qt::StringLiterals;

namespace catalogue {

DeductionText splitDeduction(double value)
{
    const bool isPositive = value > 0;
    const double magnitude = isPositive ? value : -value;
    return {isPositive ? u"+"_s : u"-"_s, QString::number(Module1::WholePart(magnitude)),
            Module1::HundredthsText(magnitude)};
}

QString joinDeduction(const DeductionText& text)
{
    return text.sign + text.whole + u'.' + text.hundredths;
}

} // namespace catalogue
