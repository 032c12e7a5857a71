#include "shell/error_explanations.h"

#include "platform/controls/message_box_window.h"
#include "platform/runtime/explanation.h"
#include "platform/runtime/guard.h"
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
    void otherError_hasTheGeneralExplanation();
    void box_keepsItsTextAndExplainsBelowIt();
};

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

void ErrorExplanationsTest::otherError_hasTheGeneralExplanation()
{
    QVERIFY(shell::explanationOf(RunTimeError(3061)).startsWith(u"מה קרה: שגיאה פנימית."_s));
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
