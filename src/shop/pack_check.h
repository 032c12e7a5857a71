#pragma once

#include "shop/tables.h"

#include <QMap>

namespace shop {

/// Returns the checker's findings about the plans of a pack and about data files that are made from
/// it, by file name. No plan with findings may be shown or written.
QStringList findingsIn(const ShopPack& pack, const SettingsByGroup& settings,
                       const QMap<QString, QByteArray>& files);

} // namespace shop
