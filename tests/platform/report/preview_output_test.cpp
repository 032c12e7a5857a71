#include "platform/report/paper.h"
#include "platform/report/pdf_words.h"
#include "platform/report/preview_fixture.h"
#include "platform/report/printing.h"

#include <QDir>
#include <QLabel>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList entries(const QTemporaryDir& folder)
{
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
}

} // namespace

class PreviewOutputTest : public QObject
{
    Q_OBJECT

private slots:
    void exportPdf_writesAPdf();
    void exportHtml_writesAnHtmlPage();
    void exportText_writesAText();
    void export_isConfirmedWithNameAndFolder();
    void failedExport_isNotConfirmed();
    void export_withoutAFile_writesNothing();
    void export_toAnUnwritableFile_showsABox();
    void cancelledExport_keepsTheOldFile_data();
    void cancelledExport_keepsTheOldFile();
    void readErrorInAnExport_opensTheErrorBox();
    void print_printsTheChosenPages();
    void print_onOtherPaper_paginatesAgain();
    void print_onTooNarrowPaper_showsABox();
    void paperOf_returnsTheSheetSize();
};

void PreviewOutputTest::exportPdf_writesAPdf()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(7));
    preview.chosenFile = folder.filePath(u"a.pdf"_s);
    preview.click(u"ActionExportPdf"_s);
    QCOMPARE(preview.fileRequests.size(), 1u);
    QCOMPARE(preview.fileRequests[0].proposedName, u"מסמך 17.pdf"_s);
    QCOMPARE(preview.fileRequests[0].suffix, u"pdf"_s);
    QCOMPARE(entries(folder), QStringList{u"a.pdf"_s});
    QVERIFY(contents(preview.chosenFile).startsWith("%PDF"));
    QCOMPARE(PdfWords(preview.chosenFile).pageCount(), 3);
    QVERIFY(preview.boxes.shown().empty());
}

void PreviewOutputTest::exportHtml_writesAnHtmlPage()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(7));
    preview.chosenFile = folder.filePath(u"a.html"_s);
    preview.click(u"ActionExportHtml"_s);
    QCOMPARE(preview.fileRequests.at(0).proposedName, u"מסמך 17.html"_s);
    QVERIFY(contents(preview.chosenFile).contains(u"שורה 7"_s.toUtf8()));
}

void PreviewOutputTest::exportText_writesAText()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(7));
    preview.chosenFile = folder.filePath(u"a.txt"_s);
    preview.click(u"ActionExportText"_s);
    QCOMPARE(preview.fileRequests.at(0).proposedName, u"מסמך 17.txt"_s);
    QVERIFY(contents(preview.chosenFile).contains(u"שם:\tשורה 7\n3.5\n"_s.toUtf8()));
}

void PreviewOutputTest::export_isConfirmedWithNameAndFolder()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(7));
    auto* bar = child<QToolBar>(preview.window(), u"ToolbarSaved"_s);
    QVERIFY(!bar->isVisible());
    preview.chosenFile = folder.filePath(u"הזמנה 17.pdf"_s);
    preview.click(u"ActionExportPdf"_s);
    QVERIFY(bar->isVisible());
    QVERIFY(child<QLabel>(*bar, u"LabelSaved"_s)->text().contains(u"\u2066הזמנה 17.pdf\u2069"_s));

    QString opened;
    const auto former = folderDoor().replace([&opened](const QString& path) { opened = path; });
    child<QAction>(*bar, u"ActionOpenFolder"_s)->trigger();
    folderDoor().replace(former);
    QCOMPARE(opened, folder.path());

    preview.press(Qt::Key_Escape);
    QVERIFY(!bar->isVisible());
    QVERIFY(preview.window().isVisible());
}

void PreviewOutputTest::failedExport_isNotConfirmed()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(7));
    preview.boxes.answer(runtime::vbOK);
    preview.chosenFile = folder.filePath(u"no/such/folder/a.pdf"_s);
    preview.click(u"ActionExportPdf"_s);
    QVERIFY(!child<QToolBar>(preview.window(), u"ToolbarSaved"_s)->isVisible());
}

void PreviewOutputTest::export_withoutAFile_writesNothing()
{
    PreviewFixture preview(smallRows(7));
    for (const QString& action :
         {u"ActionExportPdf"_s, u"ActionExportHtml"_s, u"ActionExportText"_s})
        preview.click(action);
    preview.press(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(preview.fileRequests.size(), 3u);
    QVERIFY(preview.boxes.shown().empty());
}

void PreviewOutputTest::export_toAnUnwritableFile_showsABox()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(7));
    for (const QString& action :
         {u"ActionExportPdf"_s, u"ActionExportHtml"_s, u"ActionExportText"_s}) {
        preview.boxes.clear();
        preview.boxes.answer(runtime::vbOK);
        preview.chosenFile = folder.filePath(u"no/such/folder/a"_s);
        preview.click(action);
        QCOMPARE(preview.boxes.shown().size(), 1u);
        QVERIFY(preview.boxes.shown()[0].text.startsWith(u"לא ניתן לכתוב את הקובץ:\n"_s));
        QCOMPARE(preview.boxes.shown()[0].flags, runtime::refusalFlags);
    }
    QVERIFY(!preview.end.exitStatus());
    QVERIFY(preview.window().isVisible());
    QVERIFY(entries(folder).isEmpty());
}

