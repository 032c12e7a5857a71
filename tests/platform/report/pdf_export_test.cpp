#include "platform/report/export.h"

#include "platform/report/pdf_words.h"
#include "platform/report/shaped_text.h"
#include "platform/report/small_report.h"

#include "support/widgets.h"

#include <QBuffer>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

const Progress goOn = [](int, int) { return true; };

/// A device that accepts a limited number of bytes.
class FullDevice : public QIODevice
{
public:
    explicit FullDevice(qint64 room) : room_(room) { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override
    {
        room_ -= size;
        return room_ >= 0 ? size : -1;
    }

private:
    qint64 room_;
};

/// Returns the text of a PDF as copied by a reader, without the direction marks that the reader
/// adds.
QString plainText(const QString& path)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {path, u"-"_s});
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        qFatal("pdftotext, of the package poppler-utils, cannot read %s", qUtf8Printable(path));
    QString text = QString::fromUtf8(reader.readAllStandardOutput());
    return text.removeIf([](QChar c) { return c.category() == QChar::Other_Format; });
}

} // namespace

class PdfExportTest : public QObject
{
    Q_OBJECT

private slots:
    void pdf_hasThePaperSizeAndAllPages();
    void requestedPages_areWritten();
    void texts_haveTheirPlaceAndSize();
    void mixedTexts_keepTheirReadingOrder();
    void brackets_keepTheirReadingOrder();
    void bracketsInALeftToRightCell_stayAtTheirWord();
    void tooWideText_isCondensed();
    void picture_isEmbeddedOnce();
    void fullDisk_returnsFailed();
    void cancelledExport_leavesNoFile();
    void image_isDrawnLikePaper();
};

void PdfExportTest::pdf_hasThePaperSizeAndAllPages()
{
    const auto document = smallDocument(smallRows(7));
    const PdfWords pdf(*document);
    QCOMPARE(pdf.pageCount(), 3);
    QVERIFY(qAbs(pdf.paper().width() - 5300) <= 20);
    QVERIFY(qAbs(pdf.paper().height() - 5400) <= 20);
    QCOMPARE(pdf.at(2, {100, 4600, 500, 300}), u"3"_s);
    QCOMPARE(pdf.at(2, {700, 4600, 500, 300}), u"3"_s);
    QCOMPARE(pdf.at(2, {1100, 1690, 3000, 300}), u"שורה 7"_s);
}

void PdfExportTest::requestedPages_areWritten()
{
    const auto document = smallDocument(smallRows(7));
    const PdfWords pdf(*document, {2, 0});
    QCOMPARE(pdf.pageCount(), 2);
    QCOMPARE(pdf.at(0, {100, 4600, 500, 300}), u"3"_s);
    QCOMPARE(pdf.at(1, {100, 4600, 500, 300}), u"1"_s);
}

void PdfExportTest::texts_haveTheirPlaceAndSize()
{
    const auto document = smallDocument(smallRows(1));
    const PdfWords pdf(*document);
    const QRectF title = pdf.placeOf(0, u"כותרת"_s);
    QVERIFY(!title.isEmpty());
    // The title is right-aligned in 3000..5000 and the margins are 100 and 1000. Its line of 12
    // points is 252 twips high and vertically centred in 300.
    QVERIFY2(qAbs(title.right() - 5100) < 15, qPrintable(QString::number(title.right())));
    QVERIFY2(qAbs(title.top() - 1024) < 15, qPrintable(QString::number(title.top())));
    QVERIFY2(qAbs(title.height() - 240 * PdfWords::lineHeight()) < 5,
             qPrintable(QString::number(title.height())));
    const QRectF number = pdf.placeOf(0, u"17"_s); // The number is centred in 0..1000.
    QVERIFY2(qAbs(number.center().x() - 600) < 15,
             qPrintable(QString::number(number.center().x())));
    QVERIFY2(qAbs(number.top() - 1324) < 15, qPrintable(QString::number(number.top())));
}

void PdfExportTest::mixedTexts_keepTheirReadingOrder()
{
    const auto rows =
        std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 2, [](int row) {
            return row == 0 ? MemoryRows::Row{u"רשת 120 PVC -5"_s, -3.25}
                            : MemoryRows::Row{u"-7.5"_s, 12345678901.25};
        });
    const PdfWords pdf(*smallDocument(rows));
    // From right to left: the word, its number, the Latin word, the signed number.
    const double hebrew = pdf.placeOf(0, u"רשת"_s).left();
    const double number = pdf.placeOf(0, u"120"_s).left();
    const double latin = pdf.placeOf(0, u"PVC"_s).left();
    const double negative = pdf.placeOf(0, u"-5"_s).left();
    QVERIFY(negative > 0);
    QVERIFY(hebrew > number && number > latin);
    QVERIFY(!pdf.placeOf(0, u"-3.25"_s).isEmpty());
    QVERIFY(!pdf.placeOf(0, u"-7.5"_s).isEmpty());
    const QString cut = pdf.at(0, {100, 1600 + 1000 + 500, 600, 300});
    QVERIFY2(cut.size() >= 4 && cut.endsWith(u'…') &&
                 u"12345678901.25"_s.startsWith(cut.chopped(1)),
             qPrintable(cut));
}

