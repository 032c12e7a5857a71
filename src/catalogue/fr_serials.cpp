#include "catalogue/fr_serials.h"

#include "catalogue/fonts.h"
#include "catalogue/series_fields.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/scroll_part.h"
#include "platform/controls/twips.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "store/store_access.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace catalogue {

FrSerials::FrSerials() : ChildForm(u"FrSerials"_s, u"סדרות"_s)
{
    setLayoutDirection(Qt::RightToLeft);
    FrameOrder = new SeriesFields(this);
    FrameOrder->setEnabled(false);
    DataSerial = new controls::DataControl(u"DataSerial"_s, FrameOrder);
    addGrid();
    addCommands();
    layOut();
    orderTabs();
    load();
}

void FrSerials::addGrid()
{
    DataGrid = new controls::DataControl(u"DataGrid"_s, this);
    DBGrid1 = new controls::DBGrid(u"DBGrid1"_s, this);
    DBGrid1->setCaption(u"כל הסדרות"_s);
    constexpr int countWidth = 1535;
    constexpr int nameWidth = 5292;
    QList<controls::DBGridColumn> columns{
        {u"מס. כנף"_s, u"Kanaf_Num"_s, countWidth},
        {u"מס.  נתיב"_s, u"Nativ_Num"_s, countWidth},
        {u"שם סדרה"_s, u"Name"_s, nameWidth},
    };
    for (const QString& hidden :
         {u"Mashkof_H"_s, u"Kanaf_W"_s, u"Kanaf_H"_s, u"Glass_W"_s, u"Glass_H"_s, u"Reshet_W"_s,
          u"Reshet_H"_s, u"Nativ_Num"_s, u"Kanaf_Num"_s})
        columns.append({hidden, hidden});
    DBGrid1->setColumns(columns);
    DBGrid1->setDataSource(DataGrid);
    DBGrid1->setMinimumWidth(controls::pixels(2 * countWidth + nameWidth));
}

QPushButton* FrSerials::addCommand(const QString& name, const QString& caption)
{
    return controls::makeButton(name, caption, commandFont(), this);
}

void FrSerials::addCommands()
{
    CmdNew = addCommand(u"CmdNew"_s, u"סדרה חדשה"_s);
    CmdAdd = addCommand(u"CmdAdd"_s, u"הוסף"_s);
    CmdUpdate = addCommand(u"CmdUpdate"_s, u"עדכן"_s);
    CmdDelete = addCommand(u"CmdDelete"_s, u"מחק"_s);
    CmdEnd = addCommand(u"CmdEnd"_s, u"סיים"_s);
    runtime::on(CmdNew, &QPushButton::clicked, this, [this] { CmdNew_Click(); });
    runtime::on(CmdAdd, &QPushButton::clicked, this, [this] { CmdAdd_Click(); });
    runtime::on(CmdUpdate, &QPushButton::clicked, this, [this] { CmdUpdate_Click(); });
    runtime::on(CmdDelete, &QPushButton::clicked, this, [this] { CmdDelete_Click(); });
    runtime::on(CmdEnd, &QPushButton::clicked, this, [this] { Unload(); });
}

void FrSerials::layOut()
{
    QLabel* heading = controls::makeLabel(u"Label1_0"_s, u"עריכת סדרות"_s, headingFont(), this);
    heading->setAlignment(Qt::AlignCenter);

    auto* middle = new QHBoxLayout;
    middle->addWidget(FrameOrder);
    middle->addWidget(DBGrid1, 1);

    auto* commands = new QHBoxLayout;
    for (QPushButton* each : {CmdNew, CmdAdd, CmdUpdate, CmdDelete, CmdEnd})
        commands->addWidget(each);
    commands->addStretch();

    auto* upper = new QWidget;
    auto* rows = new QVBoxLayout(upper);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(heading);
    rows->addLayout(middle, 1);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(new controls::ScrollPart(upper, this), 1);
    whole->addLayout(commands);
}

void FrSerials::orderTabs()
{
    QList<QWidget*> order = FrameOrder->inTabOrder();
    order << CmdNew << CmdAdd << CmdUpdate << CmdDelete << CmdEnd << DBGrid1;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void FrSerials::load()
{
    DataGrid->setRecordset(store::OpenMyDataBase()->OpenRecordset(u"Serials"_s, dao::dbOpenTable));
    controls::SetGridFont(*DBGrid1);
}

void FrSerials::CmdNew_Click()
{
    FrameOrder->setEnabled(true);
    FrameOrder->clear();
    DataGrid->Refresh();
    FrameOrder->focusName();
}

void FrSerials::CmdAdd_Click()
{
    if (runtime::MsgBox(u"האם אתה בטוח שברצונך להוסיף את הסדרה הזו??"_s, runtime::questionFlags,
                        u"הוספת סדרה"_s) != runtime::vbYes)
        return;
    DataSerial->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(u"Serials"_s, dao::dbOpenTable));
    dao::Recordset& serials = DataSerial->Recordset();
    serials.SetIndex(DataSerial->Database().tableDefs()(u"Serials"_s).indexes()(0).Name());
    serials.AddNew();
    FrameOrder->PutSeriesFields(*DataSerial);
    serials.Update();
    DataSerial->Database().Close();
    DataGrid->Refresh();
    FrameOrder->setEnabled(false);
}

void FrSerials::CmdUpdate_Click()
{
    if (DataGrid->Recordset().RecordCount() < 1)
        return;
    const bool startsEditing = CmdNew->isEnabled();
    enableCommands(!startsEditing);
    FrameOrder->ExchangeSeriesFields(!startsEditing, *DataGrid);
    FrameOrder->setEnabled(startsEditing);
}

void FrSerials::enableCommands(bool enable)
{
    CmdNew->setEnabled(enable);
    CmdAdd->setEnabled(enable);
    CmdDelete->setEnabled(enable);
    DBGrid1->setEnabled(enable);
}

void FrSerials::CmdDelete_Click()
{
    if (runtime::MsgBox(u"האם אתה בטוח שברצונך למחוק את הסדרה הזו??"_s, runtime::questionFlags,
                        u"מחיקת סדרה"_s) != runtime::vbYes)
        return;
    DataGrid->Recordset().Delete();
    DataGrid->Refresh();
}

} // namespace catalogue
