#include "calculation/opening_panel.h"

#include "base/input_boxes.h"
#include "base/part_captions.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_combo.h"
#include "platform/controls/makers.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

QFont formFont()
{
    return controls::fontOf(u"David"_s, 12);
}

/// Returns the font of the panel's labels. Its size is the size that the order form later sets for
/// all labels. The labels have this size from the start, because the panel reserves the width of a
/// group box that contains a label and is hidden at first.
QFont labelFont()
{
    return controls::fontOf(u"David"_s, 13);
}

QLabel* caption(const QString& name, const QString& text, QWidget* parent)
{
    return controls::makeLabel(name, text, labelFont(), parent);
}

/// Creates a label for a value. Qt::AlignAbsolute is set because Qt would otherwise align a text
/// that contains only digits to the opposite side.
QLabel* value(const QString& name, const QString& text, Qt::Alignment alignment, QWidget* parent)
{
    QLabel* label = controls::makeValueLabel(name, text, labelFont(), parent);
    label->setAlignment(alignment | Qt::AlignAbsolute | Qt::AlignVCenter);
    label->setMargin(2);
    label->setMinimumWidth(40);
    return label;
}

/// Makes the width of the label depend on the layout only, not on the length of its text. `least`
/// is the minimum width.
void takeGivenWidth(QLabel* label, int least)
{
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->setMinimumWidth(least);
}

QGroupBox* frame(const QString& name, const QString& title, QWidget* parent)
{
    auto* box = new QGroupBox(title, parent);
    box->setObjectName(name);
    box->setFont(formFont());
    return box;
}

QPushButton* command(const QString& name, const QString& text, QWidget* parent)
{
    QPushButton* button =
        controls::makeButton(name, text, controls::fontOf(u"Arial"_s, 11), parent);
    button->setMinimumHeight(34);
    return button;
}

controls::DBCombo* partCombo(const QString& name, controls::DataControl* rows, QWidget* parent)
{
    auto* combo = new controls::DBCombo(name, parent);
    combo->setFont(formFont());
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(8);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    combo->setRowSource(rows, u"Name"_s);
    // After the user has chosen an entry, the box shows the start of the name, so that a long name
    // is readable.
    QObject::connect(combo, &QComboBox::activated, combo->lineEdit(),
                     [edit = combo->lineEdit()] { edit->home(false); });
    return combo;
}

} // namespace

void OpeningPanel::buildDataControls()
{
    for (std::size_t part = 0; part < cuts::PartCount; ++part) {
        DataColor[part] =
            new controls::DataControl(controls::memberName(u"DataColor"_s, part), this);
        DataKind[part] = new controls::DataControl(controls::memberName(u"DataKind"_s, part), this);
    }
    DataCuts = new controls::DataControl(u"DataCuts"_s, this);
    DataSerial = new controls::DataControl(u"DataSerial"_s, this);
}

void OpeningPanel::buildSeriesLabels()
{
    caption(u"Label1_0"_s, u"חישוב לפי  סידרה"_s, this);
    caption(u"Label3"_s, u"מס. נתיב"_s, this);
    caption(u"Label4"_s, u"מס. כנף"_s, this);
    caption(u"Label12"_s, u"סוג חלון"_s, this);
    LabelSerial = value(u"LabelSerial"_s, {}, Qt::AlignRight, this);
    LabelSerial->setWordWrap(true);
    // The label always has the height of two text lines, so that a long name does not move the
    // controls below the label.
    LabelSerial->setFixedHeight(2 * QFontMetrics(labelFont()).lineSpacing() +
                                2 * (LabelSerial->margin() + LabelSerial->frameWidth()));
    takeGivenWidth(LabelSerial, 160);
    LabelNativ = value(u"LabelNativ"_s, {}, Qt::AlignHCenter, this);
    LabelKanaf = value(u"LabelKanaf"_s, {}, Qt::AlignHCenter, this);
    LabelKind = value(u"LabelKind"_s, u"רגיל"_s, Qt::AlignRight, this);
    takeGivenWidth(LabelKind, 160);
}

base::MeasurePair* OpeningPanel::measurePair(std::size_t pair, const QString& wholeText,
                                             QWidget* parent)
{
    const std::array texts{wholeText, u"00"_s};
    for (std::size_t side = 0; side < 2; ++side) {
        const std::size_t index = 2 * pair + side;
        auto* box = new base::MeasureBox(static_cast<int>(index), texts[side],
                                         base::MeasureBox::OnLeaving::FillDefaultAndPad);
        box->setObjectName(controls::memberName(u"TextNum"_s, index));
        box->setFont(controls::fontOf(u"David"_s, 13));
        box->setSelectsOnFocus(true);
        TextNum[index] = box;
    }
    Picture1[pair] = new base::MeasurePair(controls::memberName(u"Picture1"_s, pair),
                                           TextNum[2 * pair], TextNum[2 * pair + 1],
                                           controls::memberName(u"Label1"_s, 3 + pair), parent);
    return Picture1[pair];
}

void OpeningPanel::buildFrame1()
{
    Frame1 = frame(u"Frame1"_s, u"הכנס נתוני פתח החלון"_s, this);
    auto* row = new QHBoxLayout(Frame1);
    row->addWidget(caption(u"Label1_1"_s, u"רוחב"_s, Frame1));
    row->addWidget(measurePair(0, u"0"_s, Frame1));
    row->addStretch();
    row->addWidget(caption(u"Label1_2"_s, u"גובה"_s, Frame1));
    row->addWidget(measurePair(1, u"0"_s, Frame1));
    row->addStretch();
    Picture1[0]->setSpokenCaption(u"רוחב"_s);
    Picture1[1]->setSpokenCaption(u"גובה"_s);
}

