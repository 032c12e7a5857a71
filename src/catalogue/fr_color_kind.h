#pragma once

#include "platform/controls/form.h"

#include <array>

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace catalogue {

/// The editor of kinds and colours. It shows eight tables in eight grids, and rows are added,
/// changed and deleted directly in a grid. Closing the form first writes a row that is being
/// edited. If the store rejects that row, the grid shows the error and the form stays open.
class FrColorKind : public controls::ChildForm
{
    Q_OBJECT

public:
    /// Creates the editor and loads the eight tables of kinds and colours. Throws any error of
    /// store::OpenMyDataBase, such as DatabaseFileNotFound (3024) or Locked (3260).
    FrColorKind();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addHeading();
    void addGrids();
    void addCommand();
    void load();
    /// Writes the pending edits of all eight grids. Returns false if the store rejected a row.
    bool writeRows();
    void CmdEnd_Click();

    /// The data controls of the tables of kinds and of the tables of colours. The index is the
    /// part: 0 frame, 1 sash, 2 glass, 3 mesh.
    std::array<controls::DataControl*, 4> DataKind{};
    std::array<controls::DataControl*, 4> DataColor{};
    /// The grids. Indexes 0 to 3 are the kinds of the four parts, and indexes 4 to 7 are their
    /// colours.
    std::array<controls::DBGrid*, 8> DBGridKind{};
};

} // namespace catalogue
