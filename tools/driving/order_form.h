#pragma once

#include "driving/opening.h"

#include <functional>

class QWidget;

namespace driving {

/// Opens the picker of the order form, moves its grid to the series with this name, runs `fill` on
/// the picker and chooses the series. Returns false, and chooses nothing, if the picker does not
/// open or does not list the series.
bool chooseSeries(const QWidget& orderForm, const QString& name,
                  const std::function<void(QWidget& picker)>& fill = {});

/// Enters the opening's measures, kinds and colours. The line is not added yet.
void fillOpening(const QWidget& orderForm, const Opening& opening);

} // namespace driving
