#pragma once

#include "shop/tables.h"

#include <QByteArray>
#include <QString>

namespace shop {

/// A kind of document and the name of its file. If `file` is empty, the name of the file is made
/// from the numbers of the orders.
struct DocumentKind
{
    QString name; ///< The name on the command line.
    QString file;
    QByteArray (*make)(const ShopPack&);
};

/// Returns the kinds of documents that are text files, CSV or JSON, in a fixed order.
const std::vector<DocumentKind>& documentKinds();

/// Returns the pieces as CSV with one row per piece.
QByteArray piecesCsv(const std::vector<Piece>& pieces, const SettingsByGroup& settings);

/// The functions from cutListCsv to planJson each return the file contents of one document.
QByteArray cutListCsv(const ShopPack& pack);
QByteArray barPlanCsv(const ShopPack& pack);
QByteArray glassCsv(const ShopPack& pack);
QByteArray meshCsv(const ShopPack& pack);
QByteArray explanationsCsv(const ShopPack& pack);
QByteArray planJson(const ShopPack& pack);

} // namespace shop
