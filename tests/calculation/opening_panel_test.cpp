#include "panel_host.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_combo.h"
#include "platform/runtime/run_time_error.h"
#include "support/errors.h"
#include "support/widgets.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using testsupport::child;

class OpeningPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void captions_haveTheirTexts_data();
    void captions_haveTheirTexts();
    void boxes_haveTheirInitialTextsAndLimits();
    void measurePairs_areLaidOutLeftToRight();
    void frames_containTheirControls();
    void hiddenDoorFrame_keepsItsSpace();
    void tabKey_visitsTheControlsInOrder();
    void enterKey_padsTheBoxAndMovesOn();
    void lists_showTheNamesOfTheirTables();
    void missingTable_isTableNotFound();
    void labels_areExactlyQLabels();
    void longSeriesName_isWrapped();
    void largestFont_keepsThePanelNarrow();
    void focusBox_selectsTheText();
    void focusBoxOnAHiddenBox_isInvalidProcedureCall();
};

void OpeningPanelTest::captions_haveTheirTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    const auto row = [](const QString& name, const QString& text) {
        QTest::newRow(qPrintable(name)) << name << text;
    };
    row(u"Label1_0"_s, u"חישוב לפי  סידרה"_s);
    row(u"Label3"_s, u"מס. נתיב"_s);
    row(u"Label4"_s, u"מס. כנף"_s);
    row(u"Label12"_s, u"סוג חלון"_s);
    row(u"Label5"_s, u"סוג"_s);
    row(u"Label10"_s, u"צבע"_s);
    row(u"Label6"_s, u"משקוף :"_s);
    row(u"Label7"_s, u"כנף :"_s);
    row(u"Label8"_s, u"זכוכית :"_s);
    row(u"Label9"_s, u"רשת :"_s);
    row(u"Label11"_s, u"עובי משקוף דלת :"_s);
    row(u"LabelSerial"_s, {});
    row(u"LabelNativ"_s, {});
    row(u"LabelKanaf"_s, {});
    row(u"LabelKind"_s, u"רגיל"_s);
    row(u"CmdPicSerial"_s, u"בחר סדרה"_s);
    row(u"CmdOK"_s, u"קדם חישוב"_s);
    row(u"CmdAdd"_s, u"הוסף להזמנה"_s);
    row(u"CmdClear1"_s, u"נקה"_s);
    row(u"Frame1"_s, u"הכנס נתוני פתח החלון"_s);
    row(u"Frame2"_s, u"בחר סוג וצבע לפריטים"_s);
}

void OpeningPanelTest::captions_haveTheirTexts()
{
    QFETCH(QString, name);
    PanelHost host;
    const auto* widget = child<QWidget>(host.panel(), name);
    QString text = widget->property("text").toString();
    if (const auto* frame = qobject_cast<const QGroupBox*>(widget))
        text = frame->title();
    QTEST(text, "text");
}

void OpeningPanelTest::boxes_haveTheirInitialTextsAndLimits()
{
    PanelHost host;
    QCOMPARE(host.boxTexts(), (QStringList{u"0"_s, u"00"_s, u"0"_s, u"00"_s, u"4"_s, u"00"_s}));
    for (std::size_t i = 0; i < host.panel().TextNum.size(); ++i) {
        const base::MeasureBox* box = host.panel().TextNum[i];
        QCOMPARE(box->objectName(), u"TextNum_%1"_s.arg(i));
        QCOMPARE(box->maxLength(), i % 2 == 0 ? 3 : 2);
    }
}

void OpeningPanelTest::measurePairs_areLaidOutLeftToRight()
{
    PanelHost host;
    host.panel().FrameDoorMashkof->show();
    for (std::size_t pair = 0; pair < 3; ++pair) {
        const QWidget* picture = host.panel().Picture1[pair];
        QCOMPARE(picture->objectName(), u"Picture1_%1"_s.arg(pair));
        const auto left = [picture](const QWidget* each) {
            return each->mapTo(picture, QPoint(0, 0)).x();
        };
        const QLabel* point = host.panel().Picture1[pair]->point();
        QCOMPARE(point->text(), u"."_s);
        QVERIFY(left(host.panel().TextNum[2 * pair]) < left(point));
        QVERIFY(left(point) < left(host.panel().TextNum[2 * pair + 1]));
    }
}

