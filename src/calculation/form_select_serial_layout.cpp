#include "calculation/form_select_serial.h"

#include "base/input_boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/makers.h"
#include "platform/controls/scroll_part.h"
#include "platform/controls/wheel_guard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

QFont pickerFont()
{
    return controls::fontOf(u"David"_s, 12);
}

QLabel* pickerCaption(const QString& name, const QString& text, QWidget* parent)
{
    return controls::makeLabel(name, text, pickerFont(), parent);
}

QComboBox* dropDownList(const QString& name, const QStringList& entries, QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    combo->setFont(pickerFont());
    combo->addItems(entries);
    combo->setCurrentIndex(-1);
    controls::guardFromWheel(*combo);
    return combo;
}

QPushButton* pickerButton(const QString& name, const QString& text, QWidget* parent)
{
    QPushButton* button =
        controls::makeButton(name, text, controls::fontOf(u"Arial"_s, 11), parent);
    // The buttons are not default buttons, because Enter in an input box must not press them.
    button->setAutoDefault(false);
    return button;
}

} // namespace

void FormSelectSerial::buildGrid()
{
    DataSerials = new controls::DataControl(u"DataSerials"_s, this);
    DBGrid1 = new controls::DBGrid(u"DBGrid1"_s, this);
    DBGrid1->setCaption(u"סדרות"_s);
    DBGrid1->setColumns({{u"מס. כנף"_s, u"Kanaf_Num"_s, 1773},
                         {u"מס. נתיב"_s, u"Nativ_Num"_s, 1773},
                         {u"שם סדרה"_s, u"Name"_s, 5292},
                         {u"Mashkof_H"_s, u"Kind"_s},
                         {u"Kanaf_W"_s, u"Kanaf_W"_s},
                         {u"Kanaf_H"_s, u"Kanaf_H"_s},
                         {u"Glass_W"_s, u"Glass_W"_s},
                         {u"Glass_H"_s, u"Glass_H"_s},
                         {u"Reshet_W"_s, u"Reshet_W"_s},
                         {u"Reshet_H"_s, u"Reshet_H"_s},
                         {u"Nativ_Num"_s, u"Nativ_Num"_s},
                         {u"Kanaf_Num"_s, u"Kanaf_Num"_s}});
    DBGrid1->setSearchColumn(2);
    DBGrid1->setDataSource(DataSerials);
    DBGrid1->setMinimumSize(600, 240);
}

base::MeasurePair* FormSelectSerial::measurePair(std::size_t pair, const QString& wholeText,
                                                 const QString& hundredthsText,
                                                 const QString& pointName)
{
    const std::array texts{wholeText, hundredthsText};
    for (std::size_t side = 0; side < 2; ++side) {
        const std::size_t index = 2 * pair + side;
        auto* box = new base::MeasureBox(static_cast<int>(index), texts[side],
                                         base::MeasureBox::OnLeaving::FillDefault);
        box->setObjectName(controls::memberName(u"TextNum"_s, index));
        box->setFont(controls::fontOf(u"David"_s, 13));
        TextNum[index] = box;
    }
    Picture1[pair] =
        new base::MeasurePair(controls::memberName(u"Picture1"_s, pair), TextNum[2 * pair],
                              TextNum[2 * pair + 1], pointName, FrameMonoblock);
    return Picture1[pair];
}

