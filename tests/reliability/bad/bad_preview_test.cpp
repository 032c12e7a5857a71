#include "platform/report/preview_fixture.h"
#include "platform/runtime/message_box.h"
#include "reliability/bad/typed_texts.h"
#include "reliability/figures.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

#include <algorithm>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

/// Enters unusual texts into the boxes of the preview, and file names that no disk accepts. The
/// preview stays on its page or goes to the page that a number names. A file is complete or does
/// not exist.
class BadPreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void oddPageNumber_isFollowedOrIgnored_data() { texts(); }
    void oddPageNumber_isFollowedOrIgnored();
    void oddZoom_isFollowedOrIgnored_data() { texts(); }
    void oddZoom_isFollowedOrIgnored();
    void oddSearchText_isFoundOrReported_data();
    void oddSearchText_isFoundOrReported();
    void oddFileName_givesAWholeFileOrNone_data();
    void oddFileName_givesAWholeFileOrNone();
    void cleanup() { ++tried_; }
    void cleanupTestCase();

private:
    static void texts();

    int tried_ = 0;
};

namespace {

constexpr int rows = 30;
constexpr int pages = 10; // Each page has three blocks.
const QString longest(32767, u'9');

} // namespace

/// Lists the texts with the whole number that a box reads from them. Blanks around the number and
/// one sign are allowed. A zero byte ends the text.
void BadPreviewTest::texts()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isNumber");
    const QHash<QString, int> numbers{{u"plus"_s, 5},
                                      {u"minus"_s, -5},
                                      {u"blanks around"_s, 7},
                                      {u"line end"_s, 5},
                                      {u"non-breaking blank"_s, 5},
                                      {u"thin blank"_s, 5},
                                      {u"zero byte"_s, 5}};
    for (const TypedText& each : typedTexts()) {
        const QString name = QString::fromLatin1(each.name);
        QTest::newRow(each.name) << each.text << numbers.value(name) << numbers.contains(name);
    }
    QTest::newRow("zero") << u"0"_s << 0 << true;
    QTest::newRow("largest") << u"2147483647"_s << 2147483647 << true;
    QTest::newRow("smallest") << u"-2147483648"_s << -2147483647 - 1 << true;
    QTest::newRow("beyond") << u"2147483648"_s << 0 << false;
    QTest::newRow("longest") << longest << 0 << false;
}

void BadPreviewTest::oddPageNumber_isFollowedOrIgnored()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    QFETCH(bool, isNumber);
    const PreviewFixture preview(smallRows(rows));
    preview.pages().setCurrentPage(4);
    auto* box = child<QLineEdit>(preview.window(), u"EditPageNumber"_s);
    box->setFocus();
    box->setText(text);
    QTest::keyClick(box, Qt::Key_Return);
    const int expected = isNumber ? std::clamp(number, 1, pages) : 4;
    QCOMPARE(preview.pages().currentPage(), expected);
    QTRY_COMPARE(box->text(), QString::number(expected));
    QVERIFY(!preview.end.exitStatus() && preview.boxes.shown().empty());
}

void BadPreviewTest::oddZoom_isFollowedOrIgnored()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    QFETCH(bool, isNumber);
    const PreviewFixture preview(smallRows(rows));
    preview.pages().setZoomFactor(0.5);
    auto* combo = child<QComboBox>(preview.window(), u"ComboZoom"_s);
    combo->lineEdit()->setText(text);
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    const double expected = isNumber ? std::clamp(number / 100.0, PreviewPages::smallestZoom,
                                                  PreviewPages::greatestZoom)
                                     : 0.5;
    QCOMPARE(preview.pages().zoomFactor(), expected);
    QCOMPARE(combo->currentText(), u"%1%"_s.arg(qRound(expected * 100)));
    QVERIFY(!preview.end.exitStatus() && preview.boxes.shown().empty());
}

