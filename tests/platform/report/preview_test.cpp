#include "platform/report/preview_fixture.h"
#include "support/errors.h"

#include <QComboBox>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

class PreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void show_opensAtTheFirstPage();
    void painting_readsOnlyVisiblePages();
    void secondShow_reusesTheWindow();
    void show_withoutUsableData_throws();
    void readErrorWhilePainting_opensOneErrorBox();
    void keys_goThroughThePages();
    void buttons_goThroughThePages();
    void typedPageNumber_goesToThatPage_data();
    void typedPageNumber_goesToThatPage();
    void scrolling_changesTheCurrentPage();
    void keys_changeTheZoom();
    void buttonsAndWheel_changeTheZoom();
    void zoomEntry_setsTheZoom();
    void typedPercent_setsTheZoom_data();
    void typedPercent_setsTheZoom();
    void fitPageAndWidth_followTheWindow();
    void zooming_keepsThePosition();
    void commands_haveHebrewNames();
};

void PreviewTest::show_opensAtTheFirstPage()
{
    const PreviewFixture preview(smallRows(7));
    QCOMPARE(preview.window().windowTitle(), u"דו\"ח קטן"_s);
    QCOMPARE(preview.window().layoutDirection(), Qt::RightToLeft);
    QVERIFY(preview.window().isMaximized());
    QVERIFY(!preview.window().isModal());
    QCOMPARE(preview.pages().property("currentPage").toInt(), 1);
    QCOMPARE(preview.pages().property("pageCount").toInt(), 3);
    QCOMPARE(preview.pages().property("zoomFactor").toDouble(), 1.0);
    QCOMPARE(child<QLineEdit>(preview.window(), u"EditPageNumber"_s)->text(), u"1"_s);
    QCOMPARE(child<QLabel>(preview.window(), u"LabelPageCount"_s)->text().trimmed(), u"מתוך 3"_s);
}

void PreviewTest::painting_readsOnlyVisiblePages()
{
    PreviewFixture preview(smallRows(300000));
    preview.window().grab();
    QCOMPARE(preview.pages().pageCount(), 100000);
    // A sheet of the small report is 360 pixels high.
    const int sheets = preview.pages().viewport()->height() / 360 + 2;
    QVERIFY(preview.rows->rowsRead > 0);
    QVERIFY2(preview.rows->rowsRead <= 3 * sheets,
             qPrintable(QString::number(preview.rows->rowsRead)));
    const int before = preview.rows->rowsRead;
    preview.pages().setProperty("currentPage", 50000);
    preview.window().grab();
    QCOMPARE(preview.pages().currentPage(), 50000);
    QVERIFY(preview.rows->rowsRead > before);
    QVERIFY(preview.rows->rowsRead <= before + 3 * sheets);
}

void PreviewTest::secondShow_reusesTheWindow()
{
    PreviewFixture preview(smallRows(30));
    QMainWindow* first = &preview.window();
    preview.pages().setCurrentPage(5);
    preview.report.Sections(1).Controls(u"Number"_s).setCaption(u"18"_s);
    QCOMPARE(preview.pages().currentPage(), 5);
    preview.show(smallRows(6));
    QCOMPARE(&preview.window(), first);
    QCOMPARE(preview.pages().currentPage(), 1);
    QCOMPARE(preview.pages().pageCount(), 2);
    preview.window().close();
    QVERIFY(!first->isVisible());
    preview.show(smallRows(3));
    QCOMPARE(&preview.window(), first);
    QVERIFY(first->isVisible());
    QCOMPARE(preview.pages().pageCount(), 1);
}

void PreviewTest::show_withoutUsableData_throws()
{
    PreviewFixture preview(smallRows(30));
    const auto errorOfShow = [](DataReport& report) {
        return testsupport::errorOf([&] { report.Show(); });
    };
    DataReport empty(smallReport);
    QCOMPARE(errorOfShow(empty), int(runtime::ObjectNotSet));
    preview.report.setDataSource(std::make_shared<MemoryRows>(
        QStringList{u"Name"_s}, 1, [](int) { return MemoryRows::Row{1}; }));
    QCOMPARE(errorOfShow(preview.report), int(runtime::ItemNotFound));
    preview.report.setDataSource(preview.rows);
    paperDoor().replace([] { return Paper{5299, 5400}; });
    QCOMPARE(errorOfShow(preview.report), int(runtime::ReportWidthTooLarge));
    paperDoor().replace([] { return Paper{5300, 5400}; });
    QCOMPARE(errorOfShow(preview.report), 0);
}

