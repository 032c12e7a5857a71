#include "store/schema.h"

#include "serials_screen.h"
#include "support/wheel.h"

#include <QLocale>

#include <memory>

using namespace Qt::StringLiterals;

/// Tests of loading a series into the fields and writing it back, including the errors of both
/// directions.
class SeriesFieldsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { stage_ = std::make_unique<SerialsStage>(); }
    void cleanup() { stage_.reset(); }

    void load_showsTheRecord();
    void loadedCounts_selectTheirEntries_data();
    void loadedCounts_selectTheirEntries();
    void nullRemark_isLoadedAsEmpty();
    void changeByAnotherStation_isLoaded();
    void badRecord_endsTheProgramOnLoad_data();
    void badRecord_endsTheProgramOnLoad();

    void saveWithoutChanges_roundsToHundredths();
    void save_storesTheTypedTexts();
    void decimalCommaLocale_storesThePoint();
    void save_keepsKeyAndSign();
    void badTextOnSave_endsTheProgram_data();
    void badTextOnSave_endsTheProgram();
    void badTextOnAdd_endsTheProgram_data();
    void badTextOnAdd_endsTheProgram();
    void boxes_limitTheirTexts();
    void wheelOverAListWithoutTheFocus_changesNoCount();

private:
    int addPlain(const QString& name = u"plain"_s);
    void expectEnd(int number, const QString& description);
    QList<QVariant> row(int autoNum);

    std::unique_ptr<SerialsStage> stage_;
};

int SeriesFieldsTest::addPlain(const QString& name)
{
    return stage_->store.addSeries(name, {-1, -2, -3, -4, -5, -6, -7, -8}, 2, 2);
}

/// Expects the run-time error box, which ends the program.
void SeriesFieldsTest::expectEnd(int number, const QString& description)
{
    QCOMPARE(stage_->boxes.shown().size(), 1u);
    QCOMPARE(stage_->boxes.shown().front().text,
             u"Run-time error '%1':\n\n%2"_s.arg(number).arg(description));
    QCOMPARE(stage_->end.exitStatus(), std::optional<int>(1));
}

QList<QVariant> SeriesFieldsTest::row(int autoNum)
{
    return stage_->store.rows(u"SELECT * FROM Serials WHERE AutoNum = ?"_s, {autoNum}).value(0);
}

void SeriesFieldsTest::load_showsTheRecord()
{
    stage_->store.addSeries(u"בלגי 7000"_s, {-2.5, 0.05, 12, 0, 2.999, -0.05, -999.99, 999.99}, 6,
                            4);
    stage_->store.execute(u"UPDATE Serials SET Rem = 'הערה'"_s);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    QCOMPARE(screen.box(u"TextName"_s)->text(), u"בלגי 7000"_s);
    QCOMPARE(screen.box(u"TextRem"_s)->text(), u"הערה"_s);
    const QString shown[] = {u"- 2 50"_s, u"+ 0 05"_s, u"+ 12 00"_s,  u"- 0 00"_s,
                             u"+ 3 00"_s, u"- 0 05"_s, u"- 999 99"_s, u"+ 999 99"_s};
    for (int i = 0; i < 8; ++i)
        QCOMPARE(screen.deduction(i), shown[i]);
    QCOMPARE(screen.list(u"ComboLane"_s)->currentText(), u"4 נתיבים"_s);
    QCOMPARE(screen.list(u"ComboWing"_s)->currentText(), u"6 כנפיים"_s);
    QVERIFY(stage_->boxes.shown().empty());
}

void SeriesFieldsTest::loadedCounts_selectTheirEntries_data()
{
    QTest::addColumn<int>("nativ");
    QTest::addColumn<int>("kanaf");
    for (int nativ = 1; nativ <= 4; ++nativ) {
        for (int kanaf = 1; kanaf <= 6; ++kanaf)
            QTest::addRow("%d tracks, %d sashes", nativ, kanaf) << nativ << kanaf;
    }
}

