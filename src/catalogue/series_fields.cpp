#include "catalogue/series_fields.h"

#include "base/input_boxes.h"
#include "base/part_captions.h"
#include "platform/controls/data_control.h"
#include "platform/controls/makers.h"
#include "platform/controls/wheel_guard.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"
#include "store/schema.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace catalogue {

namespace {

QFont fieldFont()
{
    return controls::fontOf(u"David"_s, 14.25);
}

/// Returns a palette in which disabled fields have readable text. While browsing, the user reads
/// the fields although the group box is disabled.
QPalette readablePalette(QPalette palette)
{
    const QColor grey(70, 70, 70);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, grey);
    return palette;
}

/// Selects the list entry for a stored number of tracks or sashes. The number 1 selects the first
/// entry. Throws InvalidPropertyValue (380) if the list has no entry for the number.
void chooseCount(QComboBox& list, const QVariant& stored)
{
    const std::int32_t count = runtime::toInt32(stored);
    if (count < 1 || count > list.count())
        throw runtime::RunTimeError(runtime::InvalidPropertyValue);
    list.setCurrentIndex(count - 1);
}

/// Returns the Hebrew name that screen readers announce for a deduction: the part, and whether the
/// deduction is taken from the width or from the height.
QString spokenDeduction(int index)
{
    const QString part = QString(base::partCaptions()[std::size_t(index / 2)]).remove(u" :"_s);
    return part + (index % 2 == 0 ? u" מהרוחב"_s : u" מהגובה"_s);
}

} // namespace

SeriesFields::SeriesFields(QWidget* parent) : QGroupBox(parent)
{
    setObjectName(u"FrameOrder"_s);
    setFont(fieldFont());
    setPalette(readablePalette(palette()));
    auto* column = new QVBoxLayout(this);
    addHead(*column);
    addDeductions(*column);
    addRemark(*column);
    column->addStretch();
}

QLabel* SeriesFields::addLabel(const QString& name, const QString& caption)
{
    return controls::makeLabel(name, caption, {}, this);
}

QLineEdit* SeriesFields::addTextBox(const QString& name)
{
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    box->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return box;
}

QComboBox* SeriesFields::addList(const QString& name, const QStringList& entries)
{
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->addItems(entries);
    controls::guardFromWheel(*list);
    return list;
}

void SeriesFields::addHead(QVBoxLayout& column)
{
    auto* grid = new QGridLayout;
    TextName = addTextBox(u"TextName"_s);
    ComboLane = addList(u"ComboLane"_s, {u"1 נתיב"_s, u"2 נתיבים"_s, u"3 נתיבים"_s, u"4 נתיבים"_s});
    ComboWing = addList(u"ComboWing"_s, {u"1 כנף"_s, u"2 כנפיים"_s, u"3 כנפיים"_s, u"4 כנפיים"_s,
                                         u"5 כנפיים"_s, u"6 כנפיים"_s});
    grid->addWidget(addLabel(u"Label2"_s, u"שם סדרה :"_s), 0, 0);
    grid->addWidget(TextName, 0, 1);
    grid->addWidget(addLabel(u"Label11"_s, u"מספר נתיבים  :"_s), 1, 0);
    grid->addWidget(ComboLane, 1, 1);
    grid->addWidget(addLabel(u"Label10"_s, u"מספר כנפיים :"_s), 2, 0);
    grid->addWidget(ComboWing, 2, 1);
    TextName->setAccessibleName(u"שם סדרה"_s);
    ComboLane->setAccessibleName(u"מספר נתיבים"_s);
    ComboWing->setAccessibleName(u"מספר כנפיים"_s);
    grid->setColumnStretch(1, 1);
    column.addLayout(grid);
}