void PreviewTest::readErrorWhilePainting_opensOneErrorBox()
{
    PreviewFixture preview(smallRows(300));
    preview.boxes.answer(runtime::vbOK);
    preview.rows->failsWith = runtime::Locked;
    preview.pages().setCurrentPage(60);
    QTRY_COMPARE(preview.boxes.shown().size(), 1u);
    QVERIFY(preview.boxes.shown()[0].text.startsWith(u"Run-time error '3260':"_s));
    QCOMPARE(preview.end.exitStatus(), 1);
    // The error is thrown once, even if the window is painted again.
    preview.window().grab();
    QTest::qWait(50);
    QCOMPARE(preview.boxes.shown().size(), 1u);
}

void PreviewTest::keys_goThroughThePages()
{
    const PreviewFixture preview(smallRows(30));
    preview.press(Qt::Key_PageDown);
    QCOMPARE(preview.pages().currentPage(), 2);
    preview.press(Qt::Key_PageDown);
    preview.press(Qt::Key_PageUp);
    QCOMPARE(preview.pages().currentPage(), 2);
    preview.press(Qt::Key_End);
    QCOMPARE(preview.pages().currentPage(), 10);
    preview.press(Qt::Key_PageDown);
    QCOMPARE(preview.pages().currentPage(), 10);
    preview.press(Qt::Key_Home);
    QCOMPARE(preview.pages().currentPage(), 1);
    preview.press(Qt::Key_PageUp);
    QCOMPARE(preview.pages().currentPage(), 1);
}

void PreviewTest::buttons_goThroughThePages()
{
    const PreviewFixture preview(smallRows(30));
    QVERIFY(!preview.action(u"ActionFirstPage"_s).isEnabled());
    QVERIFY(!preview.action(u"ActionPreviousPage"_s).isEnabled());
    preview.click(u"ActionNextPage"_s);
    QCOMPARE(preview.pages().currentPage(), 2);
    preview.click(u"ActionLastPage"_s);
    QCOMPARE(preview.pages().currentPage(), 10);
    QVERIFY(!preview.action(u"ActionNextPage"_s).isEnabled());
    QVERIFY(!preview.action(u"ActionLastPage"_s).isEnabled());
    preview.click(u"ActionPreviousPage"_s);
    QCOMPARE(preview.pages().currentPage(), 9);
    preview.click(u"ActionFirstPage"_s);
    QCOMPARE(preview.pages().currentPage(), 1);
}

void PreviewTest::typedPageNumber_goesToThatPage_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("page");
    QTest::newRow("a page") << u"7"_s << 7;
    QTest::newRow("the last") << u"10"_s << 10;
    QTest::newRow("beyond the last") << u"900"_s << 10;
    QTest::newRow("zero") << u"0"_s << 1;
    QTest::newRow("empty text") << u""_s << 4;
    QTest::newRow("not a number") << u"ב"_s << 4;
}

void PreviewTest::typedPageNumber_goesToThatPage()
{
    QFETCH(QString, typed);
    QFETCH(int, page);
    const PreviewFixture preview(smallRows(30));
    preview.pages().setCurrentPage(4);
    preview.type(u"EditPageNumber"_s, typed);
    QCOMPARE(preview.pages().currentPage(), page);
    preview.pages().setFocus();
    QCOMPARE(child<QLineEdit>(preview.window(), u"EditPageNumber"_s)->text(),
             QString::number(page));
}

void PreviewTest::scrolling_changesTheCurrentPage()
{
    const PreviewFixture preview(smallRows(30));
    QSignalSpy changed(&preview.pages(), &PreviewPages::currentPageChanged);
    QScrollBar* bar = preview.pages().verticalScrollBar();
    // A sheet has 360 pixels and a gap of 12. The second page is current once its upper half is
    // visible.
    bar->setValue(150);
    QCOMPARE(preview.pages().currentPage(), 1);
    bar->setValue(372);
    QCOMPARE(preview.pages().currentPage(), 2);
    QCOMPARE(changed.count(), 1);
    bar->setValue(bar->maximum());
    QCOMPARE(preview.pages().currentPage(), 10);
    QCOMPARE(child<QLineEdit>(preview.window(), u"EditPageNumber"_s)->text(), u"10"_s);
}

void PreviewTest::keys_changeTheZoom()
{
    const PreviewFixture preview;
    preview.press(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 1.25);
    preview.press(Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 1.5);
    preview.press(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 1.25);
    preview.press(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 1.0);
    for (int i = 0; i < 20; ++i)
        preview.press(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 0.1);
    for (int i = 0; i < 30; ++i)
        preview.press(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 5.0);
}

void PreviewTest::buttonsAndWheel_changeTheZoom()
{
    const PreviewFixture preview;
    preview.click(u"ActionZoomIn"_s);
    QCOMPARE(preview.pages().zoomFactor(), 1.25);
    preview.click(u"ActionZoomOut"_s);
    preview.click(u"ActionZoomOut"_s);
    QCOMPARE(preview.pages().zoomFactor(), 0.75);
    const auto turnWheel = [&](int angle, Qt::KeyboardModifiers modifiers) {
        QWidget* view = preview.pages().viewport();
        const QPointF middle = view->rect().center();
        QWheelEvent event(middle, view->mapToGlobal(middle), {}, {0, angle}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view, &event);
    };
    turnWheel(120, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 1.0);
    turnWheel(-120, Qt::ControlModifier);
    QCOMPARE(preview.pages().zoomFactor(), 0.75);
    const int before = preview.pages().verticalScrollBar()->value();
    turnWheel(-120, Qt::NoModifier);
    QCOMPARE(preview.pages().zoomFactor(), 0.75);
    QVERIFY(preview.pages().verticalScrollBar()->value() > before);
}

