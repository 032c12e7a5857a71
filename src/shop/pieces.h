#pragma once

#include "shop/bar_settings.h"

#include <QDate>

#include <optional>
#include <vector>

namespace shop {

/// The sizes, count, kind and colour of one part of an order line. A value is empty if the stored
/// field is Null.
struct PartOfLine
{
    std::optional<double> width;
    std::optional<double> height;
    std::optional<int> count;
    QString kind;
    QString colour;
};

/// The fields of a stored line that the shop pack uses. A Null order or line number is 0.
struct OrderLine
{
    int order = 0;
    int line = 0;
    PartOfLine frame;
    PartOfLine sash;
    PartOfLine glass;
    PartOfLine mesh;
    std::optional<double> uCut;
    std::optional<double> uVasa;
    std::optional<double> slatWidth;
    std::optional<int> slatCount;
    std::optional<double> boxWidth;
};

/// The fields of a stored order that the documents show.
struct OrderHead
{
    int number = 0;
    QDate date;
    QString customer;
};

/// Returns true for a door: the four sizes of glass and mesh are all exactly 0.
bool isDoor(const OrderLine& line);
/// Returns true for a monoblock: at least one size of its roller shutter is stored and is not 0.
bool isMonoblock(const OrderLine& line);
/// Returns true for a kind that begins with the word "ללא" (without). A part of such a kind is not
/// made.
bool isNotMade(const QString& kind);

/// A piece that is cut from a bar.
struct Piece
{
    int order = 0;
    int line = 0;
    Side side = Side::Width;
    GroupKey group;
    double length = 0;
};

/// Equal panes of glass, or equal panels of mesh, of one order line.
struct Pane
{
    int order = 0;
    int line = 0;
    double width = 0;
    double height = 0;
    int count = 0;
    QString kind;
    QString colour;
};

/// The reason why no pieces or panes can be made for one part and side of an order line.
struct Fault
{
    enum class Reason { IsNull, NotAboveZero, TooLong, NegativeCount, TooMany };

    int order = 0;
    int line = 0;
    Part part = Part::Frame;
    Side side = Side::Width;
    Reason reason = Reason::IsNull;
    QString field;    ///< The field of the line with the invalid value.
    double value = 0; ///< The value of the field, or the resulting number of pieces.
    double limit = 0; ///< The greatest allowed length or number of pieces.
};

/// Returns the reason of the fault in words, such as "Mashkof_W is Null".
QString reasonText(const Fault& fault);
/// Returns the place and the reason of the fault in words, such as "order 7, line 2, frame, width:
/// Mashkof_W is Null".
QString faultText(const Fault& fault);

/// The pieces and panes of some order lines. Pieces that cannot be made because of a fault are
/// missing in `pieces`, and the fault is in `faults`.
struct Pieces
{
    std::vector<Piece> pieces;
    std::vector<Pane> glass;
    std::vector<Pane> mesh;
    std::vector<Fault> faults;
};

/// The limit of two numbers: the count of a part in an order line, and the number of pieces of one
/// of the part's lengths (width or height) in the line.
constexpr int mostPieces = 100000;

/// Returns the pieces, panes and faults (reasons why pieces or panes cannot be made) of the order
/// lines. The pieces are in the order of the lines. Within a line the pieces are sorted by part,
/// and widths come before heights.
Pieces piecesOf(const std::vector<OrderLine>& lines, const SettingsByGroup& settings);

} // namespace shop
