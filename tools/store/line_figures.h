#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <utility>
#include <vector>

namespace storetools {

/// The values of a stored row by field name; a missing or unreadable value is invalid.
using StoredFields = QMap<QString, QVariant>;

/// A field of a line with its computed value.
using Figure = std::pair<QString, double>;

/// Computes the figures of a line that follow from its opening, its series and the remaining stored
/// fields. The monoblock's width deduction and the door frame's thickness are not stored as such;
/// they are taken from the reduced width and from U_Thick. Throws like the functions in cuts.h.
std::vector<Figure> figuresOf(const StoredFields& line, const StoredFields& series);

} // namespace storetools
