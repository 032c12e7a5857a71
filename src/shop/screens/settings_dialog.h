#pragma once

#include "shop/settings_file.h"

#include <QDialog>

class QTableWidget;

namespace shop::screens {

/// Edits the settings of bars: one row for each part, profile and colour.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(const StoredBars& bars, QWidget* parent = nullptr);

    /// Returns the settings of the rows that were changed.
    SettingsByGroup changed() const { return changed_; }

private:
    void addRows();
    void save();
    /// Reads a row. Returns nothing and shows which cell is wrong if a number is invalid.
    std::optional<BarSettings> settingsIn(int row);
    /// Says in a box that the cell is invalid, and selects it.
    void refuse(int row, int column);

    const StoredBars bars_;
    SettingsByGroup changed_;
    QTableWidget* table_;
};

} // namespace shop::screens
