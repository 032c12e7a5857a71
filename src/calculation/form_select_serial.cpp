#include "calculation/form_select_serial.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "calculation/cuts.h"
#include "calculation/line_words.h"
#include "calculation/opening_panel.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/form.h"
#include "platform/controls/scroll_part.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "store/store_access.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

/// The texts that the series picker proposes for the boxes TextNum[0] to TextNum[3]. Each row of
/// the array belongs to one entry of ComboMonoBlock, the list of monoblocks.
const std::array<std::array<QString, 4>, 3> monoblockProposals{{
    {u"2"_s, u"80"_s, u"18"_s, u"00"_s},
    {u"0"_s, u"00"_s, u"28"_s, u"00"_s},
    {u"0"_s, u"00"_s, u"20"_s, u"08"_s},
}};

} // namespace

FormSelectSerial& formSelectSerial()
{
    static controls::DefaultInstance<FormSelectSerial> instance;
    return instance();
}

// The main window owns the series picker, so that the picker has no taskbar entry of its own.
FormSelectSerial::FormSelectSerial()
    : QDialog(controls::mainWindow(), Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
{
    setObjectName(u"FormSelectSerial"_s);
    setWindowTitle(u" סדרות"_s);
    setLayoutDirection(Qt::RightToLeft);
    buildGrid();
    buildMonoblock();
    buildCommands();
    arrange();
    chainTabOrder();
    connectHandlers();
    controls::SetGridFont(*DBGrid1);
    DataSerials->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(u"Serials"_s, dao::dbOpenTable));
}

void FormSelectSerial::connectHandlers()
{
    runtime::on(CheckKind, &QCheckBox::toggled, this,
                [this](bool checked) { CheckKind_Click(checked); });
    runtime::on(ComboMonoBlock, &QComboBox::currentIndexChanged, this,
                [this](int position) { ComboMonoBlock_Click(position); });
    // `currentIndexChanged` is not emitted if the user chooses the current entry again. `activated`
    // is emitted in this case too, so that the boxes are filled again.
    runtime::on(ComboMonoBlock, &QComboBox::activated, this,
                [this](int position) { ComboMonoBlock_Click(position); });
    runtime::on(CmdPic, &QPushButton::clicked, this, [this] { ChooseSeries(); });
    runtime::on(DBGrid1, &controls::DBGrid::DblClick, this, [this] { ChooseSeries(); });
    runtime::on(DBGrid1, &controls::DBGrid::enterPressed, this, [this] { ChooseSeries(); });
    runtime::on(CmdClose, &QPushButton::clicked, this, [this] { reject(); });
}

void FormSelectSerial::Show()
{
    if (!isVisible()) {
        setFixedSize(controls::fittedSize(sizeHint(), controls::roomOnScreen(*this)));
        controls::centreOnScreen(*this);
    }
    show();
    raise();
    activateWindow();
}

/// Every way of closing the series picker calls this function: the buttons, Escape and the close
/// box.
void FormSelectSerial::done(int result)
{
    QDialog::done(result);
    emit unloaded();
    deleteLater();
}

void FormSelectSerial::CheckKind_Click(bool checked)
{
    for (QWidget* each : monoblockControls())
        each->setEnabled(checked);
    if (!checked)
        return;
    ComboMonoBlock->setCurrentIndex(0);
    Combo_U_Thick->setCurrentIndex(0);
    TextNum[0]->setFocus();
}

void FormSelectSerial::ComboMonoBlock_Click(int position)
{
    if (position < 0)
        return;
    const auto& proposal = monoblockProposals[static_cast<std::size_t>(position)];
    for (std::size_t box = 0; box < proposal.size(); ++box)
        TextNum[box]->setText(proposal[box]);
}

void FormSelectSerial::ChooseSeries()
{
    dao::Recordset& series = DataSerials->Recordset();
    const auto text = [&series](const QString& field) {
        return runtime::toText(series.Fields(field).Value());
    };
    const QString name = text(u"Name"_s);
    OpeningPanel& panel = openingPanel();
    panel.LabelSerial->setText(name);
    panel.LabelNativ->setText(text(u"Nativ_Num"_s));
    panel.LabelKanaf->setText(text(u"Kanaf_Num"_s));
    Module1::SelectedSerialNum = runtime::toInt16(series.Fields(u"AutoNum"_s).Value());
    // A Null in the field Sign becomes an empty text, which means that the series is not a series
    // of doors.
    const bool isDoor = series.Fields(u"Sign"_s).Value().toString() == doorSign;
    panel.FrameDoorMashkof->setVisible(isDoor);
    Module1::IsDoorFrame = isDoor;
    panel.focusBox(isDoor ? 4 : 0);
    if (CheckKind->isChecked()) {
        takeMonoblock();
        panel.LabelKind->setText(ComboMonoBlock->currentText());
    } else {
        Module1::IsMonoblock = false;
        panel.LabelKind->setText(u"רגיל"_s);
    }
    reject();
}

void FormSelectSerial::takeMonoblock()
{
    Module1::IsMonoblock = true;
    Module1::MonoWidthDeduct = Picture1[0]->measure();
    Module1::MonoHeightDeduct = Picture1[1]->measure();
    Module1::U_Thick = Combo_U_Thick->currentText();
    Module1::ShalavWidthDeduct =
        cuts::shalavWidthDeducts[static_cast<std::size_t>(Combo_U_Thick->currentIndex())];
    Module1::Shalav_Thick = Picture1[2]->measure();
}

} // namespace calculation
