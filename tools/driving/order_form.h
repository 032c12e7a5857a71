#pragma once

#include "driving/opening.h"

#include <functional>

class QWidget;

namespace driving {

/// Opens the series picker of the order form, moves the picker's grid to the series with this name,
/// calls `fill` with the picker and chooses the series. Returns false, and chooses nothing, if the
/// picker does not open or does not list the series.
bool chooseSeries(const QWidget& orderForm, const QString& name,
                  const std::function<void(QWidget& picker)>& fill = {});

/// Enters the opening's measures, kinds and colours into the order form. Does not add the order
/// line.
void fillOpening(const QWidget& orderForm, const Opening& opening);

} // namespace driving
