#pragma once

#include "journeys/program.h"

namespace journeys {

/// Adds the series that the journeys' numbers are worked out with and returns its AutoNum: frame -1
/// and -1.5, sash -4.2 and -7.5, glass -13.4 and -16, mesh -6.3 and -8.25.
int addSeries(Program& program, const QString& name, int kanafNum, int nativNum,
              const QString& sign = {});

/// Opens the picker and stands on the series' row; what is chosen beside it is the journey's.
void openPickerOn(Program& program, const QString& name);
/// Chooses the series as an ordinary window (or a door, where it is a door's).
void chooseSeries(Program& program, const QString& name);

/// Types an opening as its user does, from box to box by Enter.
void typeOpening(Program& program, const QString& width, const QString& widthHundredths,
                 const QString& height, const QString& heightHundredths);
/// Adds the line and waits until the grid shows so many.
void addLine(Program& program, int linesAfter);

/// The fields of the order's line by name, as the store holds them.
QVariantList line(Program& program, int order, int number, const QString& fields);

} // namespace journeys
