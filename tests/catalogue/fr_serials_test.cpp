#include "serials_screen.h"

#include "base/module1.h"
#include "platform/controls/db_grid.h"
#include "support/errors.h"

#include <memory>

using namespace Qt::StringLiterals;

/// Tests of opening the series editor and of the commands that create a series.
class FrSerialsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { stage_ = std::make_unique<SerialsStage>(); }
    void cleanup();

    void newForm_isBrowsing();
    void captions_haveTheirTexts_data();
    void captions_haveTheirTexts();
    void trackAndSashLists_haveFixedEntries();
    void grid_showsThreeOfItsColumns();
    void missingStore_isFileNotFound();
    void cmdNew_clearsAllButTheSigns();
    void cmdNewAfterAPlusSeries_keepsThePlusSigns();
    void addAnsweredNo_storesNothing();
    void addAnsweredYes_storesTheFields();
    void addWithoutCmdNew_storesTheFields();
    void addAfterADeletion_reusesNoKey();
    void addedSeries_appearsInTheGrid();
    void reopenedForm_startsAfresh();

private:
    std::unique_ptr<SerialsStage> stage_;
};

void FrSerialsTest::cleanup()
{
    QCOMPARE(stage_->boxes.unexpected(), QList<QString>());
    stage_.reset();
}

void FrSerialsTest::newForm_isBrowsing()
{
    stage_->add(u"first"_s, 5);
    const SerialsScreen screen;
    QVERIFY(screen.isIn(browsing));
    // CmdNew is the first enabled control in tab order.
    QTRY_COMPARE(testsupport::focusName(), u"CmdNew"_s);
    QCOMPARE(screen.form().objectName(), u"FrSerials"_s);
    QCOMPARE(screen.form().windowTitle(), u"סדרות"_s);
    QCOMPARE(screen.form().layoutDirection(), Qt::RightToLeft);
    QCOMPARE(screen.box(u"TextName"_s)->text(), QString());
    QCOMPARE(screen.box(u"TextRem"_s)->text(), QString());
    QCOMPARE(screen.list(u"ComboLane"_s)->currentIndex(), 0);
    QCOMPARE(screen.list(u"ComboWing"_s)->currentIndex(), 0);
    for (int i = 0; i < 8; ++i)
        QCOMPARE(screen.deduction(i), u"- 0 00"_s);
    QVERIFY(!screen.find(u"DataGrid"_s)->isVisible());
    QVERIFY(!screen.find(u"DataSerial"_s)->isVisible());
    QVERIFY(screen.find(u"FrameOrder"_s)->isAncestorOf(screen.find(u"DataSerial"_s)));
    QVERIFY(!screen.find(u"FrameOrder"_s)->isAncestorOf(screen.find(u"DBGrid1"_s)));
}

void FrSerialsTest::captions_haveTheirTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("Label1_0") << u"עריכת סדרות"_s;
    QTest::newRow("Label2") << u"שם סדרה :"_s;
    QTest::newRow("Label3") << u"הורדות"_s;
    QTest::newRow("Label4") << u"מהרוחב "_s;
    QTest::newRow("Label5") << u"מהגובה"_s;
    QTest::newRow("Label6") << u"משקוף :"_s;
    QTest::newRow("Label7") << u"כנף :"_s;
    QTest::newRow("Label8") << u"זכוכית :"_s;
    QTest::newRow("Label9") << u"רשת :"_s;
    QTest::newRow("Label10") << u"מספר כנפיים :"_s;
    QTest::newRow("Label11") << u"מספר נתיבים  :"_s;
    QTest::newRow("Label12") << u"הערות :"_s;
    for (int i = 1; i <= 9; ++i)
        QTest::newRow(qPrintable(u"Label1_%1"_s.arg(i))) << u"."_s;
    QTest::newRow("CmdNew") << u"סדרה חדשה"_s;
    QTest::newRow("CmdAdd") << u"הוסף"_s;
    QTest::newRow("CmdUpdate") << u"עדכן"_s;
    QTest::newRow("CmdDelete") << u"מחק"_s;
    QTest::newRow("CmdEnd") << u"סיים"_s;
}

void FrSerialsTest::captions_haveTheirTexts()
{
    QFETCH(QString, text);
    const SerialsScreen screen;
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(screen.find(name)->property("text").toString(), text);
}

