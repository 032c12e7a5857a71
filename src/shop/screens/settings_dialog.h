#pragma once

#include "shop/settings_file.h"

#include <QDialog>

class QTableWidget;

namespace shop::screens {

/// A dialog in which the user edits the settings of bars. It has one row for each part, profile and
/// colour.
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
    /// Reads the settings in a row of the dialog. If a number is invalid, shows which cell is wrong
    /// and returns no value.
    std::optional<BarSettings> settingsIn(int row);
    /// Shows a message box that says that the cell is invalid, and selects the cell.
    void refuse(int row, int column);

    const StoredBars bars_;
    SettingsByGroup changed_;
    QTableWidget* table_;
};

} // namespace shop::screens
