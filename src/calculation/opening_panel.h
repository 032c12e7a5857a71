#pragma once

#include "calculation/cuts.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

class QGroupBox;
class QLabel;
class QLayout;
class QPushButton;

namespace controls {
class DataControl;
class DBCombo;
} // namespace controls

namespace dao {
class Recordset;
}

namespace base {
class MeasureBox;
class MeasurePair;
} // namespace base

namespace calculation {

/// The panel of the order form in which a line is entered. It contains the chosen series, the
/// measures of the opening, the kinds and colours, and the buttons that compute a line and add it
/// to the order.
class OpeningPanel : public QWidget
{
    Q_OBJECT

public:
    explicit OpeningPanel(QWidget* parent = nullptr);

    /// Fills the eight lists of kinds and colours, the colour lists first. Opens the store once for
    /// each list. Throws any error of store::OpenMyDataBase.
    void bindKindsAndColours();

    /// Computes the line for the opening and the chosen series, and writes the results to the
    /// shared variables in Module1. Afterwards the series is the current record of DataSerial, the
    /// data control of the series.
    ///
    /// If the series no longer exists, returns without an error. DataSerial then has no current
    /// record. The variables for the opening and the shutter are already written, but CutValues
    /// still contains the previous cut sizes.
    ///
    /// Throws TypeMismatch (13) for a box without a number, DivisionByZero (11) or Overflow (6) for
    /// a division by zero, InvalidUseOfNull (94) for a Null deduction, and any store error. After
    /// an error, the variables keep the results that were written before the error.
    void ComputeCuts();

    /// Activates the panel's window, moves the focus to the measure box with this index and selects
    /// the text of the box. Throws InvalidProcedureCall (5) if the box is hidden or disabled.
    void focusBox(std::size_t index);

    std::array<base::MeasureBox*, 6> TextNum{};
    std::array<base::MeasurePair*, 3> Picture1{};
    std::array<controls::DBCombo*, cuts::PartCount> DBComboKind{};
    std::array<controls::DBCombo*, cuts::PartCount> DBComboColor{};
    std::array<controls::DataControl*, cuts::PartCount> DataKind{};
    std::array<controls::DataControl*, cuts::PartCount> DataColor{};
    controls::DataControl* DataCuts = nullptr;
    controls::DataControl* DataSerial = nullptr;
    QLabel* LabelSerial = nullptr;
    QLabel* LabelNativ = nullptr;
    QLabel* LabelKanaf = nullptr;
    QLabel* LabelKind = nullptr;
    QGroupBox* Frame1 = nullptr;
    QGroupBox* FrameDoorMashkof = nullptr;
    QGroupBox* Frame2 = nullptr;
    QPushButton* CmdPicSerial = nullptr;
    QPushButton* CmdOK = nullptr;
    QPushButton* CmdAdd = nullptr;
    QPushButton* CmdClear1 = nullptr;

    /// Returns the row of the buttons CmdAdd, CmdOK and CmdClear1. It is the last row of the panel
    /// until the order form moves it to another place.
    QWidget* commandRow() const { return commandRow_; }

signals:
    /// Emitted when the user presses the button that opens the series picker.
    void seriesRequested();
    /// Emitted after a line has been stored and the input boxes of the opening have been cleared.
    void lineAdded();

private:
    void CmdPicSerial_Click();
    void CmdOK_Click();
    void CmdAdd_Click();
    void CmdClear1_Click();

    bool refusesZero(std::size_t wholeBox);
    bool refusesMissingSeries();
    void writeLine(dao::Recordset& lines, std::int16_t number);
    void writeKindsAndColours(dao::Recordset& lines);
    void clearOpening();

    bool seekSeries();

    void buildSeriesLabels();
    void buildFrame1();
    void buildFrameDoorMashkof();
    void buildFrame2();
    void buildCommands();
    void buildDataControls();
    void arrange();
    void chainTabOrder();
    QLayout* seriesRows();
    base::MeasurePair* measurePair(std::size_t pair, const QString& wholeText, QWidget* parent);

    QWidget* commandRow_ = nullptr;
};

/// Sets the function through which the series picker accesses the opening panel of the order form.
/// The function loads the order form if necessary. The library `orders` sets the function each time
/// it creates the order form.
void setOpeningPanelProvider(std::function<OpeningPanel&()> provider);
/// Returns the order form's panel for the opening. Throws ObjectNotSet (91) if
/// setOpeningPanelProvider has not been called.
OpeningPanel& openingPanel();

} // namespace calculation