void PreviewTest::zoomEntry_setsTheZoom()
{
    const PreviewFixture preview;
    auto* combo = child<QComboBox>(preview.window(), u"ComboZoom"_s);
    QCOMPARE(combo->currentText(), u"100%"_s);
    const auto choose = [&](const QString& entry) {
        const int index = combo->findText(entry);
        QVERIFY(index >= 0);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    };
    choose(u"200%"_s);
    QCOMPARE(preview.pages().zoomFactor(), 2.0);
    choose(u"רוחב הדף"_s);
    QVERIFY(qAbs(preview.pages().zoomFactor() - 2.0) > 0.01);
    QCOMPARE(combo->currentText(), u"%1%"_s.arg(qRound(preview.pages().zoomFactor() * 100)));
    const double width = preview.pages().zoomFactor();
    choose(u"דף שלם"_s);
    QVERIFY(preview.pages().zoomFactor() < width + 0.001);
}

void PreviewTest::typedPercent_setsTheZoom_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QString>("shown");
    QTest::newRow("with percent sign") << u"85%"_s << 0.85 << u"85%"_s;
    QTest::newRow("without percent sign") << u" 120 "_s << 1.2 << u"120%"_s;
    QTest::newRow("too large") << u"9000"_s << 5.0 << u"500%"_s;
    QTest::newRow("too small") << u"1%"_s << 0.1 << u"10%"_s;
    QTest::newRow("not a number") << u"גדול"_s << 1.0 << u"100%"_s;
    QTest::newRow("empty text") << u""_s << 1.0 << u"100%"_s;
}

void PreviewTest::typedPercent_setsTheZoom()
{
    QFETCH(QString, typed);
    QFETCH(double, zoom);
    QFETCH(QString, shown);
    const PreviewFixture preview;
    auto* combo = child<QComboBox>(preview.window(), u"ComboZoom"_s);
    combo->lineEdit()->setText(typed);
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    QCOMPARE(preview.pages().zoomFactor(), zoom);
    QCOMPARE(combo->currentText(), shown);
}

void PreviewTest::fitPageAndWidth_followTheWindow()
{
    const PreviewFixture preview;
    const QSize view = preview.pages().viewport()->size();
    const double widthZoom = (view.width() - 24) * 15.0 / smallPaper.width;
    const double heightZoom = (view.height() - 24) * 15.0 / smallPaper.height;
    preview.click(u"ActionFitWidth"_s);
    QCOMPARE(preview.pages().zoomFactor(), widthZoom);
    preview.click(u"ActionFitPage"_s);
    QCOMPARE(preview.pages().zoomFactor(), std::min(widthZoom, heightZoom));
    // The zoom follows the window's size until another zoom is chosen.
    preview.window().showNormal();
    preview.window().resize(500, 400);
    QTRY_VERIFY(preview.pages().viewport()->width() < view.width());
    QTRY_VERIFY(preview.pages().zoomFactor() < std::min(widthZoom, heightZoom));
    preview.pages().setProperty("zoomFactor", 0.5);
    preview.window().resize(700, 600);
    QTest::qWait(20);
    QCOMPARE(preview.pages().zoomFactor(), 0.5);
}

void PreviewTest::zooming_keepsThePosition()
{
    const PreviewFixture preview(smallRows(3000));
    preview.pages().setCurrentPage(500);
    for (const double zoom : {2.0, 0.25, 1.37, 5.0, 1.0}) {
        preview.pages().setZoomFactor(zoom);
        QCOMPARE(preview.pages().currentPage(), 500);
    }
}

void PreviewTest::commands_haveHebrewNames()
{
    const PreviewFixture preview;
    const auto isHebrew = [](const QString& text) {
        return std::any_of(text.begin(), text.end(),
                           [](QChar c) { return c.direction() == QChar::DirR; });
    };
    int commands = 0;
    for (const QAction* action : preview.window().findChildren<QAction*>()) {
        if (!action->objectName().startsWith(u"Action"_s))
            continue;
        ++commands;
        QVERIFY2(isHebrew(action->text()), qPrintable(action->objectName()));
        QVERIFY2(isHebrew(action->toolTip()), qPrintable(action->objectName()));
    }
    QCOMPARE(commands, 20);
}

ZOMREL_QTEST_MAIN(PreviewTest)
#include "preview_test.moc"
