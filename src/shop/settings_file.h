#pragma once

#include "shop/bar_settings.h"

#include <QByteArray>
#include <QStringList>

namespace shop {

/// The stored settings of bars, and all groups of pieces that can have settings, also those without
/// stored settings.
struct StoredBars
{
    /// All kinds and colours of frame, sash and mesh in the catalogue or in an order line, followed
    /// by guide, slat and box. If the catalogue has no colours for a part, each kind of the part is
    /// listed once without a colour.
    std::vector<GroupKey> groups;
    SettingsByGroup settings;
};

/// Reads from the store at the path the stored settings of bars, and all groups of pieces that can
/// have settings. Throws the errors of readBarTable and any error of the engine.
StoredBars readStoredBars(const QString& path);

/// Reads only the groups from the store at the path, even if the table of settings contains invalid
/// rows. Throws any error of the engine.
std::vector<GroupKey> readBarGroups(const QString& path);

/// Returns the settings of bars as the contents of a CSV file, with a heading and one row per group
/// of pieces.
QByteArray settingsFile(const StoredBars& bars);

/// The contents of a settings file.
struct SettingsIntake
{
    SettingsByGroup settings;
    QStringList findings; ///< One text per invalid cell or row; then `settings` is empty.
};

/// Parses a CSV file with the settings of bars. Blank rows are ignored. The error texts number the
/// rows as a spreadsheet does, so the heading is row 1. A group of pieces that is not in `known` is
/// an error.
SettingsIntake readSettingsFile(const QByteArray& file, const std::vector<GroupKey>& known);

} // namespace shop
