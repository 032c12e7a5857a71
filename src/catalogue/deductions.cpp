#include "catalogue/deductions.h"

#include "shell/base/measures.h"

using namespace Qt::StringLiterals;

namespace catalogue {

const std::array<QString, deductionCount>& deductionFields()
{
    static const std::array<QString, deductionCount> fields{
        u"Mashkof_W"_s, u"Mashkof_H"_s, u"Kanaf_W"_s,  u"Kanaf_H"_s,
        u"Glass_W"_s,   u"Glass_H"_s,   u"Reshet_W"_s, u"Reshet_H"_s,
    };
    return fields;
}

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