void FormSelectSerial::buildMonoblock()
{
    CheckKind = new QCheckBox(u"האם החלון הוא מסוג \" מונובלוק \" ?"_s, this);
    CheckKind->setObjectName(u"CheckKind"_s);
    CheckKind->setFont(pickerFont());
    FrameMonoblock = new QGroupBox(u"נתוני  מונובלוק"_s, this);
    FrameMonoblock->setObjectName(u"FrameMonoblock"_s);
    FrameMonoblock->setFont(pickerFont());
    ComboMonoBlock = dropDownList(
        u"ComboMonoBlock"_s, {u"מונו בלוק : 10"_s, u"מונו בלוק : 30"_s, u"מונובלוק : 20 מכסה 15"_s},
        FrameMonoblock);
    Combo_U_Thick = dropDownList(u"Combo_U_Thick"_s, {u"6.5"_s, u"5.3"_s}, FrameMonoblock);

    auto* grid = new QGridLayout(FrameMonoblock);
    grid->setColumnStretch(2, 1);
    grid->setHorizontalSpacing(10);
    grid->addWidget(pickerCaption(u"Label6"_s, u"סוג :"_s, FrameMonoblock), 0, 0);
    grid->addWidget(ComboMonoBlock, 0, 1, 1, 2);
    grid->addWidget(pickerCaption(u"Label2"_s, u" הורדה מהרוחב :"_s, FrameMonoblock), 1, 0);
    grid->addWidget(measurePair(0, u"0"_s, u"00"_s, u"Label1_2"_s), 1, 1);
    grid->addWidget(pickerCaption(u"Label3"_s, u" הורדה מהגובה  :"_s, FrameMonoblock), 2, 0);
    grid->addWidget(measurePair(1, u"0"_s, u"00"_s, u"Label1_4"_s), 2, 1);
    grid->addWidget(pickerCaption(u"Label4"_s, u"עובי U :"_s, FrameMonoblock), 1, 3);
    grid->addWidget(Combo_U_Thick, 1, 4);
    grid->addWidget(pickerCaption(u"Label5"_s, u"עובי שלב  :"_s, FrameMonoblock), 2, 3);
    grid->addWidget(measurePair(2, u"4"_s, u"50"_s, u"Label1_9"_s), 2, 4);
    Picture1[0]->setSpokenCaption(u"הורדה מהרוחב"_s);
    Picture1[1]->setSpokenCaption(u"הורדה מהגובה"_s);
    Picture1[2]->setSpokenCaption(u"עובי שלב"_s);
    ComboMonoBlock->setAccessibleName(u"סוג"_s);
    Combo_U_Thick->setAccessibleName(u"עובי U"_s);
    const std::array behind{u"Label1_0"_s, u"Label1_1"_s, u"Label1_3"_s};
    for (std::size_t pair = 0; pair < behind.size(); ++pair) {
        // The series picker has a second label with a decimal point for each measure. This label is
        // always hidden behind the visible label.
        pickerCaption(behind[pair], u"."_s, Picture1[pair])->hide();
    }
    for (QWidget* each : monoblockControls())
        each->setEnabled(false);
}

QWidgetList FormSelectSerial::monoblockControls() const
{
    QWidgetList all{ComboMonoBlock, Combo_U_Thick};
    for (base::MeasureBox* box : TextNum)
        all.append(box);
    for (const base::MeasurePair* pair : Picture1)
        all.append(pair->point());
    return all;
}

void FormSelectSerial::buildCommands()
{
    CmdPic = pickerButton(u"CmdPic"_s, u"בחר"_s, this);
    CmdClose = pickerButton(u"CmdClose"_s, u"סגור"_s, this);
}

void FormSelectSerial::arrange()
{
    auto* commands = new QHBoxLayout;
    commands->addStretch();
    commands->addWidget(CmdPic);
    commands->addWidget(CmdClose);
    auto* contents = new QWidget;
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(DBGrid1);
    // Leading alignment keeps the check box no wider than its text, so that clicks beside it do
    // nothing.
    column->addWidget(CheckKind, 0, Qt::AlignLeading);
    column->addWidget(FrameMonoblock);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(new controls::ScrollPart(contents, this), 1);
    whole->addLayout(commands);
}

/// Sets the tab order of the series picker. The tab order visits the first four measure boxes in
/// reverse order, because users rely on this order.
void FormSelectSerial::chainTabOrder()
{
    const QWidgetList chain{DBGrid1,        CmdClose,   CmdPic,     TextNum[3],
                            TextNum[2],     TextNum[1], TextNum[0], CheckKind,
                            ComboMonoBlock, TextNum[4], TextNum[5], Combo_U_Thick};
    for (qsizetype i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
    DBGrid1->setFocus();
}

} // namespace calculation
