#include "calculation/opening_panel.h"

#include "base/input_boxes.h"
#include "base/key_helpers.h"
#include "base/module1.h"
#include "calculation/figure_tips.h"
#include "calculation/line_words.h"
#include "output/form_view.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_combo.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/process.h"
#include "store/line_columns.h"
#include "store/store_access.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>

#include <cmath>

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

std::function<OpeningPanel&()> panelProvider;

/// Assigns the values to consecutive fields of the line. `ordinal` is the ordinal of the first
/// field.
void setFields(dao::Recordset& line, int ordinal, std::initializer_list<QVariant> values)
{
    for (const QVariant& value : values)
        line.Fields(ordinal++).SetValue(value);
}

/// Returns the number of a new line: the highest line number of the order plus one. After
/// deletions, only a deleted highest number can therefore be used again.
std::int16_t nextLineNumber(dao::Recordset& lines)
{
    if (lines.RecordCount() <= 0)
        return 1;
    lines.MoveLast();
    return runtime::toInt16(runtime::toDouble(lines.Fields(u"NUM"_s).Value()) + 1);
}

QVariant kanafNum(dao::Recordset& series)
{
    return series.Fields(u"Kanaf_Num"_s).Value();
}

QVariant twice(const QVariant& count)
{
    return 2 * runtime::toDouble(count);
}

void writeCounts(dao::Recordset& line, dao::Recordset& series)
{
    using store::line::count;
    line.Fields(count(cuts::Mashkof)).SetValue(cuts::framePieces);
    line.Fields(count(cuts::Kanaf))
        .SetValue(Module1::IsDoorFrame ? kanafNum(series) : twice(kanafNum(series)));
    line.Fields(count(cuts::Glass)).SetValue(kanafNum(series));
    line.Fields(count(cuts::Reshet)).SetValue(kanafNum(series));
}

/// Returns as many characters of the text as the field can store. If the field has no maximum
/// length, returns the whole text.
QString cutToSize(const QString& text, const dao::Field& field)
{
    const int size = field.Size();
    return size > 0 ? text.left(size) : text;
}

void writeShutter(dao::Recordset& line)
{
    setFields(line, store::line::firstOfShutter,
              {Module1::MyWidth_2, Module1::MYHeight_2, Module1::U_Thick, Module1::U_Cut,
               Module1::U_Vasa, Module1::Shalav_Thick, Module1::Shalav_Width,
               std::nearbyint(Module1::Shalav_Count)});
    setFields(line, store::line::boxWidth, {Module1::Argaz_Width, Module1::Argaz_Height});
}

/// Returns one of the computed measures as a text. `ordinal` is the ordinal of the field in which
/// the line stores this measure.
QString measureText(int ordinal)
{
    return runtime::toText(Module1::CutValues[store::line::measureIndex(ordinal)]);
}

/// Activates the child window that contains the panel.
void activateChildWindow(OpeningPanel& panel)
{
    for (QWidget* each = &panel; each != nullptr; each = each->parentWidget()) {
        if (auto* child = qobject_cast<QMdiSubWindow*>(each); child && child->mdiArea())
            child->mdiArea()->setActiveSubWindow(child);
    }
}

} // namespace

void setOpeningPanelProvider(std::function<OpeningPanel&()> provider)
{
    panelProvider = std::move(provider);
}

OpeningPanel& openingPanel()
{
    if (!panelProvider)
        throw runtime::RunTimeError(runtime::ObjectNotSet);
    return panelProvider();
}

OpeningPanel::OpeningPanel(QWidget* parent) : QWidget(parent)
{
    setObjectName(u"OpeningPanel"_s);
    setLayoutDirection(Qt::RightToLeft);
    buildDataControls();
    buildSeriesLabels();
    buildFrame1();
    buildFrameDoorMashkof();
    buildFrame2();
    buildCommands();
    arrange();
    chainTabOrder();
    runtime::on(CmdPicSerial, &QPushButton::clicked, this, [this] { CmdPicSerial_Click(); });
    runtime::on(CmdOK, &QPushButton::clicked, this, [this] { CmdOK_Click(); });
    runtime::on(CmdAdd, &QPushButton::clicked, this, [this] { CmdAdd_Click(); });
    runtime::on(CmdClear1, &QPushButton::clicked, this, [this] { CmdClear1_Click(); });
}

void OpeningPanel::bindKindsAndColours()
{
    const std::array colours{u"MashkofColor"_s, u"KanafColor"_s, u"GlassColor"_s, u"ReshetColor"_s};
    const std::array kinds{u"MashkofKind"_s, u"KanafKind"_s, u"GlassKind"_s, u"ReshetKind"_s};
    for (std::size_t part = 0; part < cuts::PartCount; ++part)
        DataColor[part]->setRecordset(
            store::OpenMyDataBase()->OpenRecordset(colours[part], dao::dbOpenTable));
    for (std::size_t part = 0; part < cuts::PartCount; ++part)
        DataKind[part]->setRecordset(
            store::OpenMyDataBase()->OpenRecordset(kinds[part], dao::dbOpenTable));
}

