#include "platform/report/preview_fixture.h"

#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

class PreviewFindTest : public QObject
{
    Q_OBJECT

private slots:
    void findBar_opensAndCloses();
    void findNext_goesFromHitToHit();
    void find_withoutAHit_saysSo();
    void find_withAnotherText_startsAtThePage();
    void hit_isHighlighted();
    void search_canBeCancelled();

private:
    static QString result(const PreviewFixture& preview)
    {
        return child<QLabel>(preview.window(), u"LabelFindResult"_s)->text().trimmed();
    }
};

void PreviewFindTest::findBar_opensAndCloses()
{
    const PreviewFixture preview;
    auto* edit = child<QLineEdit>(preview.window(), u"EditFind"_s);
    QVERIFY(!edit->isVisible());
    preview.press(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(edit->isVisible());
    QVERIFY(edit->hasFocus());
    preview.press(Qt::Key_Escape);
    QVERIFY(!edit->isVisible());
    QVERIFY(preview.window().isVisible());
    preview.press(Qt::Key_Escape);
    QVERIFY(!preview.window().isVisible());
}

void PreviewFindTest::findNext_goesFromHitToHit()
{
    const PreviewFixture preview(smallRows(30));
    preview.click(u"ActionFind"_s);
    preview.type(u"EditFind"_s, u"שורה 2"_s); // The text occurs in rows 2 and 20 to 29.
    QCOMPARE(preview.pages().highlight()->page, 0);
    QCOMPARE(result(preview), u"דף 1"_s);
    preview.press(Qt::Key_F3);
    QCOMPARE(preview.pages().highlight()->page, 6);
    QCOMPARE(preview.pages().currentPage(), 7);
    QCOMPARE(result(preview), u"דף 7"_s);
    preview.press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(preview.pages().highlight()->page, 0);
    preview.press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(preview.pages().highlight()->page, 9);
    preview.click(u"ActionFindNext"_s);
    QCOMPARE(preview.pages().highlight()->page, 0);
    preview.click(u"ActionFindPrevious"_s);
    QCOMPARE(preview.pages().highlight()->page, 9);
}

void PreviewFindTest::find_withoutAHit_saysSo()
{
    const PreviewFixture preview;
    preview.press(Qt::Key_F3); // Without a text, F3 opens the find bar.
    QVERIFY(child<QLineEdit>(preview.window(), u"EditFind"_s)->hasFocus());
    preview.type(u"EditFind"_s, u"אין כזה"_s);
    QVERIFY(!preview.pages().highlight());
    QCOMPARE(result(preview), u"לא נמצא"_s);
    QVERIFY(preview.boxes.shown().empty());
}

void PreviewFindTest::find_withAnotherText_startsAtThePage()
{
    const PreviewFixture preview(smallRows(30));
    preview.click(u"ActionFind"_s);
    preview.type(u"EditFind"_s, u"שורה 29"_s);
    QCOMPARE(preview.pages().highlight()->page, 9);
    child<QLineEdit>(preview.window(), u"EditFind"_s)->setText(u"שורה"_s);
    QVERIFY(!preview.pages().highlight());
    QCOMPARE(result(preview), QString());
    preview.press(Qt::Key_F3); // The search starts at the visible page.
    QVERIFY(preview.pages().highlight()->page >= 8);
}

void PreviewFindTest::hit_isHighlighted()
{
    const PreviewFixture preview(smallRows(1));
    preview.click(u"ActionFind"_s);
    const QImage before = preview.pages().grab().toImage();
    preview.type(u"EditFind"_s, u"שורה"_s);
    const QImage after = preview.pages().grab().toImage();
    const auto yellow = [](const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y).saturation() > 100 ? 1 : 0;
        }
        return count;
    };
    QCOMPARE(yellow(before), 0);
    // The field is 3000 by 300 twips, that is 200 by 20 pixels; its letters are not yellow.
    QVERIFY(yellow(after) > 3000 && yellow(after) <= 4221);
    preview.press(Qt::Key_Escape);
    QCOMPARE(yellow(preview.pages().grab().toImage()), 0);
}

void PreviewFindTest::search_canBeCancelled()
{
    const PreviewFixture preview(smallRows(30000000));
    preview.click(u"ActionFind"_s);
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [] {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            auto* progress = qobject_cast<QProgressDialog*>(each);
            if (progress != nullptr && progress->isVisible())
                QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton);
        }
    });
    watch.start(10);
    preview.type(u"EditFind"_s, u"אין כזה"_s);
    QCOMPARE(result(preview), QString());
    QVERIFY(!preview.pages().highlight());
    QVERIFY(preview.rows->rowsRead < 30000000);
}

ZOMREL_QTEST_MAIN(PreviewFindTest)
#include "preview_find_test.moc"
