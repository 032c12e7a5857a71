#pragma once

#include "driving/opening.h"
#include "journeys/program.h"

namespace journeys {

/// Adds the series on which the journeys' expected numbers are based, and returns its AutoNum. Its
/// deductions are: frame -1 and -1.5, sash -4.2 and -7.5, glass -13.4 and -16, mesh -6.3 and -8.25.
int addSeries(Program& program, const QString& name, int kanafNum, int nativNum,
              const QString& sign = {});

/// Gives the order command of the toolbar and waits for the order form.
void openOrder(Program& program);

/// Opens the picker and selects the row of the series, without choosing it.
void openPickerOn(Program& program, const QString& name);
/// Ticks the monoblock box in the picker and waits for the proposed values.
void tickMonoblock(Program& program);
/// Chooses the picker's current series and its settings.
void takeSeries(Program& program);
/// Chooses the series in the picker without a monoblock.
void chooseSeries(Program& program, const QString& name);

/// Types an opening's measures and moves from box to box with Enter.
void typeOpening(Program& program, const driving::Boxes& width, const driving::Boxes& height);
/// Adds the line and waits until the grid shows `linesAfter` lines.
void addLine(Program& program, int linesAfter);

/// Returns the named fields of a stored line.
QVariantList line(Program& program, int order, int number, const QString& fields);

} // namespace journeys
