#include "shell/status_bar.h"

#include "support/doors.h"
#include "support/widgets.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTime>

using namespace Qt::StringLiterals;

class StatusBarTest : public QObject
{
    Q_OBJECT

private slots:
    void panels_haveTheirTextsAndOrder();
    void panels_haveTheirToolTips();
    void datePanel_showsToday();
    void datePanel_updatesWhenTheDateChanges();
    void timePanel_showsTheCurrentTime();
    void productLine_fitsASmallScreen();
};

namespace {

QLabel* panel(const QObject& bar, int index)
{
    return testsupport::child<QLabel>(bar, u"StatusBar1_%1"_s.arg(index));
}

const QString product = u"זומרל  - תוכנה לחישוב חיתוכים לעבודות אלומניום ."_s;

} // namespace

void StatusBarTest::panels_haveTheirTextsAndOrder()
{
    shell::StatusBar bar(nullptr);
    QCOMPARE(bar.objectName(), u"StatusBar1"_s);
    QCOMPARE(panel(bar, 2)->text(), u"תאריך"_s);
    QCOMPARE(panel(bar, 4)->text(), u"שעה"_s);
    QCOMPARE(panel(bar, 5)->text(), product);
    bar.resize(1366, bar.sizeHint().height());
    bar.show();
    for (int i = 1; i < 5; ++i)
        // The panels are laid out right-to-left.
        QVERIFY(panel(bar, i)->x() > panel(bar, i + 1)->x());
    // The widths are 1764, 1411, 1058 and 1058 twips.
    QVERIFY(panel(bar, 1)->width() >= 118);
    QVERIFY(panel(bar, 2)->width() >= 94);
    QVERIFY(panel(bar, 3)->width() >= 71);
    QVERIFY(panel(bar, 4)->width() >= 71);
}

void StatusBarTest::panels_haveTheirToolTips()
{
    shell::StatusBar bar(nullptr);
    QCOMPARE(panel(bar, 1)->toolTip(), QString());
    QCOMPARE(panel(bar, 2)->toolTip(), u"תאריך"_s);
    QCOMPARE(panel(bar, 3)->toolTip(), QString());
    QCOMPARE(panel(bar, 4)->toolTip(), u"שעה"_s);
    QCOMPARE(panel(bar, 5)->toolTip(), product);
}

void StatusBarTest::datePanel_showsToday()
{
    const testsupport::FixedToday today(QDate(2018, 4, 20));
    shell::StatusBar bar(nullptr);
    QCOMPARE(panel(bar, 1)->text(), u"20/04/2018"_s);
}

void StatusBarTest::datePanel_updatesWhenTheDateChanges()
{
    auto today = std::make_unique<testsupport::FixedToday>(QDate(2026, 12, 31));
    shell::StatusBar bar(nullptr);
    QCOMPARE(panel(bar, 1)->text(), u"31/12/2026"_s);
    today.reset();
    const testsupport::FixedToday tomorrow(QDate(2027, 1, 1));
    QTRY_COMPARE(panel(bar, 1)->text(), u"01/01/2027"_s);
}

void StatusBarTest::timePanel_showsTheCurrentTime()
{
    const QString before = QTime::currentTime().toString(u"HH:mm"_s);
    shell::StatusBar bar(nullptr);
    const QString shown = panel(bar, 3)->text();
    const QString after = QTime::currentTime().toString(u"HH:mm"_s);
    QVERIFY(shown == before || shown == after);
}

void StatusBarTest::productLine_fitsASmallScreen()
{
    shell::StatusBar bar(nullptr);
    bar.resize(1366, bar.sizeHint().height());
    bar.show();
    QLabel* line = panel(bar, 5);
    QVERIFY(line->contentsRect().width() >= line->fontMetrics().horizontalAdvance(product));
    QVERIFY(line->contentsRect().height() >= line->fontMetrics().height());
}

ZOMREL_QTEST_MAIN(StatusBarTest)
#include "status_bar_test.moc"
