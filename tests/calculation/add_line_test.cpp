#include "panel_host.h"

#include "platform/controls/data_control.h"
#include "platform/controls/db_combo.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "shell/base/input_boxes.h"
#include "shell/base/module1.h"
#include "support/widgets.h"

#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Row = QList<QVariant>;

/// The computed fields of a line, from the width of the opening to the number of slats.
constexpr auto computedFields =
    "MyWidth, MYHeight, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W, Glass_H, Reshet_W, "
    "Reshet_H"_L1;
constexpr auto countFields = "Mahkof_Count, Kanaf_Count, Glass_Count, Reshet_Count"_L1;
constexpr auto shutterFields = "Kind, MyWidth_2, MYHeight_2, U_Thick, U_Cut, U_Vasa, Shalav_Thick, "
                               "Shalav_Width, Shalav_Count, Argaz_Width, Argaz_Height"_L1;

Row lastLine(PanelHost& host, QLatin1StringView fields)
{
    return host.store.rows(u"SELECT %1 FROM Cuts ORDER BY Code DESC LIMIT 1"_s.arg(fields))
        .value(0);
}

/// Recreates the table Cuts with a modified CREATE TABLE statement.
void recreateCuts(PanelHost& host, const QRegularExpression& part, const QString& replacement)
{
    QString sql =
        host.store.scalar(u"SELECT sql FROM sqlite_master WHERE name = 'Cuts'"_s).toString();
    QVERIFY(sql.contains(part));
    sql.replace(part, replacement);
    host.store.execute(u"DROP TABLE Cuts"_s);
    host.store.execute(sql);
}

} // namespace

class AddLineTest : public QObject
{
    Q_OBJECT

private slots:
    void ordinaryWindow_storesItsLine();
    void monoblock_storesItsLine();
    void door_storesItsLine();
    void doorWithMonoblock_storesItsLine();
    void kindsAndColours_areStored();
    void emptyKindsAndColours_areStoredAsEmptyTexts();

    void zeroWidthOrHeight_isRefused_data();
    void zeroWidthOrHeight_isRefused();
    void severalRefusals_areGivenInFixedOrder();
    void refusedHeight_getsTheFocus();

    void newLine_isNumberedAfterTheHighest();
    void sameOpeningTwice_storesTwoLines();
    void addedLine_clearsOnlyTheOpeningsBoxes();
    void lineAdded_isEmittedAfterTheLineIsStored();
    void clearCommand_resetsTheOpeningsBoxes();

    void kindLongerThanItsField_isTruncated();
    void renamedColumns_areWrittenByOrdinal();
    void slatCount_isRoundedHalfToEven_data();
    void slatCount_isRoundedHalfToEven();

    void decimalCommaLocale_readsCommasAsDecimals();
};

void AddLineTest::ordinaryWindow_storesItsLine()
{
    PanelHost host;
    host.chooseExample(2);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.add();
    QCOMPARE(host.boxes.unexpected(), QStringList());
    QCOMPARE(host.lineCount(), 1);
    QCOMPARE(lastLine(host, "Name, Order_Num, NUM, Order_Date, Rem IS NULL, Sign IS NULL"_L1),
             (Row{u"בלגי 7000"_s, 1, 1, u"2026-03-01"_s, 1, 1}));
    QCOMPARE(lastLine(host, computedFields),
             (Row{120.5, 100.25, 119.5, 98.75, (-4.2 + 120.5) / 2, 92.75, (-13.4 + 120.5) / 2,
                  84.25, (-6.3 + 120.5) / 2, 92.0}));
    QCOMPARE(lastLine(host, countFields), (Row{2, 4, 2, 2}));
    QCOMPARE(lastLine(host, shutterFields),
             (Row{u"אור"_s, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0, 0.0, 0.0}));
    QCOMPARE(Module1::SqlText, u"SELECT * FROM CUTS WHERE ORDER_NUM = 1 ORDER BY NUM ASC"_s);
}

void AddLineTest::monoblock_storesItsLine()
{
    PanelHost host;
    host.chooseExample(2);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.add();
    QCOMPARE(lastLine(host, computedFields),
             (Row{120.5, 100.25, 117.0, 80.75, (-4.2 + 118) / 2, 74.75, (-13.4 + 118) / 2, 66.25,
                  (-6.3 + 118) / 2, 74.0}));
    QCOMPARE(lastLine(host, countFields), (Row{2, 4, 2, 2}));
    QCOMPARE(lastLine(host, shutterFields),
             (Row{u"מונובלוק : 20 מכסה 15"_s, 118.0, 82.25, 6.5, 86.25, 100.25 - 17.6, 4.5,
                  120.5 - 12.7, 20, 120.5, 18.0}));
    // The next line needs no new choice in the picker.
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.add();
    QCOMPARE(host.stored(u"U_Thick"_s), QVariant(6.5));
    QCOMPARE(host.stored(u"NUM"_s), QVariant(2));
}

