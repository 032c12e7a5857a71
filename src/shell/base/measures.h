#pragma once

#include <QString>

#include <cstdint>

/// A measure is a double in the measures' unit (see docs/glossary.md). A screen shows it in two
/// input boxes: one for the whole part and one for the hundredths.
namespace Module1 {

/// Return the whole part and the two-digit hundredths of a non-negative measure, rounded to the
/// nearest hundredth, half to even. Both throw Overflow (6) if the number of hundredths exceeds 32
/// bits. WholePart also throws it if the whole part exceeds 16 bits.
std::int16_t WholePart(double value);
QString HundredthsText(double value);

/// Returns the value of the two boxes: hundredths / 100 + whole. Throws TypeMismatch (13) if a box
/// does not hold a number.
double ReadMeasure(const QString& whole, const QString& hundredths);

} // namespace Module1
