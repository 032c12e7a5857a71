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

/// The picker of a series: lists them, takes the data of a monoblock and hands all of it to the
/// order form and the shared state. A fresh window at every opening.
class FormSelectSerial : public QDialog
{
    Q_OBJECT

public:
    /// Raises what opening the store raises.
    FormSelectSerial();

    /// Shows the picker beside the order form, which stays usable, or brings it forward.
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

/// The picker that is open, loaded where none is. Raises what its load raises.
FormSelectSerial& formSelectSerial();

} // namespace calculation