void OpeningPanelTest::frames_containTheirControls()
{
    PanelHost host;
    for (const QString& name : {u"TextNum_0"_s, u"TextNum_3"_s, u"Picture1_0"_s, u"Picture1_1"_s})
        child<QWidget>(*host.panel().Frame1, name);
    QStringList captionsOfFrame1;
    for (const QLabel* label : host.panel().Frame1->findChildren<QLabel*>())
        captionsOfFrame1.append(label->text());
    for (const QString& text : {u"רוחב"_s, u"גובה"_s, u"."_s})
        QVERIFY(captionsOfFrame1.contains(text));
    for (const QString& name : {u"TextNum_4"_s, u"TextNum_5"_s, u"Label11"_s})
        child<QWidget>(*host.panel().FrameDoorMashkof, name);
    for (const QString& name : {u"DBComboKind_0"_s, u"DBComboColor_3"_s, u"Label10"_s})
        child<QWidget>(*host.panel().Frame2, name);
}

void OpeningPanelTest::hiddenDoorFrame_keepsItsSpace()
{
    PanelHost host;
    QVERIFY(!host.panel().FrameDoorMashkof->isVisible());
    const QRect before = host.panel().Frame2->geometry();
    host.panel().FrameDoorMashkof->show();
    QTRY_VERIFY(host.panel().FrameDoorMashkof->height() > 0);
    QCOMPARE(host.panel().Frame2->geometry(), before);
}

void OpeningPanelTest::tabKey_visitsTheControlsInOrder()
{
    PanelHost host;
    host.panel().FrameDoorMashkof->show();
    QCOMPARE(testsupport::tabOrderFrom(host.panel().CmdPicSerial),
             (QStringList{
                 u"CmdPicSerial"_s, u"TextNum_0"_s, u"TextNum_1"_s, u"TextNum_2"_s, u"TextNum_3"_s,
                 u"CmdAdd"_s, u"CmdOK"_s, u"CmdClear1"_s, u"DBComboKind_0"_s, u"DBComboColor_0"_s,
                 u"DBComboKind_1"_s, u"DBComboColor_1"_s, u"DBComboKind_2"_s, u"DBComboColor_2"_s,
                 u"DBComboKind_3"_s, u"DBComboColor_3"_s, u"TextNum_4"_s, u"TextNum_5"_s}));
}

void OpeningPanelTest::enterKey_padsTheBoxAndMovesOn()
{
    PanelHost host;
    auto& boxes = host.panel().TextNum;
    boxes[1]->setFocus();
    QTest::keyClicks(boxes[1], u"5"_s);
    QCOMPARE(boxes[1]->text(), u"5"_s);
    QTest::keyClick(boxes[1], Qt::Key_Return);
    QTRY_VERIFY(boxes[2]->hasFocus());
    QCOMPARE(boxes[1]->text(), u"50"_s);
    QTRY_COMPARE(boxes[2]->selectedText(), u"0"_s);
    QTest::keyClick(boxes[2], Qt::Key_Backspace);
    QTest::keyClick(boxes[2], Qt::Key_Up);
    QTRY_VERIFY(boxes[1]->hasFocus());
    QCOMPARE(boxes[2]->text(), u"0"_s);
    QTRY_COMPARE(boxes[1]->selectedText(), u"50"_s);
}

