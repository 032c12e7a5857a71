#pragma once

#include "calculation/cuts.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

class QGroupBox;
class QLabel;
class QPushButton;

namespace controls {
class DataControl;
class DBCombo;
} // namespace controls

namespace dao {
class Recordset;
}

namespace Module1 {
class MeasureBox;
class MeasurePair;
} // namespace Module1

namespace calculation {

/// The part of the order form on which a line comes into being: the chosen series, the opening's
/// measures, kinds and colours, and the commands that compute a line and add it to the order.
class OpeningPanel : public QWidget
{
    Q_OBJECT

public:
    explicit OpeningPanel(QWidget* parent = nullptr);

    /// Gives the eight lists of kinds and colours their rows, colours first, each on a database of
    /// its own. Raises what opening the store raises.
    void bindKindsAndColours();

    /// Computes the line of the opening and the chosen series into Module1's shared state and
    /// leaves DataSerial on the series, or with no current record where the series is gone; the
    /// results then stay those of the computation before. Raises 13 for a box that holds no number,
    /// 11 or 6 for a division by zero, 94 for a Null deduction, and what the store raises. The
    /// shared state keeps what was reached before a failure.
    void ComputeCuts();

    /// Gives the box the focus, in a window brought forward, with its whole text selected. Raises 5
    /// where it cannot take the focus.
    void focusBox(std::size_t index);

    std::array<Module1::MeasureBox*, 6> TextNum{};
    std::array<Module1::MeasurePair*, 3> Picture1{};
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

signals:
    /// A line stands in the store and the boxes are cleared for the next opening.
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

    double measure(std::size_t wholeBox) const;
    bool seekSeries();

    void buildSeriesLabels();
    void buildFrame1();
    void buildFrameDoorMashkof();
    void buildFrame2();
    void buildCommands();
    void buildDataControls();
    void arrange();
    void chainTabOrder();
    Module1::MeasurePair* measurePair(std::size_t pair, const QString& wholeText, QWidget* parent);
};

/// How the picker reaches the order form's panel: the provider loads the form where it is not
/// loaded. Set once by the room that owns the form.
void setOpeningPanelProvider(std::function<OpeningPanel&()> provider);
/// The panel of the order form. Raises 91 while no provider is set.
OpeningPanel& openingPanel();

} // namespace calculation
