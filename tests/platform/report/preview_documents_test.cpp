#include "platform/report/preview_fixture.h"

#include <QComboBox>
#include <QTemporaryDir>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

/// Returns a small report whose data are the number of its rows.
MadeDocument madeOf(int rows)
{
    return {smallDocument(smallRows(rows)), [rows] { return QByteArray::number(rows); }};
}

/// A preview of a report with seven rows, on three pages. It lists a document of two rows, which is
/// not made while `isRefusing`, one that is never made, and one of 4 or 30 rows, on 2 or 10 pages.
class Documents : public PreviewFixture
{
public:
    Documents()
    {
        report.setFurtherDocuments(documents());
        show(smallRows(7));
    }

    FurtherDocuments documents()
    {
        FurtherDocuments further{.reportTitle = u"דוח"_s, .documents = {}, .commands = {}};
        further.documents.push_back({u"רשימה"_s,
                                     [this](QWidget*, int) {
                                         ++made;
                                         if (whileMaking)
                                             whileMaking();
                                         return isRefusing ? MadeDocument() : madeOf(2);
                                     },
                                     u"list.csv"_s});
        further.documents.push_back(
            {u"בוטל"_s, [](QWidget*, int) { return MadeDocument(); }, u"x.csv"_s});
        further.documents.push_back({u"דפים"_s,
                                     [this](QWidget*, int variant) {
                                         return isRefusing ? MadeDocument()
                                                           : madeOf(variant == 1 ? 30 : 4);
                                     },
                                     u"pages.csv"_s,
                                     {u"Rows"_s, u"מספר השורות"_s, {u"מעט"_s, u"הרבה"_s}}});
        further.commands.push_back({u"ActionChange"_s, u"שינוי"_s, u"שינוי הגדרות"_s,
                                    [this](QWidget*) { return hasChanged; }});
        return further;
    }

    bool isRefusing = false;
    bool hasChanged = false;
    int made = 0; ///< How often the first document was made.
    std::function<void()> whileMaking;

    QComboBox& variants() const { return *child<QComboBox>(window(), u"Rows"_s); }
    void chooseVariant(int index) const
    {
        variants().setCurrentIndex(index);
        emit variants().activated(index);
    }
    QComboBox& list() const { return *child<QComboBox>(window(), u"Documents"_s); }
    void choose(const QString& title) const
    {
        list().setFocus();
        list().setCurrentIndex(list().findText(title));
        emit list().activated(list().currentIndex());
    }
};

