#pragma once

#include <cstddef>

/// The ordinals of the table Cuts, by which order lines are written and read. Their order is a
/// contract between all programs that use a store. The fields orderNumber and remark, and the
/// fields after boxHeight, are accessed by name only, so their ordinals are not part of the
/// contract.
namespace store::line {

/// Number of parts of a window. Their order is frame, sash, glass, mesh.
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
/// The first of the eight fields of the roller shutter: MyWidth_2 to Shalav_Count.
inline constexpr int firstOfShutter = 25;
inline constexpr int lastOfShutter = 32;
inline constexpr int orderNumber = 33;
inline constexpr int remark = 34;
inline constexpr int boxWidth = 35;
inline constexpr int boxHeight = 36;

/// Number of measures of a line, from the width of the opening to the cut height of the mesh. The
/// array Module1::CutValues holds them in the same order, with the opening's width at index 0.
inline constexpr std::size_t measureCount = 10;
constexpr std::size_t measureIndex(int ordinal)
{
    return static_cast<std::size_t>(ordinal - openingWidth);
}

/// Returns true if the program accesses this field of a line by its ordinal. The name of such a
/// field does not matter.
constexpr bool isReachedByOrdinal(int ordinal)
{
    return ordinal >= openingWidth && ordinal <= boxHeight && ordinal != orderNumber &&
           ordinal != remark;
}

} // namespace store::line
