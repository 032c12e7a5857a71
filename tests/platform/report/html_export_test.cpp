#include "platform/report/export.h"

#include "platform/report/shaped_text.h"
#include "platform/report/small_device.h"
#include "platform/report/small_report.h"

#include "support/widgets.h"

#include <QBuffer>
#include <QRegularExpression>
#include <QTest>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

const Progress goOn = [](int, int) { return true; };

QString htmlOf(Document& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (writeHtml(document, buffer, goOn) != Outcome::Done)
        qFatal("the page could not be written");
    return QString::fromUtf8(buffer.data());
}

std::shared_ptr<MemoryRows> rowsOf(int count, const MemoryRows::MakeRow& makeRow)
{
    return std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, count, makeRow);
}

/// Returns the tag of the span that contains the text.
QString spanOf(const QString& html, const QString& text)
{
    const qsizetype end = html.indexOf(u'>' + text + u"</span>"_s);
    const qsizetype begin = html.lastIndexOf(u"<span"_s, end);
    return end < 0 ? u"no such text"_s : html.mid(begin, end - begin);
}

/// Returns the horizontal scale factor of the span's text.
double stretchOf(const QString& span)
{
    static const QRegularExpression form(u"transform:scaleX\\((0\\.\\d+)\\);"_s);
    const QRegularExpressionMatch match = form.match(span);
    return match.hasMatch() ? match.captured(1).toDouble() : 1;
}

} // namespace

class HtmlExportTest : public QObject
{
    Q_OBJECT

private slots:
    void html_isOneSelfContainedRightToLeftPage();
    void texts_haveTheirPrintedPositions();
    void texts_haveTheirDirection();
    void tooWideText_isCondensed();
    void tooLongText_endsWithAnEllipsis();
    void condensedText_leavesRoomForAnotherFont();
    void markupInTexts_isEscaped();
    void progress_isReportedPageByPage();
    void fullDisk_returnsFailed();
};

void HtmlExportTest::html_isOneSelfContainedRightToLeftPage()
{
    auto sections = makeSections(smallReport);
    QImage picture(4, 3, QImage::Format_RGB32);
    picture.fill(0xff336699);
    sections[0].Controls(u"Logo"_s).setPicture(picture);
    Document document(smallReport, std::move(sections), smallRows(4), smallPaper);
    const QString html = htmlOf(document);
    QVERIFY(html.contains(u"<html lang=\"he\" dir=\"rtl\">"_s));
    QVERIFY(html.contains(u"charset=\"utf-8\""_s));
    QCOMPARE(html.count(u"src=\"data:image/jpeg;base64,"_s), 1);
    QCOMPARE(html.count(u"src="_s), 1);
    QVERIFY(!html.contains(u"http"_s));
    QVERIFY(!html.contains(u"<link"_s));
}

void HtmlExportTest::texts_haveTheirPrintedPositions()
{
    const QString html = htmlOf(*smallDocument(smallRows(4)));
    QCOMPARE(html.count(u">כותרת</span></div>"_s), 1); // The page header occurs once.
    QCOMPARE(html.count(u">שם:</span></div>"_s), 4);
    qsizetype at = 0;
    for (int row = 1; row <= 4; ++row) {
        at = html.indexOf(u">שורה %1</span></div>"_s.arg(row), at);
        QVERIFY(at > 0);
        at = html.indexOf(u">%1</span></div>"_s.arg(row / 2.0), at);
        QVERIFY(at > 0);
    }
    QVERIFY(html.contains(u".NameField{left:50pt;top:4.5pt;width:150pt;height:15pt;"_s));
    // A text keeps 40 twips from the edge of a border; the CSS border takes 15 of them.
    QVERIFY(html.contains(u".SizeField{left:0pt;top:25pt;width:30pt;height:15pt;font-size:12pt;"
                          "justify-content:flex-end;text-align:right;transform-origin:right;"
                          "padding:0 1.25pt 0 1.25pt;border:.75pt solid;}"_s));
}

