#include "platform/controls/message_box_window.h"

#include "platform/runtime/message_box.h"
#include "support/widgets.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using testsupport::NextMessageBox;

namespace {

QLabel* textLabel(const QMessageBox& box)
{
    return testsupport::child<QLabel>(box, u"qt_msgbox_label"_s);
}

/// Shows a message box, presses the key and returns the answer.
runtime::MessageBoxAnswer answerTo(Qt::Key key, int flags)
{
    const NextMessageBox next([key](QMessageBox& box) {
        QTest::keyClick(QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &box,
                        key);
    });
    return runtime::MsgBox(u"שאלה?"_s, flags);
}

constexpr int yesNoCancelFlags = runtime::vbYesNoCancel + runtime::vbQuestion;

} // namespace

class MessageBoxWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { controls::installMessageBoxes(); }

    void hebrewText_isRightAligned();
    void englishText_isLeftAligned();
    void question_hasYesBeforeNo();
    void keys_giveTheirAnswers_data();
    void keys_giveTheirAnswers();
    void closeBox_countsAsNo();
    void buttons_giveTheirAnswers();
    void markup_isShownAsPlainText();
    void carriageReturns_endLines();
    void wrappedLines_areNotClipped_data();
    void wrappedLines_areNotClipped();
    void longText_isNotClipped();
    void box_isAboveTheActiveWindow();
};

void MessageBoxWindowTest::hebrewText_isRightAligned()
{
    QString title;
    const NextMessageBox next([&](QMessageBox& box) {
        title = box.windowTitle();
        QCOMPARE(box.text(), u"ערך נומרי 0 !"_s);
        QCOMPARE(box.icon(), QMessageBox::Critical);
        QCOMPARE(box.layoutDirection(), Qt::RightToLeft);
        QVERIFY(textLabel(box)->alignment().testFlags(Qt::AlignRight | Qt::AlignAbsolute));
        QCOMPARE(box.standardButtons(), QMessageBox::Ok);
        QCOMPARE(box.button(QMessageBox::Ok)->text(), u"אישור"_s);
        box.button(QMessageBox::Ok)->click();
    });
    QCOMPARE(runtime::MsgBox(u"ערך נומרי 0 !"_s, runtime::refusalFlags), runtime::vbOK);
    QVERIFY(next.hasCome());
    QCOMPARE(title, u"ProjZomrel"_s);
}

void MessageBoxWindowTest::englishText_isLeftAligned()
{
    const NextMessageBox next([](QMessageBox& box) {
        QCOMPARE(box.layoutDirection(), Qt::LeftToRight);
        QCOMPARE(box.icon(), QMessageBox::NoIcon);
        QVERIFY(textLabel(box)->alignment().testFlags(Qt::AlignLeft | Qt::AlignAbsolute));
        box.close();
    });
    QCOMPARE(runtime::MsgBox(u"TableDef not Updatable! Unable to complete task."_s), runtime::vbOK);
    QVERIFY(next.hasCome());
}

void MessageBoxWindowTest::question_hasYesBeforeNo()
{
    const NextMessageBox next([](QMessageBox& box) {
        QCOMPARE(box.windowTitle(), u"מחיקת סדרה"_s);
        QCOMPARE(box.icon(), QMessageBox::Question);
        QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
        const QAbstractButton* yes = box.button(QMessageBox::Yes);
        const QAbstractButton* no = box.button(QMessageBox::No);
        QCOMPARE(yes->text(), u"כן"_s);
        QCOMPARE(no->text(), u"לא"_s);
        QVERIFY(yes->mapToGlobal(QPoint()).x() > no->mapToGlobal(QPoint()).x());
        QCOMPARE(box.defaultButton(), yes);
        box.close();
    });
    runtime::MsgBox(u"האם?"_s, runtime::questionFlags, u"מחיקת סדרה"_s);
    QVERIFY(next.hasCome());
}

void MessageBoxWindowTest::keys_giveTheirAnswers_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("answer");

    QTest::newRow("Enter is Yes") << runtime::questionFlags << int(Qt::Key_Return)
                                  << int(runtime::vbYes);
    QTest::newRow("Escape is No") << runtime::questionFlags << int(Qt::Key_Escape)
                                  << int(runtime::vbNo);
    QTest::newRow("Enter is OK") << runtime::refusalFlags << int(Qt::Key_Return)
                                 << int(runtime::vbOK);
    QTest::newRow("Escape is OK") << runtime::refusalFlags << int(Qt::Key_Escape)
                                  << int(runtime::vbOK);
    QTest::newRow("Escape is Cancel")
        << yesNoCancelFlags << int(Qt::Key_Escape) << int(runtime::vbCancel);
}

void MessageBoxWindowTest::keys_giveTheirAnswers()
{
    QFETCH(const int, flags);
    QFETCH(const int, key);
    QTEST(int(answerTo(static_cast<Qt::Key>(key), flags)), "answer");
}

void MessageBoxWindowTest::closeBox_countsAsNo()
{
    for (const auto& [flags, answer] : {std::pair{runtime::questionFlags, runtime::vbNo},
                                        std::pair{yesNoCancelFlags, runtime::vbCancel},
                                        std::pair{runtime::refusalFlags, runtime::vbOK}}) {
        const NextMessageBox next([](QMessageBox& box) { box.close(); });
        QCOMPARE(runtime::MsgBox(u"?"_s, flags), answer);
        QVERIFY(next.hasCome());
    }
}

