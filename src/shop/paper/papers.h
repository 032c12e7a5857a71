#pragma once

#include "shop/paper/labels.h"
#include "shop/paper/sheet_document.h"

namespace shop::paper {

/// A document as the preview lists it.
struct PaperKind
{
    QString title;
    QString dataFile; ///< Name of the data export.
    QByteArray (*data)(const ShopPack&);
    std::vector<Sheet> (*sheets)(const ShopPack&);
};

/// Returns the cutting list, the bar plan, the glass list, the mesh list, and how each size was
/// computed.
const std::vector<PaperKind>& paperKinds();

/// Returns one of them with page numbers.
std::unique_ptr<SheetDocument> paperDocument(const PaperKind& kind, const ShopPack& pack);
/// Returns all of them as one document with continuous page numbers.
std::unique_ptr<SheetDocument> allPapers(const ShopPack& pack);
std::unique_ptr<SheetDocument> labelDocument(const ShopPack& pack, LabelPaper paper);

/// Returns the pack of one part of one line, without a plan for its pieces.
ShopPack remakePack(const ShopPack& pack, int order, int line, Part part);
/// Returns the slip for making the pieces of such a planned pack again: the list of pieces, the
/// plan, panes or panels, and the labels. The sheets before the labels have page numbers.
std::unique_ptr<SheetDocument> remakeSlip(const ShopPack& pack);

/// Returns the name of the file with all documents, such as order-7.pdf.
QString paperFile(const ShopPack& pack);

} // namespace shop::paper
