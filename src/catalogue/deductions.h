#pragma once

#include <QString>

namespace catalogue {

/// The deductions of a series: width and height of frame, sash, glass and mesh. They are added to
/// the opening, so a true deduction is a negative number.
inline constexpr int deductionCount = 8;

/// A deduction as its three boxes show it.
struct DeductionText
{
    QString sign;       ///< "+" above zero, otherwise "-": a zero has the sign "-".
    QString whole;      ///< Digits without leading zeros.
    QString hundredths; ///< Always two digits.

    bool operator==(const DeductionText&) const = default;
};

/// Rounds to the nearest hundredth. Raises 6 where the whole part exceeds 16 bits.
DeductionText splitDeduction(double value);

/// The number's text as it goes to the store, whatever the boxes hold: the hundredths box stands
/// behind the point as it is, so "5" means fifty hundredths.
QString joinDeduction(const DeductionText& text);

} // namespace catalogue
