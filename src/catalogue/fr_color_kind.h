#pragma once

#include "platform/controls/form.h"

#include <array>

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace catalogue {

/// The editor of kinds and colours: eight editable grids over eight tables, each of which adds,
/// changes and deletes by itself. Closing writes a row that is being edited; where the store
/// refuses it, the grid says so and the form stays open.
class FrColorKind : public controls::ChildForm
{
    Q_OBJECT

public:
    /// Raises what opening the store raises.
    FrColorKind();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addHeading();
    void addGrids();
    void addCommand();
    void load();
    /// Writes what is being edited. False where the store has refused a row.
    bool writeRows();
    void CmdEnd_Click();

    /// The index is the part: frame, sash, glass, mesh.
    std::array<controls::DataControl*, 4> DataKind{};
    std::array<controls::DataControl*, 4> DataColor{};
    /// The kinds of the four parts, then their colours.
    std::array<controls::DBGrid*, 8> DBGridKind{};
};

} // namespace catalogue
