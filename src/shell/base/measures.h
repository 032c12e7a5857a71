#pragma once

#include <QString>

#include <cstdint>

/// A measure is one number in one unnamed unit; on screen it stands in a whole box and a hundredths
/// box.
namespace Module1 {

/// Whole part and hundredths of a non-negative measure, rounded to the nearest hundredth, half to
/// even. Raise 6 beyond the 32-bit range of hundredths (and WholePart beyond 16 bits).
std::int16_t WholePart(double value);
QString HundredthsText(double value);

/// The two boxes' value: the hundredths divided by 100, plus the whole. Raises 13 where a box holds
/// no number.
double ReadMeasure(const QString& whole, const QString& hundredths);

} // namespace Module1
