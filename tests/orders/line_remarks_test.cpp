#include "orders/desk.h"
#include "platform/controls/db_grid.h"

#include <QHelpEvent>
#include <QToolTip>

#include <memory>
#include <numeric>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// The marks of probable slips in the order form's grid.
class LineRemarksTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void soundLines_haveNoSign();
    void negativeCut_hasASignAndAToolTip();
    void tenfoldMeasure_isMarkedAmongItsNeighbours();
    void mark_doesNotDependOnTheRowsThatWereShown();
    void lineWithoutAKind_isNoMonoblock();
    void typedSlip_isMarkedAfterItWasAdded();

private:
    void makeTenfold(const QString& which);
    controls::DBGrid& openGrid();
    bool hasSign(int row) const;
    QString toolTipOn(int row) const;

    std::unique_ptr<Desk> desk_;
};

void LineRemarksTest::cleanup()
{
    QToolTip::hideText();
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

/// Makes all openings 45 high and some of them 450, with sashes that follow, so that nothing but
/// the other lines makes a line odd.
void LineRemarksTest::makeTenfold(const QString& which)
{
    desk_->store.execute(u"UPDATE Cuts SET MYHeight = 45"_s);
    desk_->store.execute(u"UPDATE Cuts SET MYHeight = 450 WHERE "_s + which);
    desk_->store.execute(u"UPDATE Cuts SET Mashkof_H = MYHeight - 0.6, Kanaf_H = MYHeight - 6.5, "
                         "Glass_H = MYHeight - 19.7, Reshet_H = MYHeight - 6.9"_s);
}

controls::DBGrid& LineRemarksTest::openGrid()
{
    desk_->openOrder(1);
    desk_->window.show();
    [this] { QTRY_VERIFY(desk_->timerRests()); }();
    return *desk_->on<controls::DBGrid>("DBGrid1");
}

bool LineRemarksTest::hasSign(int row) const
{
    const auto* model = desk_->on<controls::DBGrid>("DBGrid1")->model();
    int signs = 0;
    for (int column = 0; column < model->columnCount(); ++column)
        signs += model->index(row, column).data(Qt::DecorationRole).isValid() ? 1 : 0;
    return signs == 1;
}

/// Rests the mouse on the row and returns the text of the tool tip.
QString LineRemarksTest::toolTipOn(int row) const
{
    auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    const QPoint place = grid->visualRect(grid->model()->index(row, 0)).center();
    QHelpEvent event(QEvent::ToolTip, place, grid->viewport()->mapToGlobal(place));
    QApplication::sendEvent(grid->viewport(), &event);
    return QToolTip::text();
}

void LineRemarksTest::soundLines_haveNoSign()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    openGrid();
    for (int row = 0; row < 3; ++row)
        QVERIFY(!hasSign(row));
    QCOMPARE(toolTipOn(1), QString());
}

void LineRemarksTest::negativeCut_hasASignAndAToolTip()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.execute(u"UPDATE Cuts SET Glass_W = -3.8 WHERE NUM = 2"_s);
    openGrid();
    QVERIFY(!hasSign(0));
    QVERIFY(hasSign(1));
    const QString tip = toolTipOn(1);
    QVERIFY2(tip.contains(u"זכוכית, רוחב"_s) && tip.contains(u"-3.8"_s), qPrintable(tip));
}

void LineRemarksTest::tenfoldMeasure_isMarkedAmongItsNeighbours()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    makeTenfold(u"NUM = 3"_s);
    openGrid();
    QVERIFY(!hasSign(0));
    QVERIFY(!hasSign(1));
    QVERIFY(hasSign(2));
    QVERIFY(toolTipOn(2).contains(u"גובה הפתח"_s));
}

/// By hand: of the 57 neighbours of line 161, the lines 111 to 168, 35 have the usual height and 22
/// the tenfold one, so the line is marked. Among the lines from 129 on, which the grid shows when
/// it opens at the last line, the tenfold height would be the usual one.
void LineRemarksTest::mark_doesNotDependOnTheRowsThatWereShown()
{
    QList<int> numbers(168);
    std::iota(numbers.begin(), numbers.end(), 1);
    desk_->addOrderWithLines(1, numbers);
    makeTenfold(u"NUM >= 146"_s);
    openGrid();
    QVERIFY(hasSign(160));
}

/// The monoblock figures of a line without a kind are 0, which would mark a monoblock.
void LineRemarksTest::lineWithoutAKind_isNoMonoblock()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->store.execute(u"UPDATE Cuts SET Kind = NULL WHERE NUM = 1"_s);
    openGrid();
    QVERIFY(!hasSign(0));
    QVERIFY(!hasSign(1));
}

void LineRemarksTest::typedSlip_isMarkedAfterItWasAdded()
{
    desk_->store.addOrder(1);
    const int series =
        desk_->store.addSeries(u"הזזה"_s, {-0.6, -0.6, -2.8, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2);
    const controls::DBGrid& grid = openGrid();
    Module1::SelectedSerialNum = static_cast<std::int16_t>(series);
    desk_->type("TextNum_0", u"12"_s); // for 120
    desk_->type("TextNum_2", u"100"_s);
    desk_->click("CmdAdd");
    QTRY_COMPARE(grid.model()->rowCount(), 1);
    QVERIFY(hasSign(0));
}

ZOMREL_QTEST_MAIN(LineRemarksTest)
#include "line_remarks_test.moc"
