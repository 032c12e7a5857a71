#pragma once

#include "shop/paper/labels.h"
#include "shop/paper/sheet_document.h"

namespace shop::paper {

/// A kind of printed document that the preview lists.
struct PaperKind
{
    QString title;
    QString dataFile; ///< Name of the data export.
    QByteArray (*data)(const ShopPack&);
    std::vector<Sheet> (*sheets)(const ShopPack&);
};

/// Returns the kinds of printed documents: the cutting list, the bar plan, the glass list, the mesh
/// list, and the document that shows how each size was computed.
const std::vector<PaperKind>& paperKinds();

/// Returns the document of one kind with page numbers.
std::unique_ptr<SheetDocument> paperDocument(const PaperKind& kind, const ShopPack& pack);
/// Returns the documents of all paperKinds() as one document with continuous page numbers.
std::unique_ptr<SheetDocument> allPapers(const ShopPack& pack);
std::unique_ptr<SheetDocument> labelDocument(const ShopPack& pack, LabelPaper paper);

/// Returns a shop pack that contains only one part of one order line, without a bar plan for the
/// pieces.
ShopPack remakePack(const ShopPack& pack, int order, int line, Part part);
/// Returns the remake slip, the document for making the pieces of one part again: the list of
/// pieces, the bar plan, the panes or panels, and the labels. `pack` is a result of remakePack
/// whose pieces have been planned. The sheets before the labels have page numbers.
std::unique_ptr<SheetDocument> remakeSlip(const ShopPack& pack);

/// Returns the name of the PDF file that contains all documents, such as order-7.pdf.
QString paperFile(const ShopPack& pack);

} // namespace shop::paper
