#pragma once

#include "journeys/program.h"

namespace journeys {

/// Adds the series on which the journeys' expected numbers are based, and returns its AutoNum. Its
/// deductions are: frame -1 and -1.5, sash -4.2 and -7.5, glass -13.4 and -16, mesh -6.3 and -8.25.
int addSeries(Program& program, const QString& name, int kanafNum, int nativNum,
              const QString& sign = {});

/// Opens the picker and selects the row of the series, without choosing it.
void openPickerOn(Program& program, const QString& name);
/// Chooses the series in the picker without a monoblock.
void chooseSeries(Program& program, const QString& name);

/// Types an opening and moves from box to box with Enter.
void typeOpening(Program& program, const QString& width, const QString& widthHundredths,
                 const QString& height, const QString& heightHundredths);
/// Adds the line and waits until the grid shows `linesAfter` lines.
void addLine(Program& program, int linesAfter);

/// Returns the named fields of a stored line.
QVariantList line(Program& program, int order, int number, const QString& fields);

} // namespace journeys