void PreviewOutputTest::cancelledExport_keepsTheOldFile_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("PDF") << u"ActionExportPdf"_s;
    QTest::newRow("HTML") << u"ActionExportHtml"_s;
    QTest::newRow("text") << u"ActionExportText"_s;
}

void PreviewOutputTest::cancelledExport_keepsTheOldFile()
{
    QFETCH(QString, action);
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(30000000));
    preview.chosenFile = folder.filePath(u"a"_s);
    QFile old(preview.chosenFile);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    int shown = 0;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            auto* progress = qobject_cast<QProgressDialog*>(each);
            if (progress == nullptr || !progress->isVisible())
                continue;
            ++shown;
            QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton);
        }
    });
    watch.start(10);
    preview.click(action);
    QCOMPARE(shown, 1);
    QCOMPARE(contents(preview.chosenFile), QByteArray("old"));
    QCOMPARE(entries(folder), QStringList{u"a"_s});
    QVERIFY(preview.boxes.shown().empty());
}

void PreviewOutputTest::readErrorInAnExport_opensTheErrorBox()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(300));
    preview.boxes.answer(runtime::vbOK);
    preview.chosenFile = folder.filePath(u"a.pdf"_s);
    preview.rows->failsWith = runtime::DiskOrNetworkError;
    preview.click(u"ActionExportPdf"_s);
    QCOMPARE(preview.end.exitStatus(), 1);
    QVERIFY(entries(folder).isEmpty());
}

void PreviewOutputTest::print_printsTheChosenPages()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(30));
    preview.pages().setCurrentPage(4);
    const auto printed = [&](auto choose) {
        const QString path = folder.filePath(u"printed.pdf"_s);
        preview.answerPrinter = [&](QPrinter& printer, int pageCount) {
            if (pageCount != 10)
                return false;
            printer.setOutputFileName(path);
            printer.setPageSize(
                QPageSize(QSizeF(smallPaper.width, smallPaper.height) / 20, QPageSize::Point));
            choose(printer);
            return true;
        };
        preview.press(Qt::Key_P, Qt::ControlModifier);
        const PdfWords pdf(path);
        QStringList numbers;
        for (int page = 0; page < pdf.pageCount(); ++page)
            numbers += pdf.at(page, {100, 4600, 500, 300});
        return numbers.join(u' ');
    };
    QCOMPARE(printed([](QPrinter&) {}), u"1 2 3 4 5 6 7 8 9 10"_s);
    QCOMPARE(printed([](QPrinter& printer) {
                 printer.setPrintRange(QPrinter::PageRange);
                 printer.setFromTo(3, 5);
             }),
             u"3 4 5"_s);
    QCOMPARE(printed([](QPrinter& printer) { printer.setPrintRange(QPrinter::CurrentPage); }),
             u"4"_s);
    QCOMPARE(printed([](QPrinter& printer) {
                 printer.setPrintRange(QPrinter::PageRange);
                 printer.setFromTo(9, 12);
                 printer.setPageOrder(QPrinter::LastPageFirst);
             }),
             u"10 9"_s);
}

void PreviewOutputTest::print_onOtherPaper_paginatesAgain()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"printed.pdf"_s);
    PreviewFixture preview(smallRows(30));
    preview.answerPrinter = [&](QPrinter& printer, int) {
        printer.setOutputFileName(path);
        printer.setPageSize(QPageSize(QPageSize::A4));
        return true;
    };
    preview.press(Qt::Key_P, Qt::ControlModifier);
    const PdfWords pdf(path);
    // (16838 - 1000 - 500 - 600 - 300) / 1000: a page holds fourteen blocks.
    QCOMPARE(pdf.pageCount(), 3);
    QCOMPARE(pdf.at(2, {700, 16838 - 500 - 300, 500, 300}), u"3"_s);
    QCOMPARE(preview.pages().pageCount(), 10);
}

void PreviewOutputTest::print_onTooNarrowPaper_showsABox()
{
    const QTemporaryDir folder;
    PreviewFixture preview(smallRows(30));
    preview.boxes.answer(runtime::vbOK);
    preview.answerPrinter = [&](QPrinter& printer, int) {
        printer.setOutputFileName(folder.filePath(u"printed.pdf"_s));
        printer.setPageSize(QPageSize(QSizeF(200, 600), QPageSize::Point));
        return true;
    };
    preview.press(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(preview.boxes.shown().size(), 1u);
    QCOMPARE(preview.boxes.shown()[0].flags, runtime::refusalFlags);
    QVERIFY(!preview.end.exitStatus());
    QVERIFY(entries(folder).isEmpty());
}

void PreviewOutputTest::paperOf_returnsTheSheetSize()
{
    const QMarginsF margins(20, 20, 20, 20);
    QCOMPARE(paperOf(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, margins)),
             a4Portrait);
    QCOMPARE(paperOf(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, margins)),
             (Paper{16838, 11906}));
    QCOMPARE(paperOf(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, margins)),
             (Paper{12240, 15840}));
}

ZOMREL_QTEST_MAIN(PreviewOutputTest)
#include "preview_output_test.moc"
