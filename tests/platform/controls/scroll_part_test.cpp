#include "platform/controls/scroll_part.h"

#include "platform/controls/restored_size.h"
#include "support/widgets.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using testsupport::showActive;

/// Forms and windows that are larger than their screen.
class ScrollPartTest : public QObject
{
    Q_OBJECT

private slots:
    void focusedControl_isScrolledIntoView();
    void focusBeyondTheSide_isScrolledIntoView_data() { tooWideControl_showsItsStart_data(); }
    void focusBeyondTheSide_isScrolledIntoView();
    void tooWideControl_showsItsStart_data();
    void tooWideControl_showsItsStart();
    void shrunkWindow_keepsTheFocusInView();
    void scrollPart_isNoTabStop();
    void largeRoom_leavesTheWindowUnchanged();
    void smallRoom_keepsTheButtonsInView();
    void smallRoom_keepsPlacesAndTabOrder();
    void restoredWindow_isSmallerThanTheScreen();
    void restoredWindow_keepsASizeThatFits();
    void restoredWindow_keepsAChosenSizeLargerThanTheScreen();
};

namespace {

bool isInFullView(const QWidget& widget)
{
    return widget.visibleRegion().boundingRect() == widget.rect();
}

/// A window with twenty boxes in a scrolling part.
struct Boxes : QWidget
{
    QList<QLineEdit*> all;
    controls::ScrollPart* part;

    Boxes()
    {
        auto* contents = new QWidget;
        auto* rows = new QVBoxLayout(contents);
        for (int i = 0; i < 20; ++i) {
            all.append(new QLineEdit(contents));
            rows->addWidget(all.last());
        }
        part = new controls::ScrollPart(contents, this);
        auto* whole = new QVBoxLayout(this);
        whole->addWidget(part);
        resize(300, 200);
    }
};

/// A window of fixed size with a box and two buttons at fixed places.
struct Fixed : QWidget
{
    QLineEdit* box = new QLineEdit(this);
    QLineEdit* lowest = new QLineEdit(this);
    QPushButton* take = new QPushButton(u"take"_s, this);
    QPushButton* leave = new QPushButton(u"leave"_s, this);

    Fixed()
    {
        box->setGeometry(10, 20, 100, 30);
        lowest->setGeometry(10, 400, 100, 30);
        take->setGeometry(300, 450, 90, 40);
        leave->setGeometry(200, 450, 90, 40);
        setFixedSize(500, 500);
    }
};

} // namespace

void ScrollPartTest::focusedControl_isScrolledIntoView()
{
    Boxes window;
    QVERIFY(showActive(window));
    QVERIFY(!isInFullView(*window.all.last()));
    window.all.last()->setFocus();
    QTRY_VERIFY(isInFullView(*window.all.last()));
    window.all.first()->setFocus();
    QTRY_VERIFY(isInFullView(*window.all.first()));
}

void ScrollPartTest::focusBeyondTheSide_isScrolledIntoView()
{
    QFETCH(Qt::LayoutDirection, direction);
    Fixed window;
    window.setLayoutDirection(direction);
    auto* farther = new QLineEdit(&window);
    farther->setGeometry(380, 20, 100, 30);
    controls::fitIntoRoom(window, QSize(320, 240), {window.take, window.leave});
    QVERIFY(showActive(window));
    farther->setFocus();
    QTRY_VERIFY(isInFullView(*farther));
    QVERIFY(!isInFullView(*window.box));
    window.box->setFocus();
    QTRY_VERIFY(isInFullView(*window.box));
    QVERIFY(!isInFullView(*farther));
}

void ScrollPartTest::tooWideControl_showsItsStart_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("from left to right") << Qt::LeftToRight;
    QTest::newRow("from right to left") << Qt::RightToLeft;
}

void ScrollPartTest::tooWideControl_showsItsStart()
{
    QFETCH(Qt::LayoutDirection, direction);
    Boxes window;
    window.setLayoutDirection(direction);
    QLineEdit* const wide = window.all[5];
    wide->setMinimumWidth(600);
    QVERIFY(showActive(window));
    window.part->horizontalScrollBar()->setValue(window.part->horizontalScrollBar()->maximum());
    wide->setFocus();
    const bool isMirrored = direction == Qt::RightToLeft;
    const QRect seen = wide->visibleRegion().boundingRect();
    QCOMPARE(isMirrored ? seen.right() : seen.left(), isMirrored ? wide->rect().right() : 0);
    QVERIFY(seen.width() < wide->width());
}

