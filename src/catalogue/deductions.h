#pragma once

#include <QString>

namespace catalogue {

/// A series has eight deductions: the width and the height of the frame, the sash, the glass and
/// the mesh. A deduction is added to the width or height of the opening, so a true deduction is a
/// negative number.
inline constexpr int deductionCount = 8;

/// The texts of the three input boxes of a deduction: sign box, whole box and hundredths box.
struct DeductionText
{
    QString sign;       ///< "+" for a value above zero, otherwise "-". Zero has the sign "-".
    QString whole;      ///< The whole part, as digits without leading zeros.
    QString hundredths; ///< The hundredths, always two digits.

    bool operator==(const DeductionText&) const = default;
};

/// Splits a deduction into the texts of its sign box, whole box and hundredths box. The deduction
/// is rounded to the nearest hundredth. Throws Overflow (6) if the whole part exceeds 16 bits.
DeductionText splitDeduction(double value);

/// Joins the texts of the sign box, whole box and hundredths box into the text that is stored. The
/// texts are not validated. The hundredths text is appended unchanged after the decimal point, so
/// "5" means fifty hundredths.
QString joinDeduction(const DeductionText& text);

} // namespace catalogue