void FrSerialsTest::trackAndSashLists_haveFixedEntries()
{
    const SerialsScreen screen;
    const auto entries = [&](const QString& name) {
        QStringList all;
        for (int i = 0; i < screen.list(name)->count(); ++i)
            all.append(screen.list(name)->itemText(i));
        return all;
    };
    QCOMPARE(entries(u"ComboLane"_s),
             QStringList({u"1 נתיב"_s, u"2 נתיבים"_s, u"3 נתיבים"_s, u"4 נתיבים"_s}));
    QCOMPARE(entries(u"ComboWing"_s), QStringList({u"1 כנף"_s, u"2 כנפיים"_s, u"3 כנפיים"_s,
                                                   u"4 כנפיים"_s, u"5 כנפיים"_s, u"6 כנפיים"_s}));
    QVERIFY(!screen.list(u"ComboLane"_s)->isEditable());
    QVERIFY(!screen.list(u"ComboWing"_s)->isEditable());
}

void FrSerialsTest::grid_showsThreeOfItsColumns()
{
    stage_->add(u"סדרה א"_s);
    stage_->add(u"סדרה ב"_s);
    const SerialsScreen screen;
    const auto* grid = screen.find<controls::DBGrid>(u"DBGrid1"_s);
    QCOMPARE(grid->caption(), u"כל הסדרות"_s);
    QCOMPARE(grid->model()->columnCount(), 12);
    const QStringList heads{u"מס. כנף"_s, u"מס.  נתיב"_s, u"שם סדרה"_s};
    for (int column = 0; column < 12; ++column) {
        QCOMPARE(grid->isColumnHidden(column), column > 2);
        if (column < 3) {
            QCOMPARE(grid->model()->headerData(column, Qt::Horizontal).toString(), heads[column]);
        }
    }
    QVERIFY(grid->columnViewportPosition(0) < grid->columnViewportPosition(2));
    // Column widths are whole pixels; a remainder goes to one of the columns.
    QVERIFY(qAbs(grid->columnWidth(0) - grid->columnWidth(1)) <= 1);
    const double ratio = double(grid->columnWidth(2)) / grid->columnWidth(0);
    QVERIFY2(qAbs(ratio - 5292.0 / 1535) < 0.1, qPrintable(QString::number(ratio)));
    QCOMPARE(grid->model()->rowCount(), 2);
    QTRY_COMPARE(grid->model()->index(1, 2).data().toString(), u"סדרה ב"_s);
    QCOMPARE(grid->model()->index(0, 0).data().toString(), u"2"_s);
    QCOMPARE(grid->model()->index(0, 1).data().toString(), u"3"_s);
    QCOMPARE(grid->currentIndex().row(), 0);
    QCOMPARE(grid->font().pointSizeF(), 11.0);
    QVERIFY(!grid->model()->index(0, 2).flags().testFlag(Qt::ItemIsEditable));
}

void FrSerialsTest::missingStore_isFileNotFound()
{
    const QString path = std::exchange(Module1::StorePath, stage_->store.folder() + u"/none.mdb"_s);
    QCOMPARE(testsupport::errorOf([] { catalogue::frSerials(); }),
             int(runtime::DatabaseFileNotFound));
    Module1::StorePath = path;
    // A failed load leaves no partly loaded instance behind.
    const SerialsScreen screen;
    QVERIFY(screen.isIn(browsing));
}

void FrSerialsTest::cmdNew_clearsAllButTheSigns()
{
    const SerialsScreen screen;
    screen.box(u"TextName"_s)->setText(u"n"_s);
    screen.box(u"TextRem"_s)->setText(u"r"_s);
    screen.list(u"ComboLane"_s)->setCurrentIndex(2);
    screen.list(u"ComboWing"_s)->setCurrentIndex(4);
    for (int i = 0; i < 8; ++i)
        screen.setDeduction(i, i % 2 == 0 ? u"+ 12 34"_s : u"- 5 6"_s);
    screen.press("CmdNew");
    QVERIFY(screen.isIn(newSeries));
    QCOMPARE(screen.box(u"TextName"_s)->text(), QString());
    QCOMPARE(screen.box(u"TextRem"_s)->text(), QString());
    QCOMPARE(screen.list(u"ComboLane"_s)->currentIndex(), 0);
    QCOMPARE(screen.list(u"ComboWing"_s)->currentIndex(), 0);
    for (int i = 0; i < 8; ++i)
        QCOMPARE(screen.deduction(i), i % 2 == 0 ? u"+ 0 00"_s : u"- 0 00"_s);
    QCOMPARE(QApplication::focusWidget(), screen.box(u"TextName"_s));
    QCOMPARE(stage_->names(), QStringList());
}

void FrSerialsTest::cmdNewAfterAPlusSeries_keepsThePlusSigns()
{
    stage_->add(u"plus"_s, 3.5);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    screen.press("CmdUpdate");
    screen.press("CmdNew");
    for (int i = 0; i < 8; ++i)
        QCOMPARE(screen.deduction(i), u"+ 0 00"_s);
}

