#pragma once

#include <QString>

#include <cstdint>

/// A measure is a double in the measures' unit (see docs/glossary.md). A screen shows a measure in
/// two input boxes: one for the whole part and one for the hundredths.
namespace Module1 {

/// WholePart returns the whole part of a non-negative measure, and HundredthsText returns its
/// two-digit hundredths. The measure is first rounded to the nearest hundredth, half to even. Both
/// functions throw Overflow (6) if the number of hundredths exceeds 32 bits. WholePart also throws
/// Overflow (6) if the whole part exceeds 16 bits.
std::int16_t WholePart(double value);
QString HundredthsText(double value);

/// Returns the measure that consists of the texts `whole` and `hundredths`: hundredths / 100 +
/// whole. Throws TypeMismatch (13) if one of the two texts is not a number.
double ReadMeasure(const QString& whole, const QString& hundredths);

} // namespace Module1
