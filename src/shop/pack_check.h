#pragma once

#include "shop/tables.h"

#include <QMap>

namespace shop {

/// Returns the checker's findings about the bar plans of a shop pack and about the data files that
/// are made from the pack. `files` contains the data files by file name. A plan with findings must
/// not be shown or written.
QStringList findingsIn(const ShopPack& pack, const SettingsByGroup& settings,
                       const QMap<QString, QByteArray>& files);

} // namespace shop
