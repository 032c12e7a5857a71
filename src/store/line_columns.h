#pragma once

#include <cstddef>

/// The ordinals of the fields of the table Cuts. All programs that use a store read and write most
/// fields of an order line by ordinal, so these ordinals must never change. isReachedByOrdinal()
/// says which fields these are. The other fields are accessed by name.
namespace store::line {

/// The number of parts of a window. The parts are in the order frame, sash, glass, mesh.
inline constexpr int partCount = 4;

inline constexpr int openingWidth = 2;
inline constexpr int openingHeight = 3;
constexpr int cutWidth(int part)
{
    return 4 + 2 * part;
}
constexpr int cutHeight(int part)
{
    return cutWidth(part) + 1;
}
constexpr int kind(int part)
{
    return 12 + 3 * part;
}
constexpr int colour(int part)
{
    return kind(part) + 1;
}
constexpr int count(int part)
{
    return kind(part) + 2;
}
inline constexpr int windowKind = 24;
/// The ordinal of MyWidth_2, the first of the roller shutter's eight fields. The last one is
/// Shalav_Count.
inline constexpr int firstOfShutter = 25;
inline constexpr int lastOfShutter = 32;
inline constexpr int orderNumber = 33;
inline constexpr int remark = 34;
inline constexpr int boxWidth = 35;
inline constexpr int boxHeight = 36;

/// The number of measures of an order line, from the width of the opening to the cut height of the
/// mesh. The array Module1::CutValues contains the measures in the same order, with the width of
/// the opening at index 0.
inline constexpr std::size_t measureCount = 10;
constexpr std::size_t measureIndex(int ordinal)
{
    return static_cast<std::size_t>(ordinal - openingWidth);
}

/// Returns true if the program accesses this field of an order line by the field's ordinal, and
/// false if it accesses the field by name.
constexpr bool isReachedByOrdinal(int ordinal)
{
    return ordinal >= openingWidth && ordinal <= boxHeight && ordinal != orderNumber &&
           ordinal != remark;
}

} // namespace store::line
