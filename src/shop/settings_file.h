#pragma once

#include "shop/bar_settings.h"

#include <QByteArray>
#include <QStringList>

namespace shop {

/// The settings of a store's bars and the groups that the settings file lists.
struct StoredBars
{
    /// Each kind and colour of frame, sash and mesh in the catalogue or in a line, followed by
    /// guide, slat and box. If the catalogue has no colours of a part, its kinds have none.
    std::vector<GroupKey> groups;
    SettingsByGroup settings;
};

/// Reads them from the store at the path. Throws like readBarTable and any error of the engine.
StoredBars readStoredBars(const QString& path);

/// Reads only the groups, also if the table of settings contains invalid rows. Throws any error of
/// the engine.
std::vector<GroupKey> readBarGroups(const QString& path);

/// Returns the settings file: CSV with a heading and one row per group.
QByteArray settingsFile(const StoredBars& bars);

/// The contents of a settings file.
struct SettingsIntake
{
    SettingsByGroup settings;
    QStringList findings; ///< One text per invalid cell or row; then `settings` is empty.
};

/// Parses a settings file. Blank lines are ignored. Findings number the rows like a spreadsheet;
/// the heading is row 1. `known` are the allowed groups.
SettingsIntake readSettingsFile(const QByteArray& file, const std::vector<GroupKey>& known);

} // namespace shop
