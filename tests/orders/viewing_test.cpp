#include "orders/desk.h"
#include "output/form_view.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/recordset.h"

#include <QHelpEvent>
#include <QToolTip>

#include <memory>

using namespace Qt::StringLiterals;
using driving::inNextModal;
using testsupport::child;
using testsupport::Desk;

namespace {

/// Rests the mouse on a label of the line view and returns the text of the tool tip.
QString shownTip(const QDialog& view, const QString& name = u"LabelWidth_1"_s)
{
    auto* label = child<QLabel>(view, name);
    const QPoint place = label->rect().center();
    QHelpEvent event(QEvent::ToolTip, place, label->mapToGlobal(place));
    QApplication::sendEvent(label, &event);
    return QToolTip::text();
}

} // namespace

/// CmdView, which shows the current line of the grid in the line view.
class ViewingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void view_withoutLines_opensNothing();
    void view_showsTheCurrentLine();
    void view_ofTheNextLine_showsNoFormerText();
    void toolTip_showsHowAFigureWasComputed();
    void toolTip_explainsOpeningAndCountOfAStoredLine();
    void toolTip_tellsThatTheSeriesWasChangedOrDeleted();
    void catalogue_isReadWhenTheFirstToolTipIsShown();
    void toolTip_withoutACatalogue_saysSo();
    void view_withANullNumber_failsWithInvalidUseOfNull_data();
    void view_withANullNumber_failsWithInvalidUseOfNull();
    void view_withoutACurrentLine_failsWithNoCurrentRecord();
    void view_writesNothing();

private:
    /// Opens the order, reads all its lines and makes the row current in the grid.
    void openOn(int row);
    void goTo(int row) const;
    void expectEnded(int error);
    /// Shows the first line and returns the tool tip of its sash width.
    QString tipOfTheSash();
    int addSeriesOfTheLine(double sashWidth);

    std::unique_ptr<Desk> desk_;
};

void ViewingTest::cleanup()
{
    QToolTip::hideText();
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    if (output::isFormViewLoaded())
        output::formView().Unload();
    desk_.reset();
}

void ViewingTest::openOn(int row)
{
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    goTo(row);
}

void ViewingTest::goTo(int row) const
{
    auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    grid->setCurrentIndex(grid->model()->index(row, 0));
}

void ViewingTest::expectEnded(int error)
{
    QCOMPARE(desk_->end.exitStatus(), 1);
    const QString text = desk_->boxes.shown().back().text;
    QVERIFY2(text.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(text));
}

void ViewingTest::view_withoutLines_opensNothing()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->click("CmdView");
    QVERIFY(!output::isFormViewLoaded());
    QVERIFY(desk_->boxes.shown().empty());
}

/// The view shows today's date instead of the order's or the line's, and every value as stored.
void ViewingTest::view_showsTheCurrentLine()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.execute(
        u"UPDATE Cuts SET MyWidth = 1234.5, MYHeight = -0.25, Mashkof_W = 0.1, Mashkof_H = 2,"
        " Reshet_Count = 7, Reshet_Kind = 'א', Reshet_Color = 'ב' WHERE NUM = 2"_s);
    openOn(1);
    bool wasModal = false;
    inNextModal([&wasModal](QDialog& view) {
        wasModal = view.isModal();
        const auto text = [&view](const char* name) {
            return child<QLabel>(view, QString::fromLatin1(name))->text();
        };
        QCOMPARE(view.objectName(), u"FormView"_s);
        QCOMPARE(text("LabelName"), u"סדרה 2"_s);
        QCOMPARE(text("LabelDate"), u"01/03/2026"_s);
        QCOMPARE(text("LabelOpenWidth"), u"1234.5"_s);
        QCOMPARE(text("LabelOpenHeight"), u"-0.25"_s);
        QCOMPARE(text("LabelWidth_0"), u"0.1"_s);
        QCOMPARE(text("LabelHeight_0"), u"2"_s);
        QCOMPARE(text("LabelCount_3"), u"7"_s);
        QCOMPARE(text("LabelKind_3"), u"א"_s);
        QCOMPARE(text("LabelColor_3"), u"ב"_s);
        child<QPushButton>(view, u"CmdClose"_s)->click();
    });
    desk_->click("CmdView");
    QVERIFY(wasModal);
    QVERIFY(!output::isFormViewLoaded());
}

void ViewingTest::view_ofTheNextLine_showsNoFormerText()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->store.execute(u"UPDATE Cuts SET Name = NULL, Glass_Kind = NULL WHERE NUM = 2"_s);
    openOn(0);
    inNextModal(
        [](QDialog& view) { QVERIFY(!child<QLabel>(view, u"LabelKind_2"_s)->text().isEmpty()); });
    desk_->click("CmdView");
    goTo(1);
    inNextModal([](QDialog& view) {
        QCOMPARE(child<QLabel>(view, u"LabelName"_s)->text(), QString());
        QCOMPARE(child<QLabel>(view, u"LabelKind_2"_s)->text(), QString());
        QVERIFY(!child<QLabel>(view, u"LabelColor_2"_s)->text().isEmpty());
    });
    desk_->click("CmdView");
}

QString ViewingTest::tipOfTheSash()
{
    QString tip;
    inNextModal([&tip](QDialog& view) {
        tip = shownTip(view);
        child<QPushButton>(view, u"CmdClose"_s)->click();
    });
    desk_->click("CmdView");
    return tip;
}