/// Answers the file dialogs during its lifetime.
class FileDoorAnswer
{
public:
    explicit FileDoorAnswer(FileDoor::Function answer)
        : former_(fileDoor().replace(std::move(answer)))
    {
    }
    ~FileDoorAnswer() { fileDoor().replace(std::move(former_)); }
    FileDoorAnswer(const FileDoorAnswer&) = delete;
    FileDoorAnswer& operator=(const FileDoorAnswer&) = delete;

private:
    FileDoor::Function former_;
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
        QCOMPARE(preview.list().count(), 4);
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
        QCOMPARE(file.readAll(), QByteArray("2"));
    }

    void documentThatIsNotMade_leavesTheOneOnDisplay()
    {
        const Documents preview;
        preview.choose(u"בוטל"_s);
        QCOMPARE(preview.list().currentText(), u"דוח"_s);
        QCOMPARE(preview.pages().pageCount(), 3);
    }

    void documentChosenAgain_isMadeAgain()
    {
        const Documents preview;
        preview.choose(u"רשימה"_s);
        preview.choose(u"רשימה"_s);
        QCOMPARE(preview.made, 2);
    }

    void variants_areListedBesideTheirDocumentOnly()
    {
        const Documents preview;
        QVERIFY(!preview.variants().isVisible());
        preview.choose(u"דפים"_s);
        QVERIFY(preview.variants().isVisible());
        QCOMPARE(preview.variants().toolTip(), u"מספר השורות"_s);
        QCOMPARE(preview.pages().pageCount(), 2);
        preview.chooseVariant(1);
        QCOMPARE(preview.list().currentText(), u"דפים"_s);
        QCOMPARE(preview.pages().pageCount(), 10);
        preview.choose(u"דוח"_s);
        QVERIFY(!preview.variants().isVisible());
        preview.choose(u"דפים"_s);
        QCOMPARE(preview.variants().currentIndex(), 1);
        QCOMPARE(preview.pages().pageCount(), 10);
    }

    void variantThatIsNotMade_leavesTheOneOnDisplay()
    {
        Documents preview;
        preview.choose(u"דפים"_s);
        preview.isRefusing = true;
        preview.chooseVariant(1);
        QCOMPARE(preview.variants().currentIndex(), 0);
        QCOMPARE(preview.pages().pageCount(), 2);
    }

    void variants_areReachedByKeyboard()
    {
        const Documents preview;
        preview.choose(u"דפים"_s);
        preview.list().setFocus();
        QTest::keyClick(&preview.list(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), &preview.variants());
        QTest::keyClick(&preview.variants(), Qt::Key_Down);
        QCOMPARE(preview.pages().pageCount(), 10);
    }

    void commandThatChangesNothing_leavesDocumentAndPage()
    {
        const Documents preview;
        preview.choose(u"דפים"_s);
        preview.pages().setCurrentPage(2);
        preview.click(u"ActionChange"_s);
        QCOMPARE(preview.pages().currentPage(), 2);
        QCOMPARE(preview.made, 0);
    }

    void commandThatChangesDocuments_makesTheShownOneAgain()
    {
        Documents preview;
        preview.hasChanged = true;
        preview.click(u"ActionChange"_s);
        QCOMPARE(preview.list().currentText(), u"דוח"_s);
        preview.choose(u"רשימה"_s);
        preview.click(u"ActionChange"_s);
        QCOMPARE(preview.made, 2);
        QCOMPARE(preview.list().currentText(), u"רשימה"_s);
    }

    void documentThatCannotBeMadeAgain_isReplacedByTheReport()
    {
        Documents preview;
        preview.choose(u"רשימה"_s);
        preview.hasChanged = preview.isRefusing = true;
        preview.click(u"ActionChange"_s);
        QCOMPARE(preview.list().currentText(), u"דוח"_s);
        QCOMPARE(preview.pages().pageCount(), 3);
        QVERIFY(!preview.action(u"ActionExportData"_s).isEnabled());
    }

    void documentsSetWhileOneIsMade_areNotMixedWithIt()
    {
        Documents preview;
        preview.whileMaking = [&preview] {
            preview.report.setFurtherDocuments(preview.documents());
            preview.show(smallRows(30));
        };
        preview.choose(u"רשימה"_s);
        QCOMPARE(preview.made, 1);
        QCOMPARE(preview.list().currentText(), u"דוח"_s);
        QCOMPARE(preview.pages().pageCount(), 10);
    }

    void documentsSetDuringTheFileDialog_leaveTheSavedDataUnchanged()
    {
        const QTemporaryDir folder;
        Documents preview;
        preview.choose(u"דפים"_s);
        const FileDoorAnswer answer([&preview, &folder](const FileRequest&) {
            preview.report.setFurtherDocuments({});
            preview.show(smallRows(30));
            return folder.filePath(u"pages.csv"_s);
        });
        preview.click(u"ActionExportData"_s);
        QFile file(folder.filePath(u"pages.csv"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("4"));
    }

    void toolBars_areUsedWithoutAMouse()
    {
        Documents preview;
        const auto button = [&](const QString& name) {
            for (QToolBar* bar : preview.window().findChildren<QToolBar*>()) {
                if (QWidget* found = bar->widgetForAction(&preview.action(name)))
                    return found;
            }
            return static_cast<QWidget*>(nullptr);
        };
        preview.pages().setFocus();
        preview.press(Qt::Key_F10);
        // The buttons for the first and the previous page are disabled on page 1.
        QCOMPARE(QApplication::focusWidget(), button(u"ActionNextPage"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(preview.pages().currentPage(), 2);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(preview.pages().currentPage(), 3);
        preview.press(Qt::Key_F10);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(preview.window().isVisible());
        QCOMPARE(QApplication::focusWidget(), &preview.pages());
        child<QWidget>(preview.window(), u"Documents"_s)->setFocus();
        QTest::keyClick(QApplication::focusWidget(),
                        Qt::Key_Tab); // No data: the button is disabled.
        QCOMPARE(QApplication::focusWidget(), button(u"ActionChange"_s));
    }
};

ZOMREL_QTEST_MAIN(PreviewDocumentsTest)
#include "preview_documents_test.moc"
