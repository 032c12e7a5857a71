#include "shell/error_explanations.h"

#include "platform/controls/message_box_window.h"
#include "platform/runtime/explanation.h"
#include "platform/runtime/guard.h"
#include "shell/help_text.h"
#include "support/doors.h"
#include "support/widgets.h"

#include <QLabel>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;
using testsupport::child;
using testsupport::NextMessageBox;

class ErrorExplanationsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyExplanation_saysWhatHappenedWhatIsSavedAndWhatToDo_data();
    void everyExplanation_saysWhatHappenedWhatIsSavedAndWhatToDo();
    void description_choosesTheExplanation_data();
    void description_choosesTheExplanation();
    void everyErrorOfTheManual_hasAnExplanationOfItsOwn();
    void otherErrorsOfTheManual_haveTheGeneralExplanation();
    void box_keepsItsTextAndExplainsBelowIt();
};

namespace {

const QString general = u"מה קרה: שגיאה פנימית."_s;

/// Returns the first cells of the table of errors in the Hebrew manual, from the error 13 on.
QStringList errorCells()
{
    const QString messages =
        shell::helpChapters(shell::manualText(), shell::HelpLanguage::Hebrew)[8].markdown;
    QStringList cells;
    // The table is mirrored for the help window, so that its first column comes last.
    for (const QString& line : messages.section(u"Run-time error '13'"_s, 1).split(u'\n')) {
        const QString cell = line.section(u'|', -2, -2).trimmed();
        if (!cell.isEmpty() && cell.front().isDigit())
            cells.append(cell);
    }
    return cells;
}

/// Returns the errors that a cell names: a number and its description, which stands between marks
/// of direction.
QList<RunTimeError> errorsIn(const QString& cell)
{
    static const QRegularExpression named(u"(\\d+) \u200e([^\u200e]+)\u200e"_s);
    QList<RunTimeError> errors;
    for (auto match = named.globalMatch(cell); match.hasNext();) {
        const auto error = match.next();
        errors.append(RunTimeError(error.captured(1).toInt(), error.captured(2)));
    }
    return errors;
}

} // namespace

void ErrorExplanationsTest::everyExplanation_saysWhatHappenedWhatIsSavedAndWhatToDo_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("named");
    QTest::newRow("letter in a measure") << 13 << u"תיבות המידה"_s;
    QTest::newRow("no store") << 3024 << u"לא נמצא"_s;
    QTest::newRow("not a store") << 3343 << u"אינו שלו"_s;
    QTest::newRow("locked") << 3260 << u"נעולים"_s;
    QTest::newRow("damaged") << 3049 << u"פגום"_s;
    QTest::newRow("no server") << 3151 << u"אין קשר לשרת"_s;
    QTest::newRow("server gone") << 3146 << u"נותק"_s;
    QTest::newRow("no permission") << 3051 << u"אין הרשאה"_s;
    QTest::newRow("read-only") << 3027 << u"אסור לכתוב"_s;
    QTest::newRow("disk full") << 3026 << u"הדיסק מלא"_s;
    QTest::newRow("sashes of a series") << 380 << u"כנפיים"_s;
    QTest::newRow("no order form") << 5 << u"מסך ההזמנות"_s;
    QTest::newRow("empty field") << 3314 << u"חייב להיות מלא"_s;
    QTest::newRow("store replaced") << 3197 << u"הוחלף"_s;
}