void HtmlExportTest::texts_haveTheirDirection()
{
    const QStringList names{u"חלון לבן"_s, u"White"_s, u"-5"_s};
    const QString html = htmlOf(*smallDocument(rowsOf(3, [&](int row) {
        return MemoryRows::Row{names[row], names[row]};
    })));
    // NameField is right-to-left, SizeField left-to-right; numbers are always left-to-right.
    for (const QString& element : {u"<div class=\"NameField\"><span dir=\"rtl\">חלון לבן</span>"_s,
                                   u"<div class=\"NameField\"><span dir=\"rtl\">White</span>"_s,
                                   u"<div class=\"NameField\"><span dir=\"ltr\">-5</span>"_s,
                                   u"<div class=\"SizeField\"><span dir=\"ltr\">-5</span>"_s})
        QVERIFY2(html.contains(element), qPrintable(element));
}

void HtmlExportTest::tooWideText_isCondensed()
{
    const double sizes[] = {1, 268.25, 806.0085};
    const QString html = htmlOf(*smallDocument(rowsOf(3, [&](int row) {
        return MemoryRows::Row{u"x"_s, sizes[row]};
    })));
    QCOMPARE(spanOf(html, u"1"_s), u"<span dir=\"ltr\""_s);
    const QString condensed = spanOf(html, u"268.25"_s);
    QVERIFY2(stretchOf(condensed) < 0.9, qPrintable(condensed));
    QVERIFY2(!condensed.contains(u"font-size"_s), qPrintable(condensed));
    const QString smaller = spanOf(html, u"806.0085"_s);
    QVERIFY2(stretchOf(smaller) <= 0.75, qPrintable(smaller));
    QVERIFY2(smaller.contains(u"font-size:0."_s), qPrintable(smaller));
}

void HtmlExportTest::tooLongText_endsWithAnEllipsis()
{
    const QString html = htmlOf(*smallDocument(rowsOf(1, [](int) {
        return MemoryRows::Row{u"x"_s, 1.0 / 3};
    })));
    QVERIFY(!html.contains(u"0.333333"_s));
    QVERIFY(html.contains(QRegularExpression(u">0\\.3+…</span>"_s)));
    QVERIFY(!html.contains(u"clip"_s));
}

void HtmlExportTest::condensedText_leavesRoomForAnotherFont()
{
    const QString html = htmlOf(*smallDocument(rowsOf(1, [](int) {
        return MemoryRows::Row{u"x"_s, 268.25};
    })));
    const double natural =
        textWidth(u"268.25"_s, false, twipFont(smallReport.fontFamily.toString(), 12, false));
    const double drawn = natural * stretchOf(spanOf(html, u"268.25"_s));
    // The field is 600 wide, reduced by 40 on each side.
    QVERIFY(drawn <= 0.9 * 520 && drawn > 0.85 * 520);
}

void HtmlExportTest::markupInTexts_isEscaped()
{
    const QString html = htmlOf(*smallDocument(rowsOf(1, [](int) {
        return MemoryRows::Row{u"<b>&\"%1 %2"_s, 1};
    })));
    QVERIFY(html.contains(u"&lt;b&gt;&amp;&quot;%1 %2</"_s));
}

void HtmlExportTest::progress_isReportedPageByPage()
{
    const auto document = smallDocument(smallRows(7));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    std::vector<std::pair<int, int>> told;
    writeHtml(*document, buffer, [&](int done, int total) {
        told.emplace_back(done, total);
        return true;
    });
    QCOMPARE(told, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}, {3, 3}}));
}

void HtmlExportTest::fullDisk_returnsFailed()
{
    for (const qint64 room : {qint64(0), qint64(100), qint64(3000)}) {
        const auto document = smallDocument(smallRows(300));
        SmallDevice device(room);
        QCOMPARE(writeHtml(*document, device, goOn), Outcome::Failed);
    }
}

ZOMREL_QTEST_MAIN(HtmlExportTest)
#include "html_export_test.moc"
