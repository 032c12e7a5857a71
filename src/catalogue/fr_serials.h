#pragma once

#include "platform/controls/form.h"

class QPushButton;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace catalogue {

class SeriesFields;

/// The series editor. Its states are browsing, a new series and editing; it tells editing from the
/// others by CmdNew being disabled, and keeps no other state. What the fields hold is dropped when
/// the form goes.
class FrSerials : public controls::ChildForm
{
    Q_OBJECT

public:
    /// Raises what opening the store raises.
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
    /// Enables or disables what must not be used while a series is being edited.
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
