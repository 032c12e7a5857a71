#include "panel_host.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "platform/controls/data_control.h"
#include "support/errors.h"
#include "support/widgets.h"

#include <QLabel>
#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using testsupport::errorOf;

namespace {

void compareCells(const std::array<double, 12>& expected)
{
    for (std::size_t cell = 0; cell < expected.size(); ++cell)
        QVERIFY2(Module1::CutValues[cell] == expected[cell],
                 qPrintable(u"cell %1: %2 for %3"_s.arg(cell)
                                .arg(Module1::CutValues[cell], 0, 'g', 17)
                                .arg(expected[cell], 0, 'g', 17)));
}

} // namespace

class ComputeCutsTest : public QObject
{
    Q_OBJECT

private slots:
    void ordinaryWindow_setsItsMeasures();
    void twoSashes_shareTheWidth();
    void monoblock_setsTheShutterMeasures();
    void doorFrame_reducesTheOpening();
    void doorFrameWithMonoblock_setsBoth();
    void unpaddedSingleDigit_isHundredths();
    void ordinaryWindowAfterAMonoblock_clearsTheShutter();
    void changedSeries_isReadAgain();
    void series_isFoundByItsNumber();
    void deletedSeries_keepsThePreviousResults();
    void kindCaption_isTheShownKind();
    void badInput_throwsItsError_data();
    void badInput_throwsItsError();
    void zeroSlatThickness_throwsBeforeTheStoreIsOpened();
    void zeroSashes_keepTheComputedFrame();
    void nullDeduction_throwsWhenItsFormulaRuns();
    void doorThickness_isReadOnlyForADoor();
    void decimalCommaLocale_readsCommasAsDecimals();
};

void ComputeCutsTest::ordinaryWindow_setsItsMeasures()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    // The comments in cuts_test.cpp derive these values, and those of the following tests, by hand.
    compareCells({120.5, 100.25, 119.5, 98.75, 116.3, 92.75, 107.1, 84.25, 114.2, 92, 0, 0});
    QCOMPARE(Module1::MyWidth, QVariant(120.5));
    QCOMPARE(Module1::MYHeight, QVariant(100.25));
    QCOMPARE(Module1::U_Thick, QVariant(0.0));
    QCOMPARE(Module1::Shalav_Thick, QVariant(0.0));
}

void ComputeCutsTest::twoSashes_shareTheWidth()
{
    PanelHost host;
    host.chooseExample(2);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    compareCells({120.5, 100.25, 119.5, 98.75, 58.15, 92.75, 53.55, 84.25, 57.1, 92, 0, 0});
}

void ComputeCutsTest::monoblock_setsTheShutterMeasures()
{
    PanelHost host;
    host.chooseExample(2);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    compareCells({120.5, 100.25, 117, 80.75, 56.9, 74.75, 52.3, 66.25, 55.85, 74, 118, 82.25});
    QCOMPARE(Module1::MyWidth_2, QVariant(118.0));
    QCOMPARE(Module1::MYHeight_2, 82.25);
    QCOMPARE(Module1::U_Thick, QVariant(u"6.5"_s));
    QCOMPARE(Module1::U_Cut, QVariant(86.25));
    QCOMPARE(Module1::U_Vasa, QVariant(82.65));
    QCOMPARE(Module1::Shalav_Width, QVariant(107.8));
    QCOMPARE(Module1::Shalav_Thick, QVariant(4.5));
    QCOMPARE(Module1::Shalav_Count, 20.5);
    QCOMPARE(Module1::Argaz_Width, QVariant(120.5));
    QCOMPARE(Module1::Argaz_Height, 18.0);
}

void ComputeCutsTest::doorFrame_reducesTheOpening()
{
    PanelHost host;
    host.chooseExample(1, u"d2000"_s);
    host.type(u"90"_s, u"00"_s, u"210"_s, u"00"_s);
    host.panel().ComputeCuts();
    compareCells({90, 210, 89, 208.5, 77.8, 198.5, 0, 0, 0, 0, 82, 206});
    QCOMPARE(Module1::DoorOpenWidth, 82.0);
    QCOMPARE(Module1::MyWidth_2, QVariant(82.0));
    QCOMPARE(Module1::MYHeight_2, 206.0);
    QCOMPARE(Module1::U_Thick, QVariant(4.0));

    host.panel().TextNum[4]->setText(u"3"_s);
    host.panel().TextNum[5]->setText(u"25"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::DoorOpenWidth, 83.5); // 90 less twice 3.25
    QCOMPARE(Module1::U_Thick, QVariant(3.25));
    QCOMPARE(Module1::CutValues[5], 199.25); // 210 less 3.25 and 7.5
}

