#include "platform/report/font_substitutes.h"
#include "platform/report/pdf_words.h"
#include "shop/cut_list.h"
#include "shop/documents.h"
#include "shop/paper/flow.h"
#include "shop/paper/papers.h"
#include "shop/paper/sheet_ink.h"
#include "shop/paper/words.h"
#include "shop/shop_lines.h"
#include "support/widgets.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <random>

using namespace shop;
using namespace shop::paper;
using namespace Qt::StringLiterals;
using testsupport::PdfWords;

namespace {

ShopPack packOf(const std::vector<OrderLine>& lines, const planning::Limits& limits = {})
{
    ShopPack pack{shop::piecesOf(lines, {}), {}, {{7, QDate(2026, 3, 1), u"משפחת כהן"_s}}};
    pack.groups = planGroups(pack.pieces.pieces, {}, limits);
    return pack;
}

QStringList textsOf(const SheetDocument& document)
{
    QStringList texts;
    for (const Sheet& sheet : document.sheets()) {
        for (const TextItem& item : sheet.texts)
            texts.append(item.text);
    }
    return texts;
}

const PaperKind& kindTitled(const QString& title)
{
    return *std::ranges::find(paperKinds(), title, &PaperKind::title);
}

/// Returns lines of windows with sizes in tenths. The standard specifies the engine's numbers, so
/// they are the same everywhere.
std::vector<OrderLine> randomLines(int count)
{
    std::mt19937 engine(20261122);
    const auto size = [&] { return 30 + static_cast<double>(engine() % 2000) / 10; };
    std::vector<OrderLine> lines;
    for (int i = 1; i <= count; ++i) {
        OrderLine line = shoptest::window();
        line.line = i;
        for (PartOfLine* part : {&line.frame, &line.sash, &line.glass, &line.mesh}) {
            part->width = size();
            part->height = size();
        }
        lines.push_back(line);
    }
    return lines;
}

/// Adds each figure of the document that differs from the PDF to the result.
QStringList wrongFigures(SheetDocument& document)
{
    static const QRegularExpression figure(u"^[0-9.]+$"_s);
    const PdfWords pdf(document);
    QStringList wrong;
    for (std::size_t page = 0; page < document.sheets().size(); ++page) {
        for (const TextItem& item : document.sheets()[page].texts) {
            if (!figure.match(item.text).hasMatch())
                continue;
            if (const QString found = pdf.at(static_cast<int>(page), item.place);
                found != item.text)
                wrong.append(u"page %1: %2 instead of %3"_s.arg(page + 1).arg(found, item.text));
        }
    }
    return wrong;
}

/// Returns true if the document contains the cells one after the other.
bool hasRow(const QStringList& texts, const QStringList& cells)
{
    return std::search(texts.begin(), texts.end(), cells.begin(), cells.end()) != texts.end();
}

/// Prints the document's pages at a resolution and returns the texts of all codes on them.
QStringList decoded(SheetDocument& document, int dpi)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"labels.pdf"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(pdfOf(document)) < 0)
        qFatal("the PDF could not be written");
    file.close();
    if (QProcess::execute(u"pdftoppm"_s, {u"-mono"_s, u"-r"_s, QString::number(dpi),
                                          file.fileName(), folder.filePath(u"page"_s)}) != 0)
        qFatal("pdftoppm, of the package poppler-utils, failed");
    QStringList pages;
    for (const QString& each : QDir(folder.path()).entryList({u"page*"_s}))
        pages.append(folder.filePath(each));
    QProcess reader;
    reader.start(u"zbarimg"_s, QStringList{u"--raw"_s, u"--quiet"_s, u"--nodbus"_s} + pages);
    if (!reader.waitForFinished(120000))
        qFatal("zbarimg, of the package zbar-tools, failed");
    return QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

/// Returns a text of 50 characters that begins with the word.
QString longText(const QString& word)
{
    return (word + u" מחוסמת בידודית עם ציפוי סלקטיבי נמוך פליטה ומסגרת"_s).first(50);
}

/// Returns a window whose kinds and colours have 50 characters.
OrderLine longTexts()
{
    OrderLine line = shoptest::window();
    line.frame.kind = longText(u"משקוף"_s);
    line.sash.kind = longText(u"כנף"_s);
    line.glass.kind = longText(u"זכוכית"_s);
    line.mesh.kind = longText(u"רשת"_s);
    for (PartOfLine* part : {&line.frame, &line.sash, &line.glass, &line.mesh})
        part->colour = longText(u"צבע"_s);
    return line;
}