void OpeningPanel::buildFrameDoorMashkof()
{
    FrameDoorMashkof = frame(u"FrameDoorMashkof"_s, {}, this);
    auto* row = new QHBoxLayout(FrameDoorMashkof);
    row->addWidget(caption(u"Label11"_s, u"עובי משקוף דלת :"_s, FrameDoorMashkof));
    row->addWidget(measurePair(2, u"4"_s, FrameDoorMashkof));
    Picture1[2]->setSpokenCaption(u"עובי משקוף דלת"_s);
    row->addStretch();
    // The group box for the thickness of the door frame keeps its space while it is hidden, so that
    // the layout does not move when a door series is chosen.
    QSizePolicy policy = FrameDoorMashkof->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    FrameDoorMashkof->setSizePolicy(policy);
    // The group box gets extra width, because its texts may become a pixel wider when they are
    // first shown.
    constexpr int reserve = 4;
    FrameDoorMashkof->setMinimumWidth(FrameDoorMashkof->minimumSizeHint().width() + reserve);
    FrameDoorMashkof->hide();
}

void OpeningPanel::buildFrame2()
{
    Frame2 = frame(u"Frame2"_s, u"בחר סוג וצבע לפריטים"_s, this);
    auto* grid = new QGridLayout(Frame2);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    grid->setVerticalSpacing(4);
    grid->addWidget(caption(u"Label5"_s, u"סוג"_s, Frame2), 0, 1);
    grid->addWidget(caption(u"Label10"_s, u"צבע"_s, Frame2), 0, 2);
    const std::array names{u"Label6"_s, u"Label7"_s, u"Label8"_s, u"Label9"_s};
    for (std::size_t part = 0; part < cuts::PartCount; ++part) {
        const int row = static_cast<int>(part) + 1;
        grid->setRowStretch(row, 1);
        grid->addWidget(caption(names[part], base::partCaptions()[part], Frame2), row, 0);
        DBComboKind[part] =
            partCombo(controls::memberName(u"DBComboKind"_s, part), DataKind[part], Frame2);
        // An aligned box lets its row grow.
        grid->addWidget(DBComboKind[part], row, 1, Qt::AlignVCenter);
        DBComboColor[part] =
            partCombo(controls::memberName(u"DBComboColor"_s, part), DataColor[part], Frame2);
        grid->addWidget(DBComboColor[part], row, 2, Qt::AlignVCenter);
        const QString spoken = QString(base::partCaptions()[part]).remove(u" :"_s);
        DBComboKind[part]->setSpokenName(spoken + u", סוג"_s);
        DBComboColor[part]->setSpokenName(spoken + u", צבע"_s);
    }
}

void OpeningPanel::buildCommands()
{
    CmdPicSerial = command(u"CmdPicSerial"_s, u"בחר סדרה"_s, this);
    commandRow_ = new QWidget(this);
    CmdAdd = command(u"CmdAdd"_s, u"הוסף להזמנה"_s, commandRow_);
    CmdOK = command(u"CmdOK"_s, u"קדם חישוב"_s, commandRow_);
    CmdClear1 = command(u"CmdClear1"_s, u"נקה"_s, commandRow_);
    auto* row = new QHBoxLayout(commandRow_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(CmdAdd, 3);
    row->addWidget(CmdOK, 3);
    row->addWidget(CmdClear1, 2);
}

QLayout* OpeningPanel::seriesRows()
{
    const auto label = [this](const QString& name) { return findChild<QLabel*>(name); };
    auto* series = new QHBoxLayout;
    series->addWidget(label(u"Label1_0"_s));
    series->addWidget(LabelSerial, 1);
    series->addWidget(CmdPicSerial);
    auto* counts = new QHBoxLayout;
    counts->addWidget(label(u"Label3"_s));
    counts->addWidget(LabelNativ);
    counts->addWidget(label(u"Label4"_s));
    counts->addWidget(LabelKanaf);
    counts->addWidget(label(u"Label12"_s));
    counts->addWidget(LabelKind, 1);
    auto* rows = new QVBoxLayout;
    rows->setSpacing(4);
    rows->addLayout(series);
    rows->addLayout(counts);
    return rows;
}

/// Arranges the controls of the panel in one column. In a high window the distances between the
/// rows increase, so that no empty area remains below the last row.
void OpeningPanel::arrange()
{
    auto* measures = new QHBoxLayout;
    measures->addWidget(Frame1, 1);
    measures->addWidget(FrameDoorMashkof, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(seriesRows(), 1);
    column->addLayout(measures, 1);
    column->addWidget(Frame2, 3);
    column->addWidget(commandRow_);
}

/// Sets the tab order of the panel. The two boxes of the door frame's thickness are the last tab
/// stops of the whole form.
void OpeningPanel::chainTabOrder()
{
    QWidgetList chain{CmdPicSerial, TextNum[0], TextNum[1], TextNum[2],
                      TextNum[3],   CmdAdd,     CmdOK,      CmdClear1};
    for (std::size_t part = 0; part < cuts::PartCount; ++part)
        chain << DBComboKind[part] << DBComboColor[part];
    chain << TextNum[4] << TextNum[5];
    for (qsizetype i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

} // namespace calculation
