#pragma once

#include "shop/tables.h"

#include <QByteArray>
#include <QString>

namespace shop {

/// A document and its file. The file is named after the orders if it has no name here.
struct DocumentKind
{
    QString name; ///< The name on the command line.
    QString file;
    QByteArray (*make)(const ShopPack&);
};

/// Returns the documents that are text files, CSV or JSON, in a fixed order.
const std::vector<DocumentKind>& documentKinds();

/// Returns the pieces as CSV with one row per piece.
QByteArray piecesCsv(const std::vector<Piece>& pieces, const SettingsByGroup& settings);

/// Return the contents of the documents.
QByteArray cutListCsv(const ShopPack& pack);
QByteArray barPlanCsv(const ShopPack& pack);
QByteArray glassCsv(const ShopPack& pack);
QByteArray meshCsv(const ShopPack& pack);
QByteArray explanationsCsv(const ShopPack& pack);
QByteArray planJson(const ShopPack& pack);

} // namespace shop
