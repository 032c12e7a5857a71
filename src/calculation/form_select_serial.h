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

namespace Module1 {
class MeasureBox;
class MeasurePair;
} // namespace Module1

namespace calculation {

/// The series picker. It lists the series, takes the data of a monoblock, and writes the choice to
/// the order form and to the shared calculation state. Each opening creates a new window.
class FormSelectSerial : public QDialog
{
    Q_OBJECT

public:
    /// Creates the picker and loads the series. Throws any error of store::OpenMyDataBase, such as
    /// DatabaseFileNotFound (3024) or Locked (3260).
    FormSelectSerial();

    /// Shows the picker as a modeless window, or brings it to the front if it is already shown.
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
    std::array<Module1::MeasureBox*, 6> TextNum{};
    std::array<Module1::MeasurePair*, 3> Picture1{};

signals:
    void unloaded();

private:
    void CheckKind_Click(bool checked);
    void ComboMonoBlock_Click(int position);
    void ChooseSeries();
    void takeMonoblock();
    double measure(std::size_t wholeBox) const;

    void buildGrid();
    void buildMonoblock();
    void buildCommands();
    void arrange();
    void chainTabOrder();
    void connectHandlers();
    void centreOnScreen();
    Module1::MeasurePair* measurePair(std::size_t pair, const QString& wholeText,
                                      const QString& hundredthsText, const QString& pointName);
    QWidgetList monoblockControls() const;
};

/// Returns the open picker, or creates it if none is open. Creation throws any error of
/// store::OpenMyDataBase.
FormSelectSerial& formSelectSerial();

} // namespace calculation