void AddLineTest::door_storesItsLine()
{
    PanelHost host;
    host.chooseExample(2, u"d2000"_s);
    host.type(u"90"_s, u"00"_s, u"210"_s, u"00"_s);
    host.add();
    QCOMPARE(lastLine(host, computedFields),
             (Row{90.0, 210.0, 89.0, 208.5, (-4.2 + 82) / 2, 198.5, 0.0, 0.0, 0.0, 0.0}));
    QCOMPARE(lastLine(host, countFields), (Row{2, 2, 2, 2}));
    QCOMPARE(lastLine(host, shutterFields),
             (Row{u"אור"_s, 82.0, 206.0, 4.0, 0.0, 0.0, 0.0, 0.0, 0, 0.0, 0.0}));
}

void AddLineTest::doorWithMonoblock_storesItsLine()
{
    PanelHost host;
    host.chooseExample(3, u"d2000"_s);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.add();
    QCOMPARE(lastLine(host, computedFields),
             (Row{120.5, 100.25, 117.0, 80.75, (-4.2 + 112.5) / 3, 88.75, 0.0, 0.0, 0.0, 0.0}));
    QCOMPARE(lastLine(host, countFields), (Row{2, 3, 3, 3}));
    QCOMPARE(lastLine(host, shutterFields),
             (Row{u"מונובלוק : 20 מכסה 15"_s, 112.5, 96.25, 4.0, 86.25, 100.25 - 17.6, 4.5,
                  120.5 - 12.7, 20, 120.5, 18.0}));
}

void AddLineTest::kindsAndColours_areStored()
{
    PanelHost host;
    host.chooseExample(1);
    for (std::size_t part = 0; part < 4; ++part) {
        host.panel().DBComboKind[part]->setEditText(u"סוג %1"_s.arg(part));
        host.panel().DBComboColor[part]->setEditText(u"צבע %1"_s.arg(part));
    }
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.add();
    QCOMPARE(lastLine(host, "Mashof_Kind, Kanaf_Kind, Glass_Kind, Reshet_Kind"_L1),
             (Row{u"סוג 0"_s, u"סוג 1"_s, u"סוג 2"_s, u"סוג 3"_s}));
    QCOMPARE(lastLine(host, "Mahkof_Color, Kanaf_Color, Glass_Color, Reshet_Color"_L1),
             (Row{u"צבע 0"_s, u"צבע 1"_s, u"צבע 2"_s, u"צבע 3"_s}));
    QCOMPARE(host.panel().DBComboKind[2]->currentText(), u"סוג 2"_s);
}

void AddLineTest::emptyKindsAndColours_areStoredAsEmptyTexts()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.add();
    QCOMPARE(host.store.scalar(u"SELECT count(*) FROM Cuts WHERE Mashof_Kind = '' AND "
                               "Mahkof_Color = '' AND Reshet_Kind = '' AND Reshet_Color = ''"_s),
             QVariant(1));
}

void AddLineTest::zeroWidthOrHeight_isRefused_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("refusal");
    const QString zero = u"ערך נומרי 0 !"_s;
    const auto row = [](const char* name, const QStringList& texts, const QString& refusal) {
        QTest::newRow(name) << texts << refusal;
    };
    row("a fraction alone is no width", {u"0"_s, u"50"_s, u"100"_s, u"00"_s}, zero);
    row("zero in other words", {u"-0"_s, u"50"_s, u"100"_s, u"00"_s}, zero);
    row("a fraction alone is no height", {u"100"_s, u"00"_s, u"00"_s, u"99"_s}, zero);
    row("whole measures", {u"120"_s, u"00"_s, u"100"_s, u"00"_s}, {});
    row("a negative width", {u"-12"_s, u"00"_s, u"100"_s, u"00"_s}, {});
    row("a fraction in the whole box", {u"0.5"_s, u"00"_s, u"100"_s, u"00"_s}, {});
}