void SeriesFieldsTest::loadedCounts_selectTheirEntries()
{
    QFETCH(int, nativ);
    QFETCH(int, kanaf);
    const int key = stage_->store.addSeries(u"s"_s, {0, 0, 0, 0, 0, 0, 0, 0}, kanaf, nativ);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    QCOMPARE(screen.list(u"ComboLane"_s)->currentIndex(), nativ - 1);
    QCOMPARE(screen.list(u"ComboWing"_s)->currentIndex(), kanaf - 1);
    screen.press("CmdUpdate");
    const QString sql = u"SELECT Nativ_Num, Kanaf_Num FROM Serials WHERE AutoNum = ?"_s;
    QCOMPARE(stage_->store.rows(sql, {key}).value(0), QList<QVariant>({nativ, kanaf}));
}

void SeriesFieldsTest::nullRemark_isLoadedAsEmpty()
{
    addPlain();
    stage_->store.execute(u"UPDATE Serials SET Rem = NULL"_s);
    const SerialsScreen screen;
    screen.box(u"TextRem"_s)->setText(u"left over"_s);
    screen.press("CmdUpdate");
    QCOMPARE(screen.box(u"TextRem"_s)->text(), QString());
    screen.press("CmdUpdate");
    QCOMPARE(stage_->store.scalar(u"SELECT Rem IS NULL FROM Serials"_s).toInt(), 0);
    QCOMPARE(stage_->store.scalar(u"SELECT Rem FROM Serials"_s).toString(), QString());
}

void SeriesFieldsTest::changeByAnotherStation_isLoaded()
{
    addPlain();
    const SerialsScreen screen;
    stage_->store.execute(u"UPDATE Serials SET Name = 'elsewhere', Glass_H = 4.25"_s);
    screen.press("CmdUpdate");
    QCOMPARE(screen.box(u"TextName"_s)->text(), u"elsewhere"_s);
    QCOMPARE(screen.deduction(5), u"+ 4 25"_s);
}

void SeriesFieldsTest::badRecord_endsTheProgramOnLoad_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");
    const auto row = [](const QString& change, int number, const QString& description) {
        QTest::newRow(qPrintable(change))
            << u"UPDATE Serials SET %1"_s.arg(change) << number << description;
    };
    const QString null = u"Invalid use of Null"_s;
    const QString value = u"Invalid property value"_s;
    row(u"Name = NULL"_s, 94, null);
    for (const QString& field : store::deductionFields())
        row(field + u" = NULL"_s, 94, null);
    row(u"Nativ_Num = NULL"_s, 94, null);
    row(u"Kanaf_Num = NULL"_s, 94, null);
    row(u"Nativ_Num = 0"_s, 380, value);
    row(u"Nativ_Num = 5"_s, 380, value);
    row(u"Nativ_Num = -1"_s, 380, value);
    row(u"Kanaf_Num = 0"_s, 380, value);
    row(u"Kanaf_Num = 7"_s, 380, value);
    row(u"Mashkof_W = 32768"_s, 6, u"Overflow"_s);
    row(u"Reshet_H = -30000000"_s, 6, u"Overflow"_s);
    QTest::newRow("deleted elsewhere")
        << u"DELETE FROM Serials"_s << 3167 << u"Record is deleted."_s;
}

void SeriesFieldsTest::badRecord_endsTheProgramOnLoad()
{
    QFETCH(QString, change);
    QFETCH(int, number);
    QFETCH(QString, description);
    addPlain();
    // The deleted row is the current row. The second row keeps the table from being empty.
    addPlain(u"other"_s);
    const SerialsScreen screen;
    stage_->store.execute(change + u" WHERE Name = 'plain'"_s);
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdUpdate");
    expectEnd(number, description);
}