void OpeningPanel::focusBox(std::size_t index)
{
    base::MeasureBox& box = *TextNum[index];
    if (!box.isVisible() || !box.isEnabled())
        throw runtime::RunTimeError(runtime::InvalidProcedureCall);
    activateChildWindow(*this);
    window()->activateWindow();
    box.setFocus();
    Module1::SelectAllText(box);
}

void OpeningPanel::CmdPicSerial_Click()
{
    emit seriesRequested();
}

void OpeningPanel::CmdOK_Click()
{
    if (refusesMissingSeries())
        return;
    ComputeCuts();
    output::FormView& view = output::formView();
    view.LabelName->setText(LabelSerial->text());
    view.LabelDate->setText(runtime::Today().toString(u"dd/MM/yyyy"_s));
    for (std::size_t part = 0; part < cuts::PartCount; ++part)
        view.LabelKind[part]->setText(DBComboKind[part]->currentText());
    for (std::size_t part = 0; part < cuts::PartCount; ++part)
        view.LabelColor[part]->setText(DBComboColor[part]->currentText());
    view.LabelOpenWidth->setText(measureText(store::line::openingWidth));
    view.LabelOpenHeight->setText(measureText(store::line::openingHeight));
    for (int part = 0; part < store::line::partCount; ++part) {
        view.LabelWidth[part]->setText(measureText(store::line::cutWidth(part)));
        view.LabelHeight[part]->setText(measureText(store::line::cutHeight(part)));
    }
    dao::Recordset& series = DataSerial->Recordset();
    view.LabelCount[cuts::Mashkof]->setText(runtime::toText(double{cuts::framePieces}));
    view.LabelCount[cuts::Kanaf]->setText(runtime::toText(twice(kanafNum(series))));
    view.LabelCount[cuts::Glass]->setText(runtime::toText(kanafNum(series)));
    view.LabelCount[cuts::Reshet]->setText(runtime::toText(kanafNum(series)));
    explainComputedLine(view, series);
    view.ShowModeless();
}

void OpeningPanel::CmdAdd_Click()
{
    if (refusesZero(0) || refusesZero(2) || refusesMissingSeries())
        return;
    ComputeCuts();
    Module1::SqlText = u"SELECT * FROM CUTS WHERE ORDER_NUM = "_s +
                       QString::number(Module1::CurrentOrderNum) + u" ORDER BY NUM ASC"_s;
    DataCuts->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
    dao::Recordset& lines = DataCuts->Recordset();
    const std::int16_t number = nextLineNumber(lines);
    lines.AddNew();
    writeLine(lines, number);
    lines.Update();
    clearOpening();
    emit lineAdded();
}

void OpeningPanel::CmdClear1_Click()
{
    clearOpening();
}

bool OpeningPanel::refusesZero(std::size_t wholeBox)
{
    if (runtime::toDouble(TextNum[wholeBox]->text()) != 0)
        return false;
    runtime::MsgBox(u"ערך נומרי 0 !"_s, runtime::refusalFlags);
    TextNum[wholeBox]->setFocus();
    return true;
}

bool OpeningPanel::refusesMissingSeries()
{
    if (Module1::SelectedSerialNum != 0)
        return false;
    runtime::MsgBox(u"לא בחרת שום סדרה, לחץ על 'בחר סדרה' "_s, runtime::refusalFlags,
                    u"בחירת סדרה"_s);
    return true;
}

/// Sets the fields of the new line in the table Cuts. A field is selected by its name, or by its
/// ordinal, which is the position of its column in the table.
void OpeningPanel::writeLine(dao::Recordset& lines, std::int16_t number)
{
    lines.Fields(u"Name"_s).SetValue(LabelSerial->text());
    lines.Fields(u"Order_Num"_s).SetValue(int{Module1::CurrentOrderNum});
    lines.Fields(u"NUM"_s).SetValue(int{number});
    lines.Fields(u"Order_Date"_s).SetValue(runtime::Today());
    for (std::size_t i = 0; i < store::line::measureCount; ++i)
        lines.Fields(store::line::openingWidth + int(i)).SetValue(Module1::CutValues[i]);
    writeKindsAndColours(lines);
    writeCounts(lines, DataSerial->Recordset());
    dao::Field kind = lines.Fields(store::line::windowKind);
    kind.SetValue(Module1::IsMonoblock ? cutToSize(Module1::KindCaption, kind) : ordinaryKind());
    writeShutter(lines);
}

void OpeningPanel::writeKindsAndColours(dao::Recordset& lines)
{
    for (int part = 0; part < store::line::partCount; ++part)
        lines.Fields(store::line::kind(part))
            .SetValue(DBComboKind[std::size_t(part)]->currentText());
    for (int part = 0; part < store::line::partCount; ++part)
        lines.Fields(store::line::colour(part))
            .SetValue(DBComboColor[std::size_t(part)]->currentText());
}

void OpeningPanel::clearOpening()
{
    TextNum[0]->setText(u"0"_s);
    TextNum[1]->setText(u"00"_s);
    TextNum[2]->setText(u"0"_s);
    TextNum[3]->setText(u"00"_s);
    TextNum[0]->setFocus();
    Module1::SelectAllText(*TextNum[0]);
}

} // namespace calculation