/// Returns the texts that are not whole on the paper.
QStringList shortenedTexts(const SheetDocument& document)
{
    QStringList cut;
    for (const Sheet& sheet : document.sheets()) {
        for (const TextItem& item : sheet.texts) {
            const double width = item.place.width();
            const report::ShapedText shaped = report::shapedText(
                {width, double(item.place.height()), {0, width}, item.align, item.rightToLeft},
                item.text, report::twipFont(paperFamily(), item.points, item.bold));
            if (shaped.fit.isCut)
                cut.append(item.text);
        }
    }
    return cut;
}

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

} // namespace

class ShopPaperTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { report::substituteFonts(); }

    void everyDocument_beginsWithOrderDateAndCustomer()
    {
        const ShopPack pack = packOf({shoptest::window()});
        for (const PaperKind& each : paperKinds()) {
            const QStringList texts = textsOf(*paperDocument(each, pack));
            QCOMPARE(texts.value(0), each.title);
            QCOMPARE(texts.value(1), u"הזמנה: 7"_s);
            QCOMPARE(texts.value(2), u"תאריך: 01/03/2026"_s);
            QCOMPARE(texts.value(3), u"לקוח: משפחת כהן"_s);
            QCOMPARE(texts.last(), u"דף 1 מתוך 1"_s);
        }
    }

    void faults_areNamedOnEveryDocumentAndOnTheLabels()
    {
        OrderLine line = shoptest::window();
        line.frame.width.reset();
        line.sash.height = 700;
        const ShopPack pack = packOf({line});
        const QStringList expected{
            u"הזמנה 7, שורה 1, משקוף, רוחב: חסר ערך בשדה Mashkof_W"_s,
            u"הזמנה 7, שורה 1, כנף, גובה: האורך 700 בשדה Kanaf_H גדול מהאורך השימושי של מוט, 598"_s};
        for (const PaperKind& each : paperKinds())
            QVERIFY(hasRow(textsOf(*paperDocument(each, pack)), expected));
        QVERIFY(hasRow(textsOf(*labelDocument(pack, LabelPaper::A4)), expected));
    }

    void faults_haveALabelEachOnALabelPrinter()
    {
        OrderLine line = shoptest::window();
        line.frame.width.reset();
        line.sash.height = 700;
        const auto document = labelDocument(packOf({line}), LabelPaper::Printer203);
        // Frame: 2 heights. Sash: 4 widths. Mesh: 2 panels with 2 widths and 2 heights each.
        QCOMPARE(document->pageCount(), 2 + 2 + 4 + 8);
        const QStringList texts = textsOf(*document);
        QCOMPARE(
            texts.first(4),
            (QStringList{
                u"לא ניתן לחתוך"_s, u"הזמנה 7, שורה 1, משקוף, רוחב: חסר ערך בשדה Mashkof_W"_s,
                u"לא ניתן לחתוך"_s,
                u"הזמנה 7, שורה 1, כנף, גובה: האורך 700 בשדה Kanaf_H גדול מהאורך השימושי של מוט, 598"_s}));
        QCOMPARE(texts.value(4), u"7-1-frame-1"_s);
        QVERIFY(document->sheets()[1].codes.empty());
        QCOMPARE(document->sheets()[2].codes.size(), std::size_t(1));
        QCOMPARE(shortenedTexts(*document), QStringList());
    }

    void longTexts_areWholeOnEveryDocument()
    {
        const ShopPack pack = packOf({longTexts()});
        for (const PaperKind& each : paperKinds()) {
            const auto document = paperDocument(each, pack);
            QCOMPARE(shortenedTexts(*document), QStringList());
        }
        const auto glass = paperDocument(kindTitled(u"רשימת זכוכית"_s), pack);
        QVERIFY(textsOf(*glass).contains(longText(u"זכוכית"_s).trimmed()));
        const QStringList printed = PdfWords(*glass).words(0);
        for (const QString& text : {longText(u"זכוכית"_s), longText(u"צבע"_s)}) {
            for (const QString& word : text.split(u' ', Qt::SkipEmptyParts))
                QVERIFY2(printed.contains(word), qPrintable(word));
        }
        for (const LabelPaper paper :
             {LabelPaper::A4, LabelPaper::Printer203, LabelPaper::Printer300})
            QCOMPARE(shortenedTexts(*labelDocument(pack, paper)), QStringList());
    }

    void veryLongWord_isBroken()
    {
        const QString word(50, u'ש');
        const QStringList lines = brokenText(word, 11, 1800);
        QVERIFY(lines.size() > 1);
        QCOMPARE(lines.join(QString()), word);
        const QString figure = u"119.39999999999999"_s;
        QCOMPARE(brokenText(figure, 11, 1080), QStringList{figure});
    }

    void formula_isNotBroken()
    {
        const QString formula = u"\u2066(120 − 2.8) ÷ 2 = 58.6\u2069"_s;
        QVERIFY(brokenText(u"לפי הסדרה של היום: "_s + formula, 11, 2500).contains(formula));
    }

    void partWithoutKind_isListedAsWithoutKind()
    {
        OrderLine line = shoptest::window();
        line.frame.kind.clear();
        const QStringList texts =
            textsOf(*paperDocument(kindTitled(u"רשימת חיתוך"_s), packOf({line})));
        QVERIFY(texts.contains(u"משקוף, ללא סוג, לבן"_s));
    }

    void lengthsCloserThanThreeTenths_areMarkedInTheCuttingList()
    {
        OrderLine line = shoptest::window();
        line.frame.width = 100;
        line.frame.height = 100.25;
        const QStringList texts =
            textsOf(*paperDocument(kindTitled(u"רשימת חיתוך"_s), packOf({line})));
        QVERIFY(hasRow(texts, {u"100.25"_s, u"2"_s, u"200.5"_s, u"שים לב: דומה"_s}));
        QVERIFY(hasRow(texts, {u"100"_s, u"2"_s, u"200"_s, u"שים לב: דומה"_s}));
        QVERIFY(hasRow(texts, {u"93.5"_s, u"4"_s, u"374"_s, QString()}));
    }

    void explanations_areRowsOfTheirLine()
    {
        ShopPack pack = packOf({shoptest::window()});
        pack.explanations = {{7,
                              1,
                              u"7000"_s,
                              120,
                              100,
                              {{Part::Frame, Side::Width, 119.4, u"120 − 0.6 = 119.4"_s},
                               {Part::Frame, Side::Height, 99,
                                u"לפי הסדרה של היום: 100 − 0.6 = 99.4\nהסדרה שונתה"_s}}},
                             {7, 2, u"7000"_s, 90, 80, {}}};
        const QStringList texts = textsOf(*paperDocument(kindTitled(u"איך חושב"_s), pack));
        QVERIFY(texts.contains(u"הזמנה 7, שורה 1: 7000, פתח ברוחב 120 ובגובה 100"_s));
        QVERIFY(
            hasRow(texts, {u"משקוף"_s, u"רוחב"_s, u"119.4"_s, QString(), u"120 − 0.6 = 119.4"_s}));
        QVERIFY(texts.join(u' ').contains(u"לפי הסדרה של היום: 100 − 0.6 = 99.4 הסדרה שונתה"_s));
        QVERIFY(hasRow(texts, {u"הזמנה 7, שורה 2: 7000, פתח ברוחב 90 ובגובה 80"_s,
                               u"אין הסבר למידות השורה"_s}));
    }

    // (160 - 2.8 - 2.8) / 2 is stored as 77.19999999999999.
    void noiseOfAStoredLength_isNotPrinted()
    {
        OrderLine line = shoptest::window();
        line.sash.width = line.glass.width = 77.19999999999999;
        const ShopPack pack = packOf({line});
        for (const QString& title : {u"רשימת חיתוך"_s, u"תוכנית מוטות"_s, u"רשימת זכוכית"_s}) {
            const QString texts = textsOf(*paperDocument(kindTitled(title), pack)).join(u'\n');
            QVERIFY2(texts.contains(u"77.2"_s), qPrintable(title));
            QVERIFY2(!texts.contains(u"77.1"_s), qPrintable(title));
        }
        QVERIFY(textsOf(*labelDocument(pack, LabelPaper::A4)).contains(u"77.2"_s));
        QVERIFY(cutListCsv(pack).contains(",77.19999999999999,"));
    }

    void barPicture_isToScale()
    {
        OrderLine line = shoptest::window();
        line.frame = {200, 100, 1, u"משקוף"_s, u"לבן"_s};
        line.sash.kind = line.mesh.kind = u"ללא"_s;
        const auto document = paperDocument(kindTitled(u"תוכנית מוטות"_s), packOf({line}));
        std::vector<int> widths;
        for (const BoxItem& box : document->sheets().front().boxes) {
            if (box.fill == Fill::Light)
                widths.push_back(box.place.width());
        }
        std::ranges::sort(widths);
        QCOMPARE(widths.size(), std::size_t(2));
        const double unit = (Flow::width - 700) / 600.0; // Twips for one unit of the bar of 600.
        QVERIFY(std::abs(widths[0] - 100 * unit) <= 1);
        QVERIFY(std::abs(widths[1] - 200 * unit) <= 1);
    }

    void cutsBelowABar_areReadFromRightToLeft()
    {
        OrderLine window = shoptest::window();
        window.frame = {200, 100, 1, u"משקוף"_s, u"לבן"_s};
        window.sash.kind = window.mesh.kind = u"ללא"_s;
        const auto document = paperDocument(kindTitled(u"תוכנית מוטות"_s), packOf({window}));
        const std::vector<TextItem>& texts = document->sheets().front().texts;
        const auto list = std::ranges::find_if(
            texts, [](const TextItem& each) { return each.text.contains(u"1×200"_s); });
        QVERIFY(list != texts.end());
        // The words as they stand on the paper, from left to right. They may have several fonts.
        QString printed = PdfWords(*document).at(0, list->place.adjusted(0, -200, 0, 200));
        printed.removeIf([](QChar c) { return c == u' ' || c.category() == QChar::Other_Format; });
        QCOMPARE(printed, u"(7-1)1×100(7-1)1×200"_s);
    }

    void computedNumber_hasNoNoise()
    {
        QCOMPARE(computedNumber(0.1 + 0.2), u"0.3"_s);
        QCOMPARE(computedNumber(-0.1 - 0.2), u"-0.3"_s);
        QCOMPARE(computedNumber(1234.123456789), u"1234.123456789"_s);
    }

    void proof_isStatedInWords()
    {
        GroupPlan plan;
        plan.bars = {{3, 0, {}}};
        plan.bound = 3;
        plan.proved = true;
        QCOMPARE(proofWords(plan), u"הוכח: אין תוכנית עם פחות מוטות"_s);
        plan.bound = 2;
        plan.proved = false;
        QCOMPARE(proofWords(plan), u"לכל היותר מוט אחד מעל הגבול התחתון"_s);
    }

    void figuresOf2000RandomLines_areTheSameInPdfAndData()
    {
        // The plan is of no interest here, so the quickest one is made.
        const ShopPack pack =
            packOf(randomLines(2000), {nullptr, std::chrono::steady_clock::now()});
        const auto cuts = paperDocument(kindTitled(u"רשימת חיתוך"_s), pack);
        const QStringList cutTexts = textsOf(*cuts);
        for (const CutListRow& each : cutList(pack.groups))
            QVERIFY(hasRow(cutTexts, {computedNumber(each.length), QString::number(each.count),
                                      computedNumber(each.total)}));
        const auto glass = paperDocument(kindTitled(u"רשימת זכוכית"_s), pack);
        const QStringList glassTexts = textsOf(*glass);
        for (const PaneRow& each : paneList(pack.pieces.glass))
            QVERIFY(hasRow(glassTexts, {computedNumber(each.width), computedNumber(each.height),
                                        QString::number(each.count), each.kind, each.colour,
                                        computedNumber(each.area)}));
        QCOMPARE(wrongFigures(*cuts), QStringList());
        QCOMPARE(wrongFigures(*glass), QStringList());
    }

    void labels_areReadByAReader_data()
    {
        QTest::addColumn<LabelPaper>("paper");
        QTest::addColumn<int>("dpi");
        QTest::addColumn<int>("lines");
        QTest::newRow("A4 at 203 dpi") << LabelPaper::A4 << 203 << 10;
        QTest::newRow("label printer, 203 dpi") << LabelPaper::Printer203 << 203 << 2;
        QTest::newRow("label printer, 300 dpi") << LabelPaper::Printer300 << 300 << 2;
    }

    void labelsWithLongTexts_areReadByAReader_data()
    {
        QTest::addColumn<LabelPaper>("paper");
        QTest::newRow("A4") << LabelPaper::A4;
        QTest::newRow("label printer") << LabelPaper::Printer203;
    }
    void labelsWithLongTexts_areReadByAReader()
    {
        QFETCH(LabelPaper, paper);
        OrderLine line = longTexts();
        line.order = 123456;
        line.line = 250;
        ShopPack pack = packOf({line});
        pack.orders = {{123456, QDate(2026, 3, 1), longText(u"לקוח"_s)}};
        const QStringList expected = labelCodes(pack.pieces.pieces);
        QCOMPARE(expected.first(), u"123456-250-frame-1"_s);
        QCOMPARE(sorted(decoded(*labelDocument(pack, paper), 203)), sorted(expected));
    }

    void codes_haveAQuietZone_data() { labelsWithLongTexts_areReadByAReader_data(); }
    void codes_haveAQuietZone()
    {
        QFETCH(LabelPaper, paper);
        const auto document = labelDocument(packOf({longTexts()}), paper);
        for (const Sheet& sheet : document->sheets()) {
            for (const CodeItem& code : sheet.codes) {
                const double zone = 4 * code.place.width() / code.picture.width();
                const QRectF quiet = code.place.adjusted(-zone, -zone, zone, zone);
                QVERIFY(quiet.left() >= 0 && quiet.top() >= 0);
                for (const TextItem& text : sheet.texts)
                    QVERIFY2(!quiet.intersects(text.place), qPrintable(text.text));
                for (const CodeItem& other : sheet.codes)
                    QVERIFY(&other == &code || !quiet.intersects(other.place));
            }
        }
    }
    void labels_areReadByAReader()
    {
        QFETCH(LabelPaper, paper);
        QFETCH(int, dpi);
        QFETCH(int, lines);
        const ShopPack pack = packOf(randomLines(lines));
        const auto document = labelDocument(pack, paper);
        const QStringList expected = labelCodes(pack.pieces.pieces);
        QCOMPARE(expected.size(),
                 qsizetype(lines * 20)); // 4 of the frame, 8 of sash and mesh each.
        QCOMPARE(expected.first(), u"7-1-frame-1"_s);
        QCOMPARE(sorted(decoded(*document, dpi)), sorted(expected));
    }

    void remakeSlip_hasOnePartOfOneLine()
    {
        const ShopPack pack = packOf(randomLines(3));
        ShopPack remake = remakePack(pack, 7, 2, Part::Sash);
        QCOMPARE(remake.pieces.pieces.size(), std::size_t(8));
        remake.groups = planGroups(remake.pieces.pieces, {});
        QCOMPARE(remake.groups.size(), std::size_t(1));
        const auto slip = remakeSlip(remake);
        const QStringList texts = textsOf(*slip);
        QCOMPARE(texts.count(u"קריאה חוזרת"_s), 2);
        QCOMPARE(texts.first(), u"רשימת חיתוך"_s);
        QVERIFY(texts.indexOf(u"תוכנית מוטות"_s) < texts.indexOf(u"7-2-sash-1"_s));
        QCOMPARE(slip->pageCount(), 3); // Cutting list, plan, labels.
        QVERIFY(texts.contains(u"דף 2 מתוך 2"_s));
        QVERIFY(texts.contains(u"7-2-sash-8"_s));
        QVERIFY(!texts.contains(u"7-2-sash-9"_s));
        QVERIFY(!texts.contains(u"7-2-frame-1"_s));
    }

    void title_namesFirstAndLastOrder()
    {
        ShopPack pack = packOf({shoptest::window()});
        QCOMPARE(allPapers(pack)->title(), u"הזמנה 7"_s);
        pack.orders.push_back({12, QDate(2026, 3, 2), u"לוי"_s});
        QCOMPARE(allPapers(pack)->title(), u"הזמנות 7-12"_s);
        QCOMPARE(labelDocument(pack, LabelPaper::A4)->title(), u"מדבקות 7-12"_s);
    }
};

ZOMREL_QTEST_MAIN(ShopPaperTest)
#include "paper_test.moc"