void BadPreviewTest::oddSearchText_isFoundOrReported_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    // The rows are "שורה 1" to "שורה 30", each with half its number. "2.5" is half of the fifth
    // row, on the second page; the half of the first row contains a point.
    const QHash<QString, QString> found{
        {u"empty"_s, QString()}, {u"point"_s, u" דף 2 "_s}, {u"point alone"_s, u" דף 1 "_s}};
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text
                                 << found.value(QString::fromLatin1(each.name), u" לא נמצא "_s);
    QTest::newRow("longest") << longest << u" לא נמצא "_s;
}

void BadPreviewTest::oddSearchText_isFoundOrReported()
{
    QFETCH(QString, text);
    QFETCH(QString, result);
    const PreviewFixture preview(smallRows(rows));
    preview.press(Qt::Key_F, Qt::ControlModifier);
    auto* box = child<QLineEdit>(preview.window(), u"EditFind"_s);
    setWhole(*box, text);
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(child<QLabel>(preview.window(), u"LabelFindResult"_s)->text(), result);
    QCOMPARE(preview.pages().highlight().has_value(), result.startsWith(u" דף"_s));
    QVERIFY(!preview.end.exitStatus() && preview.boxes.shown().empty());
}

void BadPreviewTest::oddFileName_givesAWholeFileOrNone_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isTaken");
    const struct
    {
        const char* tag;
        QString name;
        bool isTaken;
    } names[] = {
        {"blanks", u" a b .x"_s, true},
        {"Hebrew", u"הזמנה 17.pdf"_s, true},
        {"marks of direction", u"\u202eabc\u2066.txt"_s, true},
        {"quotes and signs", u"'\"<>|*?;&$(x)`.html"_s, true},
        {"line end", u"a\nb"_s, true},
        {"leading hyphen", u"-rf"_s, true},
        {"points", u"..."_s, true},
        {"this folder", u"."_s, false},
        {"a folder", u"folder"_s, false},
        {"a folder that is not there", u"none/a.pdf"_s, false},
        {"below a file", u"file/a.pdf"_s, false},
        {"too long", QString(300, u'n'), false},
        {"too long a path", u"a/"_s.repeated(3000) + u'b', false},
    };
    for (const auto& each : names) {
        for (const QString& action :
             {u"ActionExportPdf"_s, u"ActionExportHtml"_s, u"ActionExportText"_s})
            QTest::addRow("%s, %s", each.tag, qPrintable(action))
                << action << each.name << each.isTaken;
    }
}

void BadPreviewTest::oddFileName_givesAWholeFileOrNone()
{
    QFETCH(QString, action);
    QFETCH(QString, name);
    QFETCH(bool, isTaken);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"folder"_s));
    QFile file(folder.filePath(u"file"_s));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("kept") == 4);
    file.close();
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const QStringList before = QDir(folder.path()).entryList(all);
    PreviewFixture preview;
    preview.chosenFile = folder.filePath(name);
    if (!isTaken)
        preview.boxes.answer(runtime::vbOK);
    preview.action(action).trigger();
    QVERIFY(!preview.end.exitStatus());
    if (isTaken) {
        QVERIFY(preview.boxes.shown().empty());
        QVERIFY(QFileInfo(preview.chosenFile).size() > 0);
        QCOMPARE(QDir(folder.path()).entryList(all).size(), before.size() + 1);
        return;
    }
    QCOMPARE(preview.boxes.shown().size(), std::size_t{1});
    QCOMPARE(preview.boxes.shown().front().text,
             u"לא ניתן לכתוב את הקובץ:\n\u2066%1\u2069"_s.arg(preview.chosenFile));
    QCOMPARE(QDir(folder.path()).entryList(all), before);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "kept");
}

void BadPreviewTest::cleanupTestCase()
{
    reliability::writeFigures(
        u"bad_preview"_s, {{u"texts and file names in the preview"_s, QString::number(tried_)}});
}

ZOMREL_QTEST_MAIN(BadPreviewTest)
#include "bad_preview_test.moc"