void FrSerialsTest::addAnsweredNo_storesNothing()
{
    const SerialsScreen screen;
    screen.press("CmdNew");
    screen.box(u"TextName"_s)->setText(u"n"_s);
    stage_->boxes.answer(runtime::vbNo);
    screen.press("CmdAdd");
    QCOMPARE(stage_->boxes.shown().size(), 1u);
    QCOMPARE(stage_->boxes.shown()[0].text, u"האם אתה בטוח שברצונך להוסיף את הסדרה הזו??"_s);
    QCOMPARE(stage_->boxes.shown()[0].title, u"הוספת סדרה"_s);
    QCOMPARE(stage_->boxes.shown()[0].flags, 32 + 4 + 524288 + 1048576);
    QCOMPARE(stage_->names(), QStringList());
    QVERIFY(screen.isIn(newSeries));
}

void FrSerialsTest::addAnsweredYes_storesTheFields()
{
    const SerialsScreen screen;
    screen.press("CmdNew");
    type(u"חדשה"_s);
    screen.list(u"ComboLane"_s)->setCurrentIndex(1);
    screen.list(u"ComboWing"_s)->setCurrentIndex(5);
    for (int i = 0; i < 8; ++i)
        screen.setDeduction(i,
                            u"%1 %2 %3"_s.arg(i % 2 == 0 ? u"-"_s : u"+"_s).arg(i).arg(i * 10 + 5));
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdAdd");

    QVERIFY(screen.isIn(browsing));
    QCOMPARE(screen.box(u"TextName"_s)->text(), u"חדשה"_s);
    QCOMPARE(screen.deduction(3), u"+ 3 35"_s);
    const auto rows = stage_->store.rows(
        u"SELECT Name, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W, Glass_H, Reshet_W, "
        "Reshet_H, Nativ_Num, Kanaf_Num, Rem, Sign IS NULL FROM Serials"_s);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0][0].toString(), u"חדשה"_s);
    // A single hundredths digit is placed behind the point unchanged: "5" means fifty hundredths.
    const QList<double> numbers{-0.5, 1.15, -2.25, 3.35, -4.45, 5.55, -6.65, 7.75};
    for (int i = 0; i < 8; ++i)
        QCOMPARE(rows[0][i + 1].toDouble(), numbers[i]);
    QCOMPARE(rows[0].mid(9), QList<QVariant>({2, 6, u""_s, 1}));
}

void FrSerialsTest::addWithoutCmdNew_storesTheFields()
{
    stage_->add(u"first"_s);
    const SerialsScreen screen;
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdAdd");
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdAdd");
    QVERIFY(screen.isIn(browsing));
    QCOMPARE(stage_->names(), QStringList({u"first"_s, QString(), QString()}));
    QCOMPARE(stage_->store.rows(
                 u"SELECT Mashkof_W, Nativ_Num, Kanaf_Num FROM Serials WHERE AutoNum > 1"_s),
             QList<QList<QVariant>>({{0.0, 1, 1}, {0.0, 1, 1}}));
}

void FrSerialsTest::addAfterADeletion_reusesNoKey()
{
    stage_->add(u"a"_s);
    const int highest = stage_->add(u"b"_s);
    stage_->store.execute(u"DELETE FROM Serials WHERE AutoNum = ?"_s, {highest});
    const SerialsScreen screen;
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdAdd");
    QCOMPARE(stage_->store.scalar(u"SELECT max(AutoNum) FROM Serials"_s).toInt(), highest + 1);
}

void FrSerialsTest::addedSeries_appearsInTheGrid()
{
    stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    const SerialsScreen screen;
    screen.moveTo(1);
    screen.press("CmdNew");
    screen.box(u"TextName"_s)->setText(u"c"_s);
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdAdd");
    const auto* grid = screen.find<QTableView>(u"DBGrid1"_s);
    QCOMPARE(grid->model()->rowCount(), 3);
    QTRY_COMPARE(grid->model()->index(2, 2).data().toString(), u"c"_s);
    QCOMPARE(grid->currentIndex().row(), 1);
}

void FrSerialsTest::reopenedForm_startsAfresh()
{
    {
        const SerialsScreen screen;
        screen.press("CmdNew");
        screen.setDeduction(0, u"+ 1 00"_s);
        screen.form().close();
    }
    const SerialsScreen screen;
    QVERIFY(screen.isIn(browsing));
    QCOMPARE(screen.deduction(0), u"- 0 00"_s);
}

ZOMREL_QTEST_MAIN(FrSerialsTest)
#include "fr_serials_test.moc"