void ComputeCutsTest::doorFrameWithMonoblock_setsBoth()
{
    PanelHost host;
    host.chooseExample(2, u"d2000"_s);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    // The frame keeps the monoblock's base of 118 by 82.25; the sash has the door's 112.5 by 96.25,
    // so (112.5 - 4.2) / 2 = 54.15 by 96.25 - 7.5 = 88.75.
    compareCells({120.5, 100.25, 117, 80.75, 54.15, 88.75, 0, 0, 0, 0, 112.5, 96.25});
    QCOMPARE(Module1::U_Thick, QVariant(4.0));
    QCOMPARE(Module1::U_Cut, QVariant(86.25));
    QCOMPARE(Module1::U_Vasa, QVariant(82.65));
    QCOMPARE(Module1::Shalav_Width, QVariant(107.8));
    QCOMPARE(Module1::Shalav_Count, 20.5);
    QCOMPARE(Module1::Argaz_Width, QVariant(120.5));
    QCOMPARE(Module1::Argaz_Height, 18.0);
}

void ComputeCutsTest::unpaddedSingleDigit_isHundredths()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"120"_s, u"00"_s, u"100"_s, u"00"_s);
    auto* hundredths = host.panel().TextNum[1];
    hundredths->setFocus();
    QVERIFY(hundredths->hasFocus());
    QTest::keyClicks(hundredths, u"5"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::CutValues[0], 120.05);
    host.panel().TextNum[2]->setFocus();
    QCOMPARE(hundredths->text(), u"50"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::CutValues[0], 120.5);
}

void ComputeCutsTest::ordinaryWindowAfterAMonoblock_clearsTheShutter()
{
    PanelHost host;
    host.chooseExample(2);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    host.panel().ComputeCuts();
    QCOMPARE(Module1::Shalav_Count, 20.5);

    Module1::IsMonoblock = false;
    host.panel().ComputeCuts();
    QCOMPARE(Module1::MyWidth_2, QVariant(0.0));
    QCOMPARE(Module1::MYHeight_2, 0.0);
    QCOMPARE(Module1::U_Thick, QVariant(0.0));
    QCOMPARE(Module1::Shalav_Thick, QVariant(0.0));
    QCOMPARE(Module1::U_Cut, QVariant(0.0));
    QCOMPARE(Module1::U_Vasa, QVariant(0.0));
    QCOMPARE(Module1::Shalav_Width, QVariant(0.0));
    QCOMPARE(Module1::Shalav_Count, 0.0);
    QCOMPARE(Module1::Argaz_Width, QVariant(0.0));
    QCOMPARE(Module1::Argaz_Height, 0.0);
    QCOMPARE(Module1::CutValues[10], 0.0);
    // The deductions that the picker has set are kept for the next monoblock.
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(2.5));
    QCOMPARE(Module1::MonoHeightDeduct, 18.0);
    QCOMPARE(Module1::ShalavWidthDeduct, QVariant(12.7));
}

void ComputeCutsTest::changedSeries_isReadAgain()
{
    PanelHost host;
    const int autoNum = host.chooseExample(1);
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::CutValues[2], 99.0);
    host.store.execute(u"UPDATE Serials SET Mashkof_W = 2.25 WHERE AutoNum = ?"_s, {autoNum});
    host.panel().ComputeCuts();
    QCOMPARE(Module1::CutValues[2], 102.25);
}

void ComputeCutsTest::series_isFoundByItsNumber()
{
    PanelHost host;
    const QList<double> none(8, 0.0);
    const int first = host.store.addSeries(u"א"_s, none, 1, 1);
    const int second = host.store.addSeries(u"ב"_s, none, 4, 1);
    host.store.addSeries(u"ג"_s, none, 5, 1);
    host.type(u"100"_s, u"00"_s, u"50"_s, u"00"_s);
    host.choose(second, u"ב"_s, false);
    host.panel().ComputeCuts();
    QCOMPARE(host.panel().DataSerial->Recordset().Fields(u"Name"_s).Value(), QVariant(u"ב"_s));
    compareCells({100, 50, 100, 50, 25, 50, 25, 50, 25, 50, 0, 0});
    host.choose(first, u"א"_s, false);
    host.panel().ComputeCuts();
    compareCells({100, 50, 100, 50, 100, 50, 100, 50, 100, 50, 0, 0});
}

void ComputeCutsTest::deletedSeries_keepsThePreviousResults()
{
    PanelHost host;
    const int autoNum = host.chooseExample(1);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    const auto before = Module1::CutValues;
    host.store.execute(u"DELETE FROM Serials WHERE AutoNum = ?"_s, {autoNum});
    host.takeMonoblock();
    host.type(u"80"_s, u"00"_s, u"60"_s, u"00"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::CutValues, before);
    QCOMPARE(Module1::KindCaption, u"רגיל"_s);
    QCOMPARE(Module1::MyWidth, QVariant(80.0));
    QCOMPARE(Module1::MyWidth_2, QVariant(77.5));
    QCOMPARE(Module1::U_Cut, QVariant(46.0));
    QVERIFY(!host.panel().DataSerial->Recordset().hasCurrent());
    QCOMPARE(errorOf([&] { host.panel().DataSerial->Recordset().Fields(u"Kanaf_Num"_s).Value(); }),
             int{runtime::NoCurrentRecord});
}