void ErrorExplanationsTest::everyExplanation_saysWhatHappenedWhatIsSavedAndWhatToDo()
{
    QFETCH(const int, number);
    QFETCH(const QString, named);
    const QStringList lines = shell::explanationOf(RunTimeError(number)).split(u'\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[0].startsWith(u"מה קרה: "_s) && lines[0].contains(named));
    QVERIFY(lines[1].startsWith(u"מה שמור: "_s));
    QVERIFY(lines[2].startsWith(u"מה עושים: "_s) && lines[2].size() > 20);
}

void ErrorExplanationsTest::description_choosesTheExplanation_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("advised");
    QTest::addColumn<QString>("notAdvised");
    const QString restore = u"zomrel-store restore"_s;
    QTest::newRow("another file") << 3343 << u"Unrecognized database format 'Aluminium.mdb'."_s
                                  << restore << u"zomrel-store link"_s;
    QTest::newRow("damaged link")
        << 3343 << u"The store link 'Aluminium.mdb' is damaged: it is no UTF-8 text."_s
        << u"zomrel-store link"_s << restore;
    QTest::newRow("encoding") << 3343
                              << u"The encoding of database 'zomrel' on server 'saw:5432' is "
                                 "LATIN1; a store needs UTF8."_s
                              << u"UTF8"_s << restore;
    QTest::newRow("short paper") << 5 << u"Report section is higher than the paper."_s << u"A4"_s
                                 << u"סדרה"_s;
    QTest::newRow("no order form")
        << 5 << u"Invalid procedure call or argument"_s << u"סדרה"_s << u"A4"_s;
    QTest::newRow("order or measure")
        << 6 << u"Overflow"_s << u"אם מספר ההזמנה האחרונה הוא 32767"_s << restore;
    QTest::newRow("numbers of a table used up")
        << 6 << u"Overflow (the counter Cuts.AutoNum has given its last number, 2147483647)"_s
        << u"zomrel-store create"_s << u"מידות"_s;
}

void ErrorExplanationsTest::description_choosesTheExplanation()
{
    QFETCH(const int, number);
    QFETCH(const QString, description);
    QFETCH(const QString, advised);
    QFETCH(const QString, notAdvised);
    const QString next =
        shell::explanationOf(RunTimeError(number, description)).section(u'\n', 2, 2);
    QVERIFY2(next.contains(advised), qPrintable(next));
    QVERIFY2(!next.contains(notAdvised), qPrintable(next));
}

/// Two rows of the manual differ in what to do, so their explanations differ as well.
void ErrorExplanationsTest::everyErrorOfTheManual_hasAnExplanationOfItsOwn()
{
    QHash<QString, QString> cellOf;
    int errors = 0;
    for (const QString& cell : errorCells()) {
        for (const RunTimeError& each : errorsIn(cell)) {
            const QString explanation = shell::explanationOf(each);
            QVERIFY2(!explanation.startsWith(general), qPrintable(cell));
            const QString other = cellOf.value(explanation, cell);
            QVERIFY2(other == cell, qPrintable(other + u'\n' + cell));
            cellOf[explanation] = cell;
            ++errors;
        }
    }
    QVERIFY2(errors >= 33, qPrintable(QString::number(errors)));
}

void ErrorExplanationsTest::otherErrorsOfTheManual_haveTheGeneralExplanation()
{
    static const QRegularExpression number(u"\\d+"_s);
    const QString others = errorCells().last();
    QVERIFY2(others.startsWith(u"51, "_s), qPrintable(others));
    int errors = 0;
    for (auto match = number.globalMatch(others); match.hasNext(); ++errors) {
        const int each = match.next().captured().toInt();
        QVERIFY2(shell::explanationOf(RunTimeError(each)).startsWith(general),
                 qPrintable(QString::number(each)));
    }
    QVERIFY(errors > 5);
}

void ErrorExplanationsTest::box_keepsItsTextAndExplainsBelowIt()
{
    shell::installErrorExplanations();
    controls::installMessageBoxes();
    testsupport::RecordedEnd end;
    QString text;
    QString explanation;
    bool isBelow = false;
    bool isRightToLeft = false;
    const NextMessageBox next([&](QMessageBox& box) {
        const auto* below = child<QLabel>(box, u"qt_msgbox_informativelabel"_s);
        text = box.text();
        explanation = below->text();
        isBelow = below->y() >= child<QLabel>(box, u"qt_msgbox_label"_s)->geometry().bottom();
        isRightToLeft = below->layoutDirection() == Qt::RightToLeft;
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    runtime::guarded([] { throw RunTimeError(runtime::TypeMismatch); });
    QVERIFY(next.hasCome());
    QCOMPARE(text, u"Run-time error '13':\n\nType mismatch"_s);
    QCOMPARE(explanation, shell::explanationOf(RunTimeError(runtime::TypeMismatch)));
    QVERIFY(isBelow && isRightToLeft);
    QCOMPARE(end.exitStatus(), 1);
}

ZOMREL_QTEST_MAIN(ErrorExplanationsTest)
#include "error_explanations_test.moc"
