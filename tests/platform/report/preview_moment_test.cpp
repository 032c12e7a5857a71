#include "platform/report/preview_fixture.h"

#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

/// The preview of a document that initially holds its first rows only.
class PreviewMomentTest : public QObject
{
    Q_OBJECT

private slots:
    void firstPaint_queuesReadingTheRest();
    void completeDocument_isNotReadAgain();
    void firstPage_isShownBeforeTheRestIsRead();
    void changesBeforeReadAll_updateAllPages();
    void lastPage_isReadImmediately();
    void export_readsTheRestFirst();
    void print_showsTheFinalNumberOfPages();
    void find_readsTheRestFirst();
    void readErrorOfTheRest_isReportedOnce();
    void anotherDocument_cancelsReadingTheRest();

private:
    static std::shared_ptr<MemoryRows> longRows(int count);
    /// By the time all rows are read, they are fewer and different.
    static void letShrink(MemoryRows& rows);
};

std::shared_ptr<MemoryRows> PreviewMomentTest::longRows(int count)
{
    auto rows = smallRows(count);
    rows->atHand = 30; // More rows than are visible at once.
    return rows;
}

void PreviewMomentTest::letShrink(MemoryRows& rows)
{
    rows.changeOnReadAll = [](MemoryRows& all) {
        all.replace(7, [](int row) { return MemoryRows::Row{u"אחרת %1"_s.arg(row + 1), 1.0}; });
        return true;
    };
}

void PreviewMomentTest::firstPaint_queuesReadingTheRest()
{
    const PreviewFixture preview(longRows(3000));
    QTRY_COMPARE(preview.rows->timesReadAll, 1);
    QCOMPARE(preview.pages().pageCount(), 1000);
    QCOMPARE(preview.pages().currentPage(), 1);
    preview.window().grab();
    QTest::qWait(20);
    QCOMPARE(preview.rows->timesReadAll, 1);
    QVERIFY(preview.boxes.shown().empty());
}

void PreviewMomentTest::completeDocument_isNotReadAgain()
{
    const PreviewFixture preview(smallRows(30));
    preview.window().grab();
    QTest::qWait(20);
    QCOMPARE(preview.rows->timesReadAll, 0);
}

void PreviewMomentTest::firstPage_isShownBeforeTheRestIsRead()
{
    PreviewFixture preview(smallRows(3));
    const auto rows = longRows(3000);
    preview.report.setDataSource(rows);
    preview.report.Show();
    preview.pages().viewport()->repaint();
    QVERIFY(rows->rowsRead > 0);
    QCOMPARE(rows->timesReadAll, 0);
}

void PreviewMomentTest::changesBeforeReadAll_updateAllPages()
{
    const auto rows = longRows(3000);
    letShrink(*rows);
    const PreviewFixture preview(rows);
    QTRY_COMPARE(preview.pages().pageCount(), 3);
    QCOMPARE(child<QLabel>(preview.window(), u"LabelPageCount"_s)->text().trimmed(), u"מתוך 3"_s);
    preview.pages().setCurrentPage(1000);
    QCOMPARE(preview.pages().currentPage(), 3);
}

void PreviewMomentTest::lastPage_isReadImmediately()
{
    PreviewFixture preview(smallRows(3));
    const auto rows = longRows(3000);
    letShrink(*rows);
    preview.report.setDataSource(rows);
    preview.report.Show();
    preview.press(Qt::Key_End);
    preview.pages().viewport()->repaint();
    QCOMPARE(rows->timesReadAll, 1);
    QCOMPARE(preview.pages().pageCount(), 3);
    QCOMPARE(preview.pages().currentPage(), 3);
}

void PreviewMomentTest::export_readsTheRestFirst()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(3));
    preview.chosenFile = folder.filePath(u"a.txt"_s);
    const auto rows = longRows(3000);
    letShrink(*rows);
    preview.report.setDataSource(rows);
    preview.report.Show();
    preview.action(u"ActionExportText"_s).trigger();
    QFile file(preview.chosenFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY(text.contains(u"אחרת 7"_s));
    QVERIFY(!text.contains(u"שורה"_s));
    QCOMPARE(preview.pages().pageCount(), 3);
}

void PreviewMomentTest::print_showsTheFinalNumberOfPages()
{
    PreviewFixture preview(smallRows(3));
    int stated = 0;
    preview.answerPrinter = [&](QPrinter&, int pageCount) {
        stated = pageCount;
        return false;
    };
    const auto rows = longRows(3000);
    letShrink(*rows);
    preview.report.setDataSource(rows);
    preview.report.Show();
    preview.action(u"ActionPrint"_s).trigger();
    QCOMPARE(stated, 3);
    QCOMPARE(preview.pages().pageCount(), 3);
}

void PreviewMomentTest::find_readsTheRestFirst()
{
    PreviewFixture preview(smallRows(3));
    const auto rows = longRows(3000);
    letShrink(*rows);
    preview.report.setDataSource(rows);
    preview.report.Show();
    preview.action(u"ActionFind"_s).trigger();
    preview.type(u"EditFind"_s, u"אחרת 7"_s);
    QCOMPARE(child<QLabel>(preview.window(), u"LabelFindResult"_s)->text().trimmed(), u"דף 3"_s);
}

void PreviewMomentTest::readErrorOfTheRest_isReportedOnce()
{
    PreviewFixture preview(smallRows(3));
    preview.boxes.answer(runtime::vbOK);
    const auto rows = longRows(3000);
    preview.report.setDataSource(rows);
    preview.report.Show();
    preview.pages().viewport()->repaint();
    rows->failsWith = runtime::Locked;
    QTRY_COMPARE(preview.boxes.shown().size(), 1u);
    QVERIFY(preview.boxes.shown()[0].text.startsWith(u"Run-time error '3260':"_s));
    QCOMPARE(preview.end.exitStatus(), 1);
    preview.window().grab();
    QTest::qWait(20);
    QCOMPARE(preview.boxes.shown().size(), 1u);
}

void PreviewMomentTest::anotherDocument_cancelsReadingTheRest()
{
    PreviewFixture preview(smallRows(3));
    const auto former = longRows(3000);
    preview.report.setDataSource(former);
    preview.report.Show();
    preview.pages().viewport()->repaint(); // Painting queues the reading of the remaining rows.
    preview.show(longRows(600));
    QTRY_COMPARE(preview.rows->timesReadAll, 1);
    QCOMPARE(former->timesReadAll, 0);
    QCOMPARE(preview.pages().pageCount(), 200);
}

ZOMREL_QTEST_MAIN(PreviewMomentTest)
#include "preview_moment_test.moc"