void MessageBoxWindowTest::buttons_giveTheirAnswers()
{
    for (const auto& [button, answer] :
         {std::pair{QMessageBox::Yes, runtime::vbYes}, std::pair{QMessageBox::No, runtime::vbNo},
          std::pair{QMessageBox::Cancel, runtime::vbCancel}}) {
        const NextMessageBox next([wanted = button](QMessageBox& box) {
            QTest::mouseClick(box.button(wanted), Qt::LeftButton);
        });
        QCOMPARE(runtime::MsgBox(u"?"_s, yesNoCancelFlags), answer);
    }
}

void MessageBoxWindowTest::markup_isShownAsPlainText()
{
    const NextMessageBox next([](QMessageBox& box) {
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QCOMPARE(box.text(), u"<b>x</b>"_s);
        box.close();
    });
    runtime::MsgBox(u"<b>x</b>"_s);
    QVERIFY(next.hasCome());
}

void MessageBoxWindowTest::carriageReturns_endLines()
{
    const QString text = u"שורה ראשונה\rשורה שנייה\r\rשורה אחרונה"_s;
    QSize oneLine;
    const NextMessageBox first([&](QMessageBox& box) {
        oneLine = textLabel(box)->size();
        box.close();
    });
    runtime::MsgBox(u"שורה אחרונה"_s, runtime::refusalFlags);
    QSize label;
    QImage image;
    const NextMessageBox second([&](QMessageBox& box) {
        QCOMPARE(box.text(), text);
        label = textLabel(box)->size();
        image = textLabel(box)->grab().toImage();
        box.close();
    });
    runtime::MsgBox(text, runtime::refusalFlags);
    QVERIFY(second.hasCome());
    QVERIFY(label.height() >= 3 * oneLine.height() / 2);
    QVERIFY(label.width() < 3 * oneLine.width());
    // The first, second and fourth quarter of the height contain text, and the third is empty.
    const auto inked = [&image](int quarter) {
        const int height = image.height() / 4;
        const QRgb paper = image.pixel(0, 0);
        for (int y = quarter * height + 2; y < (quarter + 1) * height - 2; ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != paper)
                    return true;
        return false;
    };
    QVERIFY(inked(0));
    QVERIFY(inked(1));
    QVERIFY(!inked(2));
    QVERIFY(inked(3));
}

void MessageBoxWindowTest::wrappedLines_areNotClipped_data()
{
    QTest::addColumn<QString>("text");
    const QString first = u"שגיאה מספר: (3260) - תאור: Couldn't update; currently locked."_s;
    QTest::newRow("locked") << first +
                                   u"\rעצות:\rבסיס הנתונים נעול על ידי משתמש אחר,נא תצא מכל העמדות "
                                   "של התוכנה או תנסה להפעיל מחדש את כל המחשבים !"_s;
    QTest::newRow("no access")
        << first +
               u"\rאין גישה לקובץ ! סיבות :\r(1) המחשב הראשי שעליו קיימים הנתונים לתוכנה כבוי. (2) "
               "הגישה דרך הרשת למחשב הראשי לא עובדת כראוי. (3) הנתיב של הקובץ השתנה,אז עליכם "
               "להכניס נתיב חדש לקובץ.\r\rהאם ברצונך לנסות שוב לגשת לקובץ מחדש ?"_s;
}

/// Lines end at the left edge. A letter that is clipped there colours the outermost pixels.
void MessageBoxWindowTest::wrappedLines_areNotClipped()
{
    QFETCH(const QString, text);
    QString asked;
    QImage shown;
    bool isHighEnough = false;
    const NextMessageBox next([&](QMessageBox& box) {
        QLabel& label = *textLabel(box);
        asked = box.text();
        shown = label.grab().toImage();
        isHighEnough = label.heightForWidth(label.width()) <= label.height();
        box.close();
    });
    runtime::MsgBox(text, runtime::refusalFlags);
    QVERIFY(next.hasCome());
    QCOMPARE(asked, text);
    QVERIFY(isHighEnough);
    const QRgb paper = shown.pixel(0, 0);
    for (int y = 0; y < shown.height(); ++y)
        QCOMPARE(shown.pixel(0, y), paper);
}

void MessageBoxWindowTest::longText_isNotClipped()
{
    const QString text = u"לא ניתן לסגור הזמנה בגלל שאין אף שורה בהזמנה זו!"_s;
    const NextMessageBox next([&](QMessageBox& box) {
        const QLabel* label = textLabel(box);
        const int needed = label->fontMetrics().horizontalAdvance(text);
        QVERIFY(label->width() >= needed ||
                label->height() >= label->heightForWidth(label->width()));
        QVERIFY(box.rect().contains(QRect(label->mapTo(&box, QPoint()), label->size())));
        box.close();
    });
    runtime::MsgBox(text, runtime::refusalFlags);
    QVERIFY(next.hasCome());
}

void MessageBoxWindowTest::box_isAboveTheActiveWindow()
{
    QWidget window;
    QVERIFY(testsupport::showActive(window));
    const NextMessageBox next([&window](QMessageBox& box) {
        QVERIFY(box.isModal());
        QCOMPARE(box.parentWidget(), &window);
        box.close();
    });
    runtime::MsgBox(u"?"_s);
    QVERIFY(next.hasCome());
    QVERIFY(window.findChildren<QMessageBox*>().isEmpty());
}

ZOMREL_QTEST_MAIN(MessageBoxWindowTest)
#include "message_box_window_test.moc"