void SeriesFieldsTest::saveWithoutChanges_roundsToHundredths()
{
    const int key =
        stage_->store.addSeries(u"s"_s, {2.999, 0, -0.004, 0.005, 0.015, -1, 7.1, 1.005}, 1, 1);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    screen.press("CmdUpdate");
    const QList<double> rounded{3, 0, 0, 0, 0.02, -1, 7.1, 1};
    for (int i = 0; i < 8; ++i) {
        const QString sql = u"SELECT %1 FROM Serials WHERE AutoNum = ?"_s;
        QCOMPARE(stage_->store.scalar(sql.arg(store::deductionFields()[i]), {key}).toDouble(),
                 rounded[i]);
    }
    QVERIFY(stage_->boxes.shown().empty());
}

void SeriesFieldsTest::save_storesTheTypedTexts()
{
    const int key = addPlain();
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    QLineEdit* name = screen.box(u"TextName"_s);
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, u"new name"_s);
    const QString typed[] = {u"+ 2 5"_s,   u"+ 0 00"_s, u"- 0 00"_s,   u"- 007 9"_s,
                             u"- 12 34"_s, u"+ 1 1"_s,  u"- 999 99"_s, u"- 0 05"_s};
    for (int i = 0; i < 8; ++i)
        screen.setDeduction(i, typed[i]);
    screen.list(u"ComboLane"_s)->setCurrentIndex(3);
    screen.list(u"ComboWing"_s)->setCurrentIndex(0);
    screen.box(u"TextRem"_s)->setText(u"rem"_s);
    screen.press("CmdUpdate");

    const auto stored = stage_->store.rows(
        u"SELECT Name, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W, Glass_H, Reshet_W, "
        "Reshet_H, Nativ_Num, Kanaf_Num, Rem FROM Serials WHERE AutoNum = ?"_s,
        {key});
    const QList<double> numbers{2.5, 0, 0, -7.9, -12.34, 1.1, -999.99, -0.05};
    QCOMPARE(stored.value(0).value(0).toString(), u"new name"_s);
    for (int i = 0; i < 8; ++i)
        QCOMPARE(stored[0][i + 1].toDouble(), numbers[i]);
    QCOMPARE(stored[0][9].toInt(), 4);
    QCOMPARE(stored[0][10].toInt(), 1);
    QCOMPARE(stored[0][11].toString(), u"rem"_s);

    screen.press("CmdUpdate");
    QCOMPARE(screen.deduction(0), u"+ 2 50"_s);
    QCOMPARE(screen.deduction(1), u"- 0 00"_s);
    QCOMPARE(screen.deduction(3), u"- 7 90"_s);
}

void SeriesFieldsTest::decimalCommaLocale_storesThePoint()
{
    const int key = addPlain();
    const SerialsScreen screen;
    QLocale::setDefault(QLocale(QLocale::German));
    screen.press("CmdUpdate");
    screen.setDeduction(0, u"- 2 50"_s);
    screen.press("CmdUpdate");
    QLocale::setDefault(QLocale::c());
    QCOMPARE(stage_->store.scalar(u"SELECT Mashkof_W FROM Serials WHERE AutoNum = ?"_s, {key}),
             -2.5);
    QVERIFY(stage_->boxes.shown().empty());
}

void SeriesFieldsTest::save_keepsKeyAndSign()
{
    const int key = stage_->store.addSeries(u"door"_s, {0, 0, 0, 0, 0, 0, 0, 0}, 1, 1, u"d2000"_s);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    screen.box(u"TextName"_s)->setText(u"renamed"_s);
    screen.press("CmdUpdate");
    const QString sql = u"SELECT AutoNum, Name, Sign FROM Serials"_s;
    QCOMPARE(stage_->store.rows(sql), QList<QList<QVariant>>({{key, u"renamed"_s, u"d2000"_s}}));
}