int ViewingTest::addSeriesOfTheLine(double sashWidth)
{
    return desk_->store.addSeries(u"סדרה 1"_s,
                                  {-0.6, -0.6, sashWidth, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2);
}

// By hand: the sash of the opening 120 is (120 - 2.8) / 2 = 58.6 wide.
void ViewingTest::toolTip_showsHowAFigureWasComputed()
{
    desk_->addOrderWithLines(1, {1});
    addSeriesOfTheLine(-9.9);
    addSeriesOfTheLine(-2.8); // another series of the same name, from which the line follows
    openOn(0);
    QCOMPARE(tipOfTheSash(), u"\u2066(120 − 2.8) ÷ 2 = 58.6\u2069"_s);
}

/// The line has four pieces of sash, as a series with two sashes gives, but one pane more.
void ViewingTest::toolTip_explainsOpeningAndCountOfAStoredLine()
{
    desk_->addOrderWithLines(1, {1});
    desk_->store.execute(u"UPDATE Cuts SET Glass_Count = 3"_s);
    addSeriesOfTheLine(-2.8);
    openOn(0);
    const auto expectTip = [this](const QString& label, const QString& tip) {
        inNextModal([&](QDialog& view) { QCOMPARE(shownTip(view, label), tip); });
        desk_->click("CmdView");
    };
    expectTip(u"LabelOpenHeight"_s, u"גובה הפתח כפי שהוקלד, ביחידת המידה של הורדות הסדרה."_s);
    expectTip(u"LabelCount_1"_s, u"\u20662 × 2 = 4\u2069 (מספר הכנפיים בסדרה כפול 2)"_s);
    expectTip(u"LabelCount_2"_s, u"לפי הסדרה של היום: \u20662\u2069 (מספר הכנפיים בסדרה)\n"
                                 "הכמות כאן היא \u20663\u2069: הסדרה שונתה אחרי שהשורה נוספה."_s);
}

void ViewingTest::toolTip_tellsThatTheSeriesWasChangedOrDeleted()
{
    desk_->addOrderWithLines(1, {1});
    addSeriesOfTheLine(-3.8);
    openOn(0);
    const QString tip = tipOfTheSash();
    QVERIFY2(tip.contains(u"(120 − 3.8) ÷ 2 = 58.1"_s) && tip.contains(u"הסדרה שונתה"_s),
             qPrintable(tip));
    desk_->store.execute(u"DELETE FROM Serials"_s);
    QVERIFY(tipOfTheSash().contains(u"אינה בקטלוג"_s));
}

/// The series is added while the view is open. By hand: (120 - 2.8) / 2 = 58.6.
void ViewingTest::catalogue_isReadWhenTheFirstToolTipIsShown()
{
    desk_->addOrderWithLines(1, {1});
    openOn(0);
    inNextModal([this](QDialog& view) {
        QCOMPARE(child<QLabel>(view, u"LabelWidth_1"_s)->toolTip(), QString());
        addSeriesOfTheLine(-2.8);
        QCOMPARE(shownTip(view), u"\u2066(120 − 2.8) ÷ 2 = 58.6\u2069"_s);
        // The result is kept.
        desk_->store.execute(u"DELETE FROM Serials"_s);
        QCOMPARE(shownTip(view), u"\u2066(120 − 2.8) ÷ 2 = 58.6\u2069"_s);
    });
    desk_->click("CmdView");
}

void ViewingTest::toolTip_withoutACatalogue_saysSo()
{
    desk_->addOrderWithLines(1, {1});
    addSeriesOfTheLine(-2.8);
    openOn(0);
    inNextModal([this](QDialog& view) {
        desk_->store.execute(u"ALTER TABLE Serials RENAME TO Elsewhere"_s);
        QCOMPARE(shownTip(view), u"אי אפשר לקרוא את הקטלוג, ולכן אין הסבר."_s);
        // The catalogue is read again for the next tool tip.
        desk_->store.execute(u"ALTER TABLE Elsewhere RENAME TO Serials"_s);
        QCOMPARE(shownTip(view), u"\u2066(120 − 2.8) ÷ 2 = 58.6\u2069"_s);
    });
    desk_->click("CmdView");
    QCOMPARE(desk_->end.exitStatus(), std::nullopt);
}

void ViewingTest::view_withANullNumber_failsWithInvalidUseOfNull_data()
{
    QTest::addColumn<QString>("field");
    for (const char* field : {"MyWidth", "MYHeight", "Mashkof_W", "Reshet_H", "Mahkof_Count",
                              "Kanaf_Count", "Glass_Count", "Reshet_Count"})
        QTest::newRow(field) << QString::fromLatin1(field);
}

void ViewingTest::view_withANullNumber_failsWithInvalidUseOfNull()
{
    QFETCH(QString, field);
    desk_->addOrderWithLines(1, {1});
    desk_->store.execute(u"UPDATE Cuts SET %1 = NULL"_s.arg(field));
    openOn(0);
    desk_->boxes.answer(runtime::vbOK);
    desk_->click("CmdView");
    expectEnded(94);
}

void ViewingTest::view_withoutACurrentLine_failsWithNoCurrentRecord()
{
    desk_->addOrderWithLines(1, {1, 2});
    openOn(1);
    desk_->lines().MoveNext();
    QCOMPARE(desk_->lines().RecordCount(), 2);
    desk_->boxes.answer(runtime::vbOK);
    desk_->click("CmdView");
    expectEnded(3021);
}

void ViewingTest::view_writesNothing()
{
    desk_->addOrderWithLines(1, {1, 2});
    openOn(0);
    desk_->type("TextCustomerName", u"דוד"_s);
    const auto before = desk_->store.rows(u"SELECT * FROM Cuts"_s);
    inNextModal([](QDialog& view) { view.close(); });
    desk_->click("CmdView");
    QCOMPARE(desk_->store.rows(u"SELECT * FROM Cuts"_s), before);
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
    QCOMPARE(desk_->box("TextCustomerName"), u"דוד"_s);
}

ZOMREL_QTEST_MAIN(ViewingTest)
#include "viewing_test.moc"