void OpeningPanelTest::lists_showTheNamesOfTheirTables()
{
    const QStringList tables{u"MashkofColor"_s, u"KanafColor"_s, u"GlassColor"_s, u"ReshetColor"_s,
                             u"MashkofKind"_s,  u"KanafKind"_s,  u"GlassKind"_s,  u"ReshetKind"_s};
    PanelHost host;
    for (const QString& table : tables)
        host.store.execute(u"INSERT INTO %1 (Name) VALUES ('של %1'), ('אחר')"_s.arg(table));
    host.panel().bindKindsAndColours();
    for (qsizetype part = 0; part < 4; ++part) {
        const auto index = static_cast<std::size_t>(part);
        const controls::DBCombo* colour = host.panel().DBComboColor[index];
        const controls::DBCombo* kind = host.panel().DBComboKind[index];
        QCOMPARE(colour->objectName(), u"DBComboColor_%1"_s.arg(part));
        QCOMPARE(kind->objectName(), u"DBComboKind_%1"_s.arg(part));
        QCOMPARE(colour->count(), 2);
        QCOMPARE(colour->itemText(0), u"של "_s + tables[part]);
        QCOMPARE(kind->itemText(0), u"של "_s + tables[4 + part]);
        QCOMPARE(kind->currentText(), QString());
        QVERIFY(kind->isEditable());
        QCOMPARE(host.panel().DataKind[index]->objectName(), u"DataKind_%1"_s.arg(part));
        QCOMPARE(host.panel().DataColor[index]->Recordset().Type(), dao::dbOpenTable);
    }
    // Each list has a database of its own.
    QVERIFY(&host.panel().DataKind[0]->Database() != &host.panel().DataKind[1]->Database());
}

void OpeningPanelTest::missingTable_isTableNotFound()
{
    PanelHost host;
    host.store.execute(u"DROP TABLE GlassKind"_s);
    const int error = testsupport::errorOf([&host] { host.panel().bindKindsAndColours(); });
    QCOMPARE(error, int{runtime::TableNotFound});
}

void OpeningPanelTest::labels_areExactlyQLabels()
{
    PanelHost host;
    const auto labels = host.panel().findChildren<QLabel*>();
    QCOMPARE(labels.size(), qsizetype{4 + 4 + 2 + 3 + 1 + 6});
    for (const QLabel* label : labels) {
        QCOMPARE(QLatin1StringView(label->metaObject()->className()), "QLabel"_L1);
        QVERIFY2(!label->objectName().isEmpty(), qPrintable(label->text()));
    }
}

void OpeningPanelTest::longSeriesName_isWrapped()
{
    PanelHost host;
    const QSize before = host.panel().size();
    host.panel().LabelSerial->setText(QString(50, u'ש'));
    host.panel().LabelSerial->setText(u"סדרה ארוכה עם <b>סימנים</b> & עוד שם ארוך מאוד מאוד"_s);
    QCOMPARE(host.panel().LabelSerial->textFormat(), Qt::PlainText);
    QTRY_COMPARE(host.panel().width(), before.width());
}

void OpeningPanelTest::largestFont_keepsThePanelNarrow()
{
    PanelHost host;
    for (QLabel* label : host.panel().findChildren<QLabel*>()) {
        QFont font = label->font();
        font.setPointSize(13);
        label->setFont(font);
    }
    host.panel().LabelSerial->setText(u"סדרה ארוכה עם שם ארוך מאוד ועוד קצת יותר מזה בערך"_s);
    QTRY_VERIFY(host.panel().minimumSizeHint().width() <= 480);
    QVERIFY(host.panel().minimumSizeHint().height() <= 520);
}

void OpeningPanelTest::focusBox_selectsTheText()
{
    PanelHost host;
    host.panel().CmdAdd->setFocus();
    host.panel().TextNum[0]->setText(u"123"_s);
    host.panel().focusBox(0);
    QVERIFY(host.panel().TextNum[0]->hasFocus());
    QCOMPARE(host.panel().TextNum[0]->selectedText(), u"123"_s);
    host.panel().TextNum[0]->deselect();
    host.panel().focusBox(0);
    QCOMPARE(host.panel().TextNum[0]->selectedText(), u"123"_s);
}

void OpeningPanelTest::focusBoxOnAHiddenBox_isInvalidProcedureCall()
{
    PanelHost host;
    const int error = testsupport::errorOf([&host] { host.panel().focusBox(4); });
    QCOMPARE(error, int{runtime::InvalidProcedureCall});
}

ZOMREL_QTEST_MAIN(OpeningPanelTest)
#include "opening_panel_test.moc"
