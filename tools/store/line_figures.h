#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <utility>
#include <vector>

namespace storetools {

/// The values of a stored row by field name. A missing or unreadable value is an invalid QVariant.
using StoredFields = QMap<QString, QVariant>;

/// The name of a field of an order line, and the value computed for the field.
using Figure = std::pair<QString, double>;

/// Computes the figures of an order line, such as its cut sizes, from its opening, its series and
/// its other stored fields. The thickness of a door's frame is in U_Thick. The width deduction of a
/// monoblock is the opening's width less the field MyWidth_2. Throws the errors of the functions in
/// cuts.h.
std::vector<Figure> figuresOf(const StoredFields& line, const StoredFields& series);

} // namespace storetools
