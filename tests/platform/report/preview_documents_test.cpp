#include "platform/report/preview_fixture.h"

#include <QComboBox>
#include <QTemporaryDir>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

/// Lists a second small report with two rows and the data "a,b", and a third one that is never
/// made.
FurtherDocuments twoDocuments()
{
    FurtherDocuments further{.reportTitle = u"דוח"_s, .documents = {}, .commands = {}};
    further.documents.push_back(
        {u"רשימה"_s,
         [](QWidget*) -> std::shared_ptr<PrintedDocument> { return smallDocument(smallRows(2)); },
         u"list.csv"_s, [] { return QByteArray("a,b"); }});
    further.documents.push_back(
        {u"בוטל"_s, [](QWidget*) { return nullptr; }, u"x.csv"_s, [] { return QByteArray(); }});
    further.commands.push_back(
        {u"ActionSlip"_s, u"דף"_s, u"דף נוסף"_s, [](QWidget*) -> std::shared_ptr<PrintedDocument> {
             return smallDocument(smallRows(30));
         }});
    return further;
}

/// A preview of a report with seven rows, on three pages, and the documents.
class Documents : public PreviewFixture
{
public:
    Documents()
    {
        report.setFurtherDocuments(twoDocuments());
        show(smallRows(7));
    }
    QComboBox& list() const { return *child<QComboBox>(window(), u"Documents"_s); }
    void choose(const QString& title) const
    {
        list().setFocus();
        list().setCurrentIndex(list().findText(title));
        emit list().activated(list().currentIndex());
    }
};

} // namespace

class PreviewDocumentsTest : public QObject
{
    Q_OBJECT

private slots:
    void reportAlone_hasNoList()
    {
        const PreviewFixture preview(smallRows(7));
        QVERIFY(!child<QToolBar>(preview.window(), u"ToolbarDocuments"_s)->isVisible());
    }

    void list_beginsWithTheReport()
    {
        const Documents preview;
        QVERIFY(preview.list().isVisible());
        QCOMPARE(preview.list().count(), 3);
        QCOMPARE(preview.list().currentText(), u"דוח"_s);
        QCOMPARE(preview.pages().pageCount(), 3);
        QVERIFY(!preview.action(u"ActionExportData"_s).isEnabled());
    }

    void chosenDocument_isShownAndItsDataSaved()
    {
        const QTemporaryDir folder;
        Documents preview;
        preview.choose(u"רשימה"_s);
        QCOMPARE(preview.list().currentText(), u"רשימה"_s);
        QCOMPARE(preview.pages().pageCount(), 1);
        QVERIFY(!preview.action(u"ActionExportHtml"_s).isEnabled());
        QVERIFY(preview.action(u"ActionExportPdf"_s).isEnabled());
        preview.chosenFile = folder.filePath(u"list.csv"_s);
        preview.click(u"ActionExportData"_s);
        QCOMPARE(preview.fileRequests.back().proposedName, u"list.csv"_s);
        QFile file(preview.chosenFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("a,b"));
    }

    void documentThatIsNotMade_leavesTheOneOnDisplay()
    {
        const Documents preview;
        preview.choose(u"בוטל"_s);
        QCOMPARE(preview.list().currentText(), u"דוח"_s);
        QCOMPARE(preview.pages().pageCount(), 3);
    }

    void command_showsItsDocument()
    {
        const Documents preview;
        preview.click(u"ActionSlip"_s);
        QCOMPARE(preview.list().currentIndex(), -1);
        QCOMPARE(preview.pages().pageCount(), 10);
        preview.choose(u"דוח"_s);
        QCOMPARE(preview.pages().pageCount(), 3);
        QVERIFY(preview.action(u"ActionExportHtml"_s).isEnabled());
    }
};

ZOMREL_QTEST_MAIN(PreviewDocumentsTest)
#include "preview_documents_test.moc"
