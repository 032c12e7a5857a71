#pragma once

#include "platform/controls/form.h"

class QPushButton;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace catalogue {

class SeriesFields;

/// The series editor. It has three states: browsing, entering a new series, and editing a stored
/// series. The button CmdNew is disabled in the third state only, and the code recognises this
/// state by the disabled button. Closing the form discards what was typed into its fields.
class FrSerials : public controls::ChildForm
{
    Q_OBJECT

public:
    /// Creates the series editor and loads the series. Throws any error of store::OpenMyDataBase,
    /// such as DatabaseFileNotFound (3024) or Locked (3260).
    FrSerials();

private:
    void addGrid();
    void addCommands();
    QPushButton* addCommand(const QString& name, const QString& caption);
    void layOut();
    void orderTabs();
    void load();

    void CmdNew_Click();
    void CmdAdd_Click();
    void CmdUpdate_Click();
    void CmdDelete_Click();
    /// Enables or disables the grid and the commands that must not be used while a series is
    /// edited.
    void enableCommands(bool enable);

    SeriesFields* FrameOrder = nullptr;
    controls::DBGrid* DBGrid1 = nullptr;
    controls::DataControl* DataGrid = nullptr;
    controls::DataControl* DataSerial = nullptr;
    QPushButton* CmdNew = nullptr;
    QPushButton* CmdAdd = nullptr;
    QPushButton* CmdUpdate = nullptr;
    QPushButton* CmdDelete = nullptr;
    QPushButton* CmdEnd = nullptr;
};

} // namespace catalogue