void SeriesFieldsTest::badTextOnSave_endsTheProgram_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    const auto row = [](const QString& box, const QString& text, int number) {
        QTest::newRow(qPrintable(box + u' ' + text)) << box << text << number;
    };
    for (int i = 0; i < 8; ++i) {
        row(u"TextNum_%1"_s.arg(2 * i), u"1a"_s, 3421);
        row(u"TextNum_%1"_s.arg(2 * i + 1), u"a"_s, 3421);
        row(u"TextSign_%1"_s.arg(i), u"x"_s, 3421);
    }
    row(u"TextNum_0"_s, u"-1"_s, 3421);
    row(u"TextNum_0"_s, u"1.5"_s, 3421);
    row(u"TextNum_0"_s, u"א"_s, 3421);
    row(u"TextNum_1"_s, u".5"_s, 3421);
    row(u"TextName"_s, QString(51, u'n'), 3163);
}

void SeriesFieldsTest::badTextOnSave_endsTheProgram()
{
    QFETCH(QString, box);
    QFETCH(QString, text);
    QFETCH(int, number);
    const int key = addPlain();
    const QList<QVariant> before = row(key);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    screen.box(u"TextName"_s)->setText(u"half"_s);
    screen.box(u"TextRem"_s)->setText(u"half"_s);
    screen.box(box)->setText(text);
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdUpdate");
    QCOMPARE(stage_->end.exitStatus(), std::optional<int>(1));
    QCOMPARE(stage_->boxes.shown().size(), 1u);
    QVERIFY(stage_->boxes.shown().front().text.startsWith(u"Run-time error '%1'"_s.arg(number)));
    QCOMPARE(row(key), before);
}

void SeriesFieldsTest::badTextOnAdd_endsTheProgram_data()
{
    badTextOnSave_endsTheProgram_data();
}

void SeriesFieldsTest::badTextOnAdd_endsTheProgram()
{
    QFETCH(QString, box);
    QFETCH(QString, text);
    QFETCH(int, number);
    addPlain();
    const SerialsScreen screen;
    screen.press("CmdNew");
    screen.box(box)->setText(text);
    stage_->boxes.answer(runtime::vbYes);
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdAdd");
    QCOMPARE(stage_->end.exitStatus(), std::optional<int>(1));
    QCOMPARE(stage_->boxes.shown().size(), 2u);
    QVERIFY(stage_->boxes.shown().back().text.startsWith(u"Run-time error '%1'"_s.arg(number)));
    QCOMPARE(stage_->store.scalar(u"SELECT count(*) FROM Serials"_s).toInt(), 1);
}

void SeriesFieldsTest::boxes_limitTheirTexts()
{
    const SerialsScreen screen;
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(screen.sign(i)->maxLength(), 1);
        QCOMPARE(screen.num(2 * i)->maxLength(), 3);
        QVERIFY(screen.num(2 * i)->alignment().testFlag(Qt::AlignRight));
        QCOMPARE(screen.num(2 * i + 1)->maxLength(), 2);
    }
    QCOMPARE(screen.box(u"TextRem"_s)->maxLength(), 50);
    QVERIFY(screen.box(u"TextRem"_s)->alignment().testFlag(Qt::AlignRight));
    QVERIFY(screen.box(u"TextName"_s)->maxLength() > 1000);
    QVERIFY(screen.box(u"TextName"_s)->alignment().testFlag(Qt::AlignRight));
}

void SeriesFieldsTest::wheelOverAListWithoutTheFocus_changesNoCount()
{
    addPlain();
    const SerialsScreen screen;
    screen.find<QPushButton>(u"CmdUpdate"_s)->click();
    QVERIFY(screen.isIn(editing));
    for (const QString& name : {u"ComboLane"_s, u"ComboWing"_s}) {
        QComboBox* list = screen.list(name);
        screen.box(u"TextName"_s)->setFocus();
        testsupport::turnWheel(*list);
        QCOMPARE(list->currentIndex(), 1);
        QCOMPARE(testsupport::focusName(), u"TextName"_s);
        list->setFocus();
        testsupport::turnWheel(*list);
        QCOMPARE(list->currentIndex(), 2);
    }
}

ZOMREL_QTEST_MAIN(SeriesFieldsTest)
#include "series_fields_test.moc"