void SeriesFields::addDeductions(QVBoxLayout& column)
{
    QLabel* heading = addLabel(u"Label3"_s, u"הורדות"_s);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    heading->setAlignment(Qt::AlignCenter);
    column.addWidget(heading);

    auto* grid = new QGridLayout;
    // A wide gap between the columns shows that a sign box belongs to the number on its right.
    grid->setHorizontalSpacing(24);
    grid->addWidget(addLabel(u"Label4"_s, u"מהרוחב "_s), 0, 1, Qt::AlignCenter);
    grid->addWidget(addLabel(u"Label5"_s, u"מהגובה"_s), 0, 2, Qt::AlignCenter);
    for (int part = 0; part < 4; ++part) {
        grid->addWidget(
            addLabel(u"Label%1"_s.arg(6 + part), base::partCaptions()[std::size_t(part)]), part + 1,
            0);
        grid->addWidget(addDeduction(2 * part), part + 1, 1, Qt::AlignCenter);
        grid->addWidget(addDeduction(2 * part + 1), part + 1, 2, Qt::AlignCenter);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    column.addLayout(grid);

    // The screen has nine labels with a decimal point but only eight pairs of boxes, so the ninth
    // label is hidden.
    addLabel(u"Label1_9"_s, u"."_s)->hide();
}

QWidget* SeriesFields::addDeduction(int index)
{
    using base::MeasureBox;
    auto* signedMeasure = new QWidget(this);
    // The sign, the whole box and the hundredths box stay left-to-right on the right-to-left form.
    signedMeasure->setLayoutDirection(Qt::LeftToRight);
    auto* row = new QHBoxLayout(signedMeasure);
    row->setContentsMargins(0, 0, 0, 0);

    TextSign[index] = new base::SignBox(index, signedMeasure);
    whole(index) = new MeasureBox(2 * index, u"0"_s, MeasureBox::OnLeaving::FillDefault);
    hundredths(index) = new MeasureBox(2 * index + 1, u"00"_s, MeasureBox::OnLeaving::FillDefault);
    auto* pair = new base::MeasurePair(u"Picture1_%1"_s.arg(index), whole(index), hundredths(index),
                                       u"Label1_%1"_s.arg(index + 1), signedMeasure);
    const QString spoken = spokenDeduction(index);
    TextSign[index]->setAccessibleName(spoken + u", סימן"_s);
    pair->setSpokenCaption(spoken);
    row->addWidget(TextSign[index]);
    row->addWidget(pair);
    return signedMeasure;
}

void SeriesFields::addRemark(QVBoxLayout& column)
{
    auto* row = new QHBoxLayout;
    TextRem = addTextBox(u"TextRem"_s);
    TextRem->setMaxLength(50);
    TextRem->setAccessibleName(u"הערות"_s);
    row->addWidget(addLabel(u"Label12"_s, u"הערות :"_s));
    row->addWidget(TextRem, 1);
    column.addLayout(row);
}

void SeriesFields::ExchangeSeriesFields(bool Save, controls::DataControl& Source)
{
    dao::Recordset& series = Source.Recordset();
    if (!Save) {
        // Edit is called only because it reads the row again from the store. Another station may
        // have changed the row. CancelUpdate then ends the edit without a change. A move to the
        // same row would also read it again, but would notify the bound controls of a row change.
        series.Edit();
        series.CancelUpdate();
        loadFrom(series);
        return;
    }
    series.Edit();
    PutSeriesFields(Source);
    series.Update();
}

void SeriesFields::loadFrom(dao::Recordset& series)
{
    TextName->setText(runtime::toText(series.Fields(u"Name"_s).Value()));
    const QVariant remark = series.Fields(u"Rem"_s).Value();
    TextRem->setText(runtime::textOrEmpty(remark));
    for (int i = 0; i < deductionCount; ++i) {
        const QVariant stored = series.Fields(store::deductionFields()[i]).Value();
        const DeductionText text = splitDeduction(runtime::toDouble(stored));
        TextSign[i]->setText(text.sign);
        whole(i)->setText(text.whole);
        hundredths(i)->setText(text.hundredths);
    }
    chooseCount(*ComboLane, series.Fields(u"Nativ_Num"_s).Value());
    chooseCount(*ComboWing, series.Fields(u"Kanaf_Num"_s).Value());
}

void SeriesFields::PutSeriesFields(controls::DataControl& Source)
{
    dao::Recordset& series = Source.Recordset();
    series.Fields(u"Name"_s).SetValue(TextName->text());
    for (int i = 0; i < deductionCount; ++i) {
        const DeductionText text{TextSign[i]->text(), whole(i)->text(), hundredths(i)->text()};
        series.Fields(store::deductionFields()[i]).SetValue(joinDeduction(text));
    }
    series.Fields(u"Nativ_Num"_s).SetValue(ComboLane->currentIndex() + 1);
    series.Fields(u"Kanaf_Num"_s).SetValue(ComboWing->currentIndex() + 1);
    series.Fields(u"Rem"_s).SetValue(TextRem->text());
}

void SeriesFields::clear()
{
    TextName->clear();
    TextRem->clear();
    ComboLane->setCurrentIndex(0);
    ComboWing->setCurrentIndex(0);
    for (int i = 0; i < 2 * deductionCount; ++i)
        TextNum[i]->setText(i % 2 == 0 ? u"0"_s : u"00"_s);
}

QList<QWidget*> SeriesFields::inTabOrder()
{
    QList<QWidget*> fields{TextName, ComboLane, ComboWing};
    for (int i = 0; i < deductionCount; ++i)
        fields << TextSign[i] << whole(i) << hundredths(i);
    return fields << TextRem;
}

void SeriesFields::focusName()
{
    TextName->setFocus();
}

} // namespace catalogue