void AddLineTest::zeroWidthOrHeight_isRefused()
{
    QFETCH(QStringList, texts);
    QFETCH(QString, refusal);
    PanelHost host;
    host.chooseExample(1);
    host.type(texts[0], texts[1], texts[2], texts[3]);
    host.boxes.answer(runtime::vbOK);
    host.add();
    QCOMPARE(host.lineCount(), refusal.isEmpty() ? 1 : 0);
    QCOMPARE(host.boxes.shown().size(), std::size_t(refusal.isEmpty() ? 0 : 1));
    QVERIFY(!host.end.exitStatus());
    if (refusal.isEmpty())
        return;
    QCOMPARE(host.boxes.shown()[0].text, refusal);
    QCOMPARE(host.boxes.shown()[0].flags, 1572880);
    QCOMPARE(host.boxes.shown()[0].title, u"ProjZomrel"_s);
    QCOMPARE(host.boxTexts().mid(0, 4), texts);
}

void AddLineTest::severalRefusals_areGivenInFixedOrder()
{
    PanelHost host;
    host.boxes.answer(runtime::vbOK);
    host.add();
    QCOMPARE(host.boxes.shown().back().text, u"ערך נומרי 0 !"_s);
    QVERIFY(host.panel().TextNum[0]->hasFocus());
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.panel().CmdAdd->setFocus();
    host.boxes.answer(runtime::vbOK);
    host.add();
    QCOMPARE(host.boxes.shown().size(), std::size_t{2});
    QCOMPARE(host.boxes.shown()[1].text, u"לא בחרת שום סדרה, לחץ על 'בחר סדרה' "_s);
    QCOMPARE(host.boxes.shown()[1].title, u"בחירת סדרה"_s);
    QCOMPARE(host.boxes.shown()[1].flags, 1572880);
    QVERIFY(host.panel().CmdAdd->hasFocus());
    QVERIFY(!host.panel().DataSerial->hasRecordset());
    QCOMPARE(host.lineCount(), 0);
}

void AddLineTest::refusedHeight_getsTheFocus()
{
    PanelHost host;
    host.type(u"1"_s, u"00"_s, u"0"_s, u"00"_s);
    host.boxes.answer(runtime::vbOK);
    host.add();
    QCOMPARE(host.boxes.shown().size(), std::size_t{1});
    QVERIFY(host.panel().TextNum[2]->hasFocus());
}

void AddLineTest::newLine_isNumberedAfterTheHighest()
{
    PanelHost host;
    host.chooseExample(1);
    host.store.addOrder(2);
    host.store.addLine(2, 40);
    for (const int number : {5, 1, 2})
        host.store.addLine(1, number);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.add();
    QCOMPARE(host.stored(u"NUM"_s), QVariant(6));
    Module1::CurrentOrderNum = 3;
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.add();
    QCOMPARE(lastLine(host, "Order_Num, NUM"_L1), (Row{3, 1}));
}

void AddLineTest::sameOpeningTwice_storesTwoLines()
{
    PanelHost host;
    host.chooseExample(2);
    for (int i = 0; i < 2; ++i) {
        host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
        host.add();
    }
    const auto both = host.store.rows(u"SELECT * FROM Cuts ORDER BY Code"_s);
    QCOMPARE(both.size(), 2);
    for (qsizetype ordinal = 1; ordinal < both[0].size(); ++ordinal) {
        if (ordinal != 38)
            QCOMPARE(both[1][ordinal], both[0][ordinal]);
    }
    QCOMPARE(both[0][38], QVariant(1));
    QCOMPARE(both[1][38], QVariant(2));
}

void AddLineTest::addedLine_clearsOnlyTheOpeningsBoxes()
{
    PanelHost host;
    host.chooseExample(2, u"d2000"_s);
    host.panel().FrameDoorMashkof->show();
    host.panel().TextNum[4]->setText(u"3"_s);
    host.panel().TextNum[5]->setText(u"75"_s);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.add();
    QCOMPARE(host.boxTexts(), (QStringList{u"0"_s, u"00"_s, u"0"_s, u"00"_s, u"3"_s, u"75"_s}));
    QVERIFY(host.panel().TextNum[0]->hasFocus());
    QCOMPARE(host.panel().TextNum[0]->selectedText(), u"0"_s);
    QCOMPARE(host.panel().LabelSerial->text(), u"בלגי 7000"_s);
    QVERIFY(Module1::SelectedSerialNum != 0);
    host.boxes.answer(runtime::vbOK);
    host.add();
    QCOMPARE(host.boxes.shown().size(), std::size_t{1});
    QCOMPARE(host.lineCount(), 1);
}

