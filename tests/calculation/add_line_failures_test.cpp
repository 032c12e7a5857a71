#include "panel_host.h"

#include "platform/controls/db_combo.h"
#include "platform/runtime/run_time_error.h"
#include "shell/base/input_boxes.h"
#include "shell/base/module1.h"
#include "support/widgets.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// Errors while a line is added. Each error ends the program and leaves no partial row.
class AddLineFailuresTest : public QObject
{
    Q_OBJECT

private slots:
    void badSeriesOrMissingTable_storesNoLine_data();
    void badSeriesOrMissingTable_storesNoLine();
    void deletedSeries_storesNoLine();
    void lineNumberAbove32767_overflows();
    void nullLineNumber_isInvalidUseOfNull();
    void letterInAWholeBox_isTypeMismatch();
    void textTooLongForItsField_storesNoLine();
    void slatCountAbove32Bits_overflows();
    void missingStore_isFileNotFound();
};

void AddLineFailuresTest::badSeriesOrMissingTable_storesNoLine_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("error");
    const auto row = [](const char* name, const QString& sql, int error) {
        QTest::newRow(name) << sql << error;
    };
    row("no sashes", u"UPDATE Serials SET Kanaf_Num = 0"_s, runtime::DivisionByZero);
    row("no sashes and no width", u"UPDATE Serials SET Kanaf_Num = 0, Kanaf_W = -100"_s,
        runtime::Overflow);
    row("a Null deduction", u"UPDATE Serials SET Reshet_H = NULL"_s, runtime::InvalidUseOfNull);
    row("a Null number of sashes", u"UPDATE Serials SET Kanaf_Num = NULL"_s,
        runtime::InvalidUseOfNull);
    row("a series that is gone", u"DELETE FROM Serials"_s, runtime::NoCurrentRecord);
    row("no table of lines", u"DROP TABLE Cuts"_s, runtime::TableNotFound);
    row("too many sashes to double", u"UPDATE Serials SET Kanaf_Num = 2000000000"_s,
        runtime::Overflow);
}

void AddLineFailuresTest::badSeriesOrMissingTable_storesNoLine()
{
    QFETCH(QString, sql);
    QFETCH(int, error);
    PanelHost host;
    host.chooseExample(1);
    host.store.execute(sql);
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    QSignalSpy added(&host.panel(), &calculation::OpeningPanel::lineAdded);
    host.addFailing(error);
    QCOMPARE(added.count(), 0);
    if (error != runtime::TableNotFound)
        QCOMPARE(host.lineCount(), 0);
    QCOMPARE(host.boxTexts().front(), u"100"_s);
}

void AddLineFailuresTest::deletedSeries_storesNoLine()
{
    PanelHost host;
    const int autoNum = host.chooseExample(1);
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.add();
    host.store.execute(u"DELETE FROM Serials WHERE AutoNum = ?"_s, {autoNum});
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.addFailing(runtime::NoCurrentRecord);
    QCOMPARE(host.lineCount(), 1);
}

void AddLineFailuresTest::lineNumberAbove32767_overflows()
{
    PanelHost host;
    host.chooseExample(1);
    host.store.addLine(1, 32766);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.add();
    QCOMPARE(host.stored(u"NUM"_s), QVariant(32767));
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.addFailing(runtime::Overflow);
    QCOMPARE(host.lineCount(), 2);
}

void AddLineFailuresTest::nullLineNumber_isInvalidUseOfNull()
{
    PanelHost host;
    host.chooseExample(1);
    host.store.addLine(1, 1);
    host.store.execute(u"UPDATE Cuts SET NUM = NULL"_s);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.addFailing(runtime::InvalidUseOfNull);
    QCOMPARE(host.lineCount(), 1);
}

void AddLineFailuresTest::letterInAWholeBox_isTypeMismatch()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"1a"_s, u"00"_s, u"1"_s, u"00"_s);
    host.addFailing(runtime::TypeMismatch);
    QCOMPARE(host.lineCount(), 0);
}

void AddLineFailuresTest::textTooLongForItsField_storesNoLine()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.panel().DBComboColor[3]->setEditText(QString(51, u'צ'));
    host.addFailing(runtime::FieldTooSmall);
    host.panel().DBComboColor[3]->setEditText(QString(50, u'צ'));
    host.panel().LabelSerial->setText(QString(51, u'ש'));
    host.addFailing(runtime::FieldTooSmall);
    QCOMPARE(host.lineCount(), 0);
    host.panel().LabelSerial->setText(QString(50, u'ש'));
    host.add();
    QCOMPARE(host.lineCount(), 1);
}

void AddLineFailuresTest::slatCountAbove32Bits_overflows()
{
    PanelHost host;
    host.chooseExample(1);
    host.takeMonoblock();
    Module1::Shalav_Thick = 1e-9;
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.addFailing(runtime::Overflow);
    QCOMPARE(host.lineCount(), 0);
}

void AddLineFailuresTest::missingStore_isFileNotFound()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    Module1::StorePath = host.store.folder() + u"/elsewhere.mdb"_s;
    host.addFailing(runtime::DatabaseFileNotFound);
}

ZOMREL_QTEST_MAIN(AddLineFailuresTest)
#include "add_line_failures_test.moc"