void ComputeCutsTest::kindCaption_isTheShownKind()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::KindCaption, u"רגיל"_s);
    host.takeMonoblock();
    host.panel().ComputeCuts();
    QCOMPARE(Module1::KindCaption, u"מונובלוק : 20 מכסה 15"_s);
}

void ComputeCutsTest::badInput_throwsItsError_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("error");
    const auto row = [](const char* name, const QStringList& texts, int error) {
        QTest::newRow(name) << texts << error;
    };
    row("letter in the width", {u"1a"_s, u"00"_s, u"1"_s, u"00"_s}, runtime::TypeMismatch);
    row("letter in its hundredths", {u"1"_s, u"x"_s, u"1"_s, u"00"_s}, runtime::TypeMismatch);
    row("empty width", {u""_s, u"00"_s, u"1"_s, u"00"_s}, runtime::TypeMismatch);
    row("empty hundredths", {u"1"_s, u""_s, u"1"_s, u"00"_s}, runtime::TypeMismatch);
    row("letter in the height", {u"1"_s, u"00"_s, u"-"_s, u"00"_s}, runtime::TypeMismatch);
    row("letter in its hundredths", {u"1"_s, u"00"_s, u"1"_s, u"0o"_s}, runtime::TypeMismatch);
    row("negative", {u"-12"_s, u"00"_s, u"1"_s, u"00"_s}, 0);
    row("fractions in both boxes", {u"1.5"_s, u".5"_s, u"1"_s, u"00"_s}, 0);
}

void ComputeCutsTest::badInput_throwsItsError()
{
    QFETCH(QStringList, texts);
    QFETCH(int, error);
    PanelHost host;
    host.chooseExample(1);
    host.type(texts[0], texts[1], texts[2], texts[3]);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), error);
}

void ComputeCutsTest::zeroSlatThickness_throwsBeforeTheStoreIsOpened()
{
    PanelHost host;
    host.chooseExample(1);
    host.takeMonoblock();
    Module1::Shalav_Thick = 0.0;
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::DivisionByZero});
    QVERIFY(!host.panel().DataSerial->hasRecordset());
    QCOMPARE(Module1::Shalav_Width, QVariant(107.8));
    QCOMPARE(Module1::Argaz_Width, QVariant(0.0));
    QCOMPARE(Module1::CutValues[0], 0.0);
    host.type(u"120"_s, u"50"_s, u"8"_s, u"00"_s);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::Overflow});
}

void ComputeCutsTest::zeroSashes_keepTheComputedFrame()
{
    PanelHost host;
    const int autoNum = host.chooseExample(1);
    host.store.execute(u"UPDATE Serials SET Kanaf_Num = 0 WHERE AutoNum = ?"_s, {autoNum});
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    Module1::CutValues.fill(7);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::DivisionByZero});
    compareCells({120.5, 100.25, 119.5, 98.75, 0, 0, 0, 0, 0, 0, 7, 7});
    host.store.execute(u"UPDATE Serials SET Kanaf_W = -120.5"_s);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::Overflow});
}

void ComputeCutsTest::nullDeduction_throwsWhenItsFormulaRuns()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.store.execute(u"UPDATE Serials SET Glass_W = NULL"_s);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::InvalidUseOfNull});
    QCOMPARE(Module1::CutValues[5], 92.75);
    QCOMPARE(Module1::CutValues[6], 0.0);
    // The sash is computed before the glass.
    host.store.execute(u"UPDATE Serials SET Kanaf_Num = 0"_s);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::DivisionByZero});
    host.store.execute(u"UPDATE Serials SET Kanaf_Num = NULL, Glass_W = 0"_s);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::InvalidUseOfNull});
    QCOMPARE(Module1::CutValues[3], 98.75);
}

void ComputeCutsTest::doorThickness_isReadOnlyForADoor()
{
    PanelHost host;
    const int autoNum = host.chooseExample(1);
    host.panel().TextNum[4]->setText(u"x"_s);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    host.panel().ComputeCuts();
    QCOMPARE(Module1::CutValues[4], 116.3);
    host.choose(autoNum, u"דלת"_s, true);
    QCOMPARE(errorOf([&] { host.panel().ComputeCuts(); }), int{runtime::TypeMismatch});
}

void ComputeCutsTest::decimalCommaLocale_readsCommasAsDecimals()
{
    PanelHost host;
    host.chooseExample(1);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    host.type(u"1,5"_s, u"50"_s, u"9.5"_s, u"00"_s);
    host.panel().ComputeCuts();
    QLocale::setDefault(QLocale::c());
    QCOMPARE(Module1::CutValues[0], 2.0);
    QCOMPARE(Module1::CutValues[1], 9.5);
}

ZOMREL_QTEST_MAIN(ComputeCutsTest)
#include "compute_cuts_test.moc"