void ScrollPartTest::shrunkWindow_keepsTheFocusInView()
{
    Boxes window;
    window.resize(300, 900);
    QVERIFY(showActive(window));
    window.all.last()->setFocus();
    QVERIFY(isInFullView(*window.all.last()));
    window.resize(300, 200);
    QTRY_VERIFY(isInFullView(*window.all.last()));
}

void ScrollPartTest::scrollPart_isNoTabStop()
{
    Boxes window;
    QVERIFY(showActive(window));
    window.all.first()->setFocus();
    for (int i = 1; i < 20; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), window.all[i]);
    }
}

void ScrollPartTest::largeRoom_leavesTheWindowUnchanged()
{
    Fixed window;
    QCOMPARE(controls::fitIntoRoom(window, QSize(500, 500), {window.take, window.leave}), &window);
    QVERIFY(showActive(window));
    QCOMPARE(window.size(), QSize(500, 500));
    QCOMPARE(window.take->geometry(), QRect(300, 450, 90, 40));
}

void ScrollPartTest::smallRoom_keepsTheButtonsInView()
{
    Fixed window;
    QVERIFY(controls::fitIntoRoom(window, QSize(320, 240), {window.take, window.leave}) != &window);
    QVERIFY(showActive(window));
    QCOMPARE(window.size(), QSize(320, 240));
    QVERIFY(isInFullView(*window.take));
    QVERIFY(isInFullView(*window.leave));
    QVERIFY(!isInFullView(*window.lowest));
    window.lowest->setFocus();
    QTRY_VERIFY(isInFullView(*window.lowest));
    QVERIFY(isInFullView(*window.take));
}

void ScrollPartTest::smallRoom_keepsPlacesAndTabOrder()
{
    Fixed window;
    controls::fitIntoRoom(window, QSize(320, 240), {window.take, window.leave});
    QVERIFY(showActive(window));
    QCOMPARE(window.box->geometry(), QRect(10, 20, 100, 30));
    QVERIFY(window.take->width() >= 90 && window.take->height() >= 40);
    window.box->setFocus();
    for (QWidget* next : QWidgetList{window.lowest, window.take, window.leave}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
    }
}

void ScrollPartTest::restoredWindow_isSmallerThanTheScreen()
{
    QWidget window;
    new controls::RestoredSize(window);
    const QRect room = window.screen()->availableGeometry();
    window.setGeometry(room);
    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.showNormal();
    QTRY_VERIFY(window.width() < room.width() && window.height() < room.height());
    QVERIFY(room.contains(window.frameGeometry()));
}

void ScrollPartTest::restoredWindow_keepsASizeThatFits()
{
    QWidget window;
    auto* restored = new controls::RestoredSize(window);
    const QTimer& correction = *restored->findChild<QTimer*>();
    const QRect inside = window.screen()->availableGeometry().adjusted(60, 60, -60, -60);
    window.setGeometry(inside);
    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.showNormal();
    QVERIFY(correction.isActive());
    QTRY_VERIFY(!correction.isActive());
    QVERIFY(!window.isMaximized());
    QCOMPARE(window.geometry(), inside);
}

/// The second window shows when the time has passed after which a size is corrected.
void ScrollPartTest::restoredWindow_keepsAChosenSizeLargerThanTheScreen()
{
    QWidget chosen;
    QWidget unchanged;
    const QRect room = chosen.screen()->availableGeometry();
    for (QWidget* window : {&chosen, &unchanged}) {
        new controls::RestoredSize(*window);
        window->setGeometry(room);
        window->showMaximized();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        window->showNormal();
    }
    chosen.resize(room.size() * 2);
    QTRY_VERIFY(unchanged.width() < room.width());
    QCOMPARE(chosen.size(), room.size() * 2);
}

ZOMREL_QTEST_MAIN(ScrollPartTest)
#include "scroll_part_test.moc"
