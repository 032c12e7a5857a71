#pragma once

#include "shop/paper/sheet.h"
#include "shop/tables.h"

namespace shop::paper {

/// The paper that labels are printed on.
enum class LabelPaper {
    A4,         ///< Sheets of 3 by 8 labels.
    Printer203, ///< One label per page, for label printers with 203 dots per inch.
    Printer300, ///< The same with 300 dots per inch.
};

/// The size of a label printer's page, which is one label of 70 by 37 mm.
inline constexpr report::Paper labelPaper{3969, 2098};

report::Paper paperOf(LabelPaper paper);

/// Returns the text of each piece's QR code in the form order-line-part-n. The number n counts the
/// pieces of the same line and part from 1.
QStringList labelCodes(const std::vector<Piece>& pieces);

/// Returns the sheets with one label for each piece. Before the labels come the faults of the order
/// lines, such as a length that cannot be cut: on A4 as a list on a page, on a label printer as one
/// label for each fault.
std::vector<Sheet> labelSheets(const ShopPack& pack, LabelPaper paper);

} // namespace shop::paper