void AddLineTest::lineAdded_isEmittedAfterTheLineIsStored()
{
    PanelHost host;
    host.chooseExample(1);
    int linesThen = 0;
    QString widthThen;
    connect(&host.panel(), &calculation::OpeningPanel::lineAdded, this, [&] {
        linesThen = host.lineCount();
        widthThen = host.panel().TextNum[0]->text();
    });
    QSignalSpy added(&host.panel(), &calculation::OpeningPanel::lineAdded);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.add();
    QCOMPARE(added.count(), 1);
    QCOMPARE(linesThen, 1);
    QCOMPARE(widthThen, u"0"_s);
    host.boxes.answer(runtime::vbOK);
    host.add();
    QCOMPARE(added.count(), 1);
}

void AddLineTest::clearCommand_resetsTheOpeningsBoxes()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().TextNum[4]->setText(u"9"_s);
    QTest::mouseClick(host.panel().CmdClear1, Qt::LeftButton);
    QCOMPARE(host.boxTexts(), (QStringList{u"0"_s, u"00"_s, u"0"_s, u"00"_s, u"9"_s, u"00"_s}));
    QVERIFY(host.panel().TextNum[0]->hasFocus());
    QCOMPARE(host.panel().TextNum[0]->selectedText(), u"0"_s);
    QVERIFY(Module1::SelectedSerialNum != 0);
    QCOMPARE(host.lineCount(), 0);
}

void AddLineTest::kindLongerThanItsField_isTruncated()
{
    if (testsupport::isOnServer())
        QSKIP("a server does not store CREATE TABLE statements");
    PanelHost host;
    recreateCuts(host, QRegularExpression(uR"((["\[]?Kind["\]]?\s+TEXT\s*)\(30\))"_s),
                 u"\\1(10)"_s);
    host.chooseExample(1);
    host.takeMonoblock();
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.add();
    QCOMPARE(host.boxes.unexpected(), QStringList());
    QCOMPARE(host.stored(u"Kind"_s), QVariant(u"מונובלוק :"_s));
    Module1::IsMonoblock = false;
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.add();
    QCOMPARE(host.stored(u"Kind"_s), QVariant(u"אור"_s));
}

void AddLineTest::renamedColumns_areWrittenByOrdinal()
{
    PanelHost host;
    host.store.execute(u"ALTER TABLE Cuts RENAME COLUMN U_Vasa TO Swapped"_s);
    host.store.execute(u"ALTER TABLE Cuts RENAME COLUMN U_Cut TO U_Vasa"_s);
    host.store.execute(u"ALTER TABLE Cuts RENAME COLUMN Swapped TO U_Cut"_s);
    host.chooseExample(1);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.add();
    QCOMPARE(host.stored(u"U_Vasa"_s), QVariant(86.25));
    QCOMPARE(host.stored(u"U_Cut"_s), QVariant(100.25 - 17.6));
}

void AddLineTest::slatCount_isRoundedHalfToEven_data()
{
    QTest::addColumn<QString>("height");
    QTest::addColumn<double>("thickness");
    QTest::addColumn<int>("count");
    QTest::newRow("20.5") << u"90"_s << 4.0 << 20;
    QTest::newRow("21.5") << u"94"_s << 4.0 << 22;
    QTest::newRow("20.6") << u"111"_s << 5.0 << 21;
    QTest::newRow("-1.5") << u"5"_s << 2.0 << -2;
    QTest::newRow("-0.5") << u"7"_s << 2.0 << 0;
}

void AddLineTest::slatCount_isRoundedHalfToEven()
{
    QFETCH(QString, height);
    QFETCH(double, thickness);
    PanelHost host;
    host.chooseExample(1);
    host.takeMonoblock();
    Module1::Shalav_Thick = thickness;
    host.type(u"100"_s, u"00"_s, height, u"00"_s);
    host.add();
    QTEST(host.stored(u"Shalav_Count"_s).toInt(), "count");
}

void AddLineTest::decimalCommaLocale_readsCommasAsDecimals()
{
    PanelHost host;
    host.chooseExample(1);
    host.takeMonoblock();
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    host.type(u"9,5"_s, u"25"_s, u"100"_s, u"25"_s);
    host.add();
    QLocale::setDefault(QLocale::c());
    QCOMPARE(host.boxes.unexpected(), QStringList());
    QCOMPARE(host.stored(u"MyWidth"_s), QVariant(9.75));
    QCOMPARE(host.stored(u"U_Thick"_s), QVariant(6.5));
}

ZOMREL_QTEST_MAIN(AddLineTest)
#include "add_line_test.moc"
