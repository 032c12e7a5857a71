#pragma once

#include <QDialog>

#include <QWidgetList>

#include <array>
#include <cstddef>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace base {
class MeasureBox;
class MeasurePair;
} // namespace base

namespace calculation {

/// The series picker: a dialog that lists the series and has input boxes for the data of a
/// monoblock. It writes the user's choice to the order form and to the shared variables of the
/// calculation. Each time the series picker is opened, a new window is created. An open window is
/// brought to the front.
class FormSelectSerial : public QDialog
{
    Q_OBJECT

public:
    /// Creates the series picker and loads the list of series. Throws any error of
    /// store::OpenMyDataBase, such as DatabaseFileNotFound (3024) or Locked (3260).
    FormSelectSerial();

    /// Shows the series picker as a modeless window. If the series picker is already shown, brings
    /// it to the front.
    void Show();

    void done(int result) override;

    controls::DBGrid* DBGrid1 = nullptr;
    controls::DataControl* DataSerials = nullptr;
    QPushButton* CmdPic = nullptr;
    QPushButton* CmdClose = nullptr;
    QCheckBox* CheckKind = nullptr;
    QGroupBox* FrameMonoblock = nullptr;
    QComboBox* ComboMonoBlock = nullptr;
    QComboBox* Combo_U_Thick = nullptr;
    std::array<base::MeasureBox*, 6> TextNum{};
    std::array<base::MeasurePair*, 3> Picture1{};

signals:
    void unloaded();

private:
    void CheckKind_Click(bool checked);
    void ComboMonoBlock_Click(int position);
    void ChooseSeries();
    void takeMonoblock();

    void buildGrid();
    void buildMonoblock();
    void buildCommands();
    void arrange();
    void chainTabOrder();
    void connectHandlers();
    base::MeasurePair* measurePair(std::size_t pair, const QString& wholeText,
                                   const QString& hundredthsText, const QString& pointName);
    QWidgetList monoblockControls() const;
};

/// Returns the open series picker, or creates a series picker if none is open. Throws any error of
/// store::OpenMyDataBase if a series picker must be created.
FormSelectSerial& formSelectSerial();

} // namespace calculation