void PdfExportTest::brackets_keepTheirReadingOrder()
{
    const QStringList names{u"קליל 7000 (חדש)"_s,    u"(א) 12.5"_s,         u"שלום (7000) חדש"_s,
                            u"PVC 2000 (לבן) רשת"_s, u"רשת [PVC 12] לבן"_s, u"PVC (new)"_s};
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s},
                                                   int(names.size()), [&](int row) {
                                                       return MemoryRows::Row{names[row], row};
                                                   });
    const auto document = smallDocument(rows);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"names.pdf"_s);
    QCOMPARE(writeFile(path,
                       [&](QIODevice& device) {
                           return writePdf(*document, allPages(*document), device, goOn);
                       }),
             Outcome::Done);
    const QString text = plainText(path);
    for (const QString& name : names)
        QVERIFY2(text.contains(name), qPrintable(name + u" in "_s + text));
}

void PdfExportTest::bracketsInALeftToRightCell_stayAtTheirWord()
{
    static constexpr ControlDesign cells[] = {
        {Kind::Field, u"NameField", u"Name", 1000, 90, 3000, 300, 12, Align::Right}};
    static constexpr SectionDesign sections[] = {{u"Row", Role::Detail, 1000, cells}};
    ReportDesign design = smallReport;
    design.sections = sections;
    const QList<QStringList> names{{u"(עץ)"_s, u"7000"_s},  {u"(עץ)"_s},
                                   {u"[לבן]"_s, u"12.5"_s}, {u"PVC"_s, u"(לבן מט)"_s},
                                   {u"(7000)"_s, u"PVC"_s}, {u"לבן"_s, u"(מט)"_s, u"7000"_s}};
    for (const QStringList& name : names) {
        const auto rows = std::make_shared<MemoryRows>(
            QStringList{u"Name"_s}, 1, [&](int) { return MemoryRows::Row{name.join(u' ')}; });
        Document document(design, makeSections(design), rows, smallPaper);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"cell.pdf"_s);
        writeFile(path, [&](QIODevice& device) {
            return writePdf(document, allPages(document), device, goOn);
        });
        const QString text = plainText(path);
        for (const QString& word : name)
            QVERIFY2(text.contains(word), qPrintable(word + u" in "_s + text));
    }
}

void PdfExportTest::tooWideText_isCondensed()
{
    const QStringList texts{u"12.5"_s, u"806.08"_s, u"806.0085"_s};
    const auto rows =
        std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 3, [&](int row) {
            return MemoryRows::Row{u"x"_s, texts[row].toDouble()};
        });
    const PdfWords pdf(*smallDocument(rows));
    // The box is 600 wide; 40 are kept free on each side.
    const bool condensed[] = {false, true, true};
    const bool smaller[] = {false, false, true};
    const QFont font = twipFont(smallReport.fontFamily.toString(), 12, false);
    for (int i = 0; i < 3; ++i) {
        const double natural = textWidth(texts[i], false, font);
        const Fit fit = fitted(natural, 520);
        QCOMPARE(fit.stretch < 100, condensed[i]);
        QCOMPARE(fit.size < 100, smaller[i]);
        const QRectF place = pdf.placeOf(0, texts[i]);
        QVERIFY2(!place.isEmpty(), qPrintable(texts[i]));
        QVERIFY2(qAbs(place.width() - natural * fit.horizontal()) < 2, qPrintable(texts[i]));
        QVERIFY2(qAbs(place.right() - (100 + 600 - 40)) < 2, qPrintable(texts[i]));
        QVERIFY(qAbs(place.height() - 240 * fit.vertical() * PdfWords::lineHeight()) < 5);
    }
}

void PdfExportTest::picture_isEmbeddedOnce()
{
    auto sections = makeSections(smallReport);
    QImage picture(400, 30, QImage::Format_RGB32);
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y)
            picture.setPixel(x, y, qRgb(x % 256, (x * y) % 256, (x + 7 * y) % 256));
    }
    sections[0].Controls(u"Logo"_s).setPicture(picture);
    Document document(smallReport, std::move(sections), smallRows(30), smallPaper);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QCOMPARE(writePdf(document, allPages(document), buffer, goOn), Outcome::Done);
    QCOMPARE(buffer.data().count("/Subtype /Image"), 1);
}

void PdfExportTest::fullDisk_returnsFailed()
{
    for (const qint64 room : {0, 10, 5000}) {
        const auto document = smallDocument(smallRows(60));
        FullDevice device(room);
        QCOMPARE(writePdf(*document, allPages(*document), device, goOn), Outcome::Failed);
    }
}

void PdfExportTest::cancelledExport_leavesNoFile()
{
    const QTemporaryDir folder;
    const auto document = smallDocument(smallRows(60));
    const Outcome outcome = writeFile(folder.filePath(u"x.pdf"_s), [&](QIODevice& device) {
        return writePdf(*document, allPages(*document), device,
                        [](int done, int) { return done < 3; });
    });
    QCOMPARE(outcome, Outcome::Cancelled);
    QVERIFY(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

void PdfExportTest::image_isDrawnLikePaper()
{
    // One pixel is ten twips. The line of the block is at 1600 and the box of its size field at
    // 2100.
    QImage sheet(530, 540, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.scale(0.1, 0.1);
    smallDocument(smallRows(1))->paintPage(0, painter);
    painter.end();
    const auto dark = [&](int x, int y) { return qGray(sheet.pixel(x, y)) < 128; };
    QVERIFY(dark(10 + 250, 160));
    QVERIFY(!dark(10 + 250, 165));
    QVERIFY(dark(10, 225)); // The left border.
    QVERIFY(dark(10 + 60, 225));
    QVERIFY(dark(10 + 30, 240));
    QVERIFY(!dark(10 + 30, 238));
}

ZOMREL_QTEST_MAIN(PdfExportTest)
#include "pdf_export_test.moc"
