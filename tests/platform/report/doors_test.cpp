#include "platform/report/doors.h"
#include "platform/report/paper.h"

#include "support/doors.h"
#include "support/widgets.h"

#include <QDialog>
#include <QDirIterator>
#include <QFileDialog>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

/// Waits until a dialog of this type is visible and acts on it once.
template <typename Dialog, typename Act>
void whenShown(QObject* context, Act act)
{
    auto* watch = new QTimer(context);
    QObject::connect(watch, &QTimer::timeout, context, [watch, act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        watch->stop();
        act(*dialog);
    });
    watch->start(10);
}

/// Types a name without a suffix into the dialog, for a file in this folder, and accepts it.
void saveIn(const QTemporaryDir& folder, QFileDialog& dialog)
{
    dialog.setDirectory(folder.path());
    auto* name = child<QLineEdit>(dialog, u"fileNameEdit"_s);
    name->setText(u"שלי"_s);
    QTest::keyClick(name, Qt::Key_Return);
}

} // namespace

/// The default dialogs of the preview.
class DoorsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void defaultPaper_withoutAPrinter_isA4();
    void fileDialog_proposesTheName();
    void fileDialog_addsTheSuffix();
    void fileDialog_cancelled_returnsNoFile();
    void fileDialog_readsNamesLeftToRight();
    void printDialog_cancelled_returnsFalse();
    void printDialog_withoutAPrinter_saysSo();
    void dialogs_writeNoSettingsFile();

private:
    /// Returns every file and folder in the user's home folder, which is empty at first.
    QStringList filesAtHome() const;
    QString askPdf()
    {
        return askFile({&window_, u"שמירה"_s, u"x.pdf"_s, u"PDF (*.pdf)"_s, u"pdf"_s});
    }

    QTemporaryDir home_;
    QWidget window_;
};

void DoorsTest::initTestCase()
{
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, home_.path().toUtf8());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    hasPrinterDoor().replace([] { return true; });
    window_.show();
}

void DoorsTest::defaultPaper_withoutAPrinter_isA4()
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    const Paper expected =
        printer.isNull() ? Paper{11906, 16838} : paperOf(QPrinter(printer).pageLayout());
    QCOMPARE(defaultPaper(), expected);
}

void DoorsTest::fileDialog_proposesTheName()
{
    QStringList selected;
    whenShown<QFileDialog>(&window_, [&](QFileDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"שמירה"_s);
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
        selected = dialog.selectedFiles();
        dialog.reject();
    });
    askFile({&window_, u"שמירה"_s, u"הזמנה 17.pdf"_s, u"PDF (*.pdf)"_s, u"pdf"_s});
    QCOMPARE(selected.size(), 1);
    QVERIFY(selected[0].endsWith(u"/הזמנה 17.pdf"_s));
}

void DoorsTest::fileDialog_addsTheSuffix()
{
    const QTemporaryDir folder;
    whenShown<QFileDialog>(&window_, [&folder](QFileDialog& dialog) { saveIn(folder, dialog); });
    const QString chosen = askPdf();
    QCOMPARE(chosen, folder.filePath(u"שלי.pdf"_s));
}

void DoorsTest::fileDialog_cancelled_returnsNoFile()
{
    whenShown<QFileDialog>(&window_, [](QFileDialog& dialog) { dialog.reject(); });
    QCOMPARE(askFile({&window_, u"שמירה"_s, u"x.txt"_s, u"(*.txt)"_s, u"txt"_s}), QString());
}

void DoorsTest::fileDialog_readsNamesLeftToRight()
{
    const Qt::LayoutDirection former = QApplication::layoutDirection();
    QApplication::setLayoutDirection(Qt::RightToLeft);
    Qt::LayoutDirection ofName = Qt::RightToLeft;
    Qt::LayoutDirection ofFolder = Qt::RightToLeft;
    whenShown<QFileDialog>(&window_, [&](QFileDialog& dialog) {
        ofName = child<QWidget>(dialog, u"fileNameEdit"_s)->layoutDirection();
        ofFolder = child<QWidget>(dialog, u"lookInCombo"_s)->layoutDirection();
        dialog.reject();
    });
    askPdf();
    QApplication::setLayoutDirection(former);
    QCOMPARE(ofName, Qt::LeftToRight);
    QCOMPARE(ofFolder, Qt::LeftToRight);
}

void DoorsTest::printDialog_withoutAPrinter_saysSo()
{
    RecordedBoxes boxes;
    boxes.answer(runtime::vbOK);
    hasPrinterDoor().replace([] { return false; });
    QPrinter printer;
    QVERIFY(!askPrinter(printer, &window_, 1));
    hasPrinterDoor().replace([] { return true; });
    QCOMPARE(boxes.shown().size(), 1u);
    QVERIFY(boxes.shown()[0].text.startsWith(u"לא נמצאה מדפסת"_s));
}

void DoorsTest::printDialog_cancelled_returnsFalse()
{
#ifdef Q_OS_WIN
    QSKIP("the print dialog is the system's own, which no test answers");
#endif
    QPrinter printer;
    int pages = 0;
    whenShown<QPrintDialog>(&window_, [&](QPrintDialog& dialog) {
        pages = dialog.maxPage();
        dialog.reject();
    });
    QVERIFY(!askPrinter(printer, &window_, 12));
    QCOMPARE(pages, 12);
}

QStringList DoorsTest::filesAtHome() const
{
    QStringList paths;
    QDirIterator all(home_.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext())
        paths.append(all.next());
    return paths;
}

void DoorsTest::dialogs_writeNoSettingsFile()
{
#ifdef Q_OS_WIN
    QSKIP("the print dialog is the system's own, and settings are in the registry");
#endif
    const QTemporaryDir folder;
    whenShown<QFileDialog>(&window_, [&folder](QFileDialog& dialog) { saveIn(folder, dialog); });
    QVERIFY(!askPdf().isEmpty());
    whenShown<QFileDialog>(&window_, [](QFileDialog& dialog) { dialog.reject(); });
    askPdf();
    for (const bool accepted : {true, false}) {
        QPrinter printer;
        whenShown<QPrintDialog>(&window_, [accepted](QPrintDialog& dialog) {
            dialog.QDialog::done(accepted ? QDialog::Accepted : QDialog::Rejected);
        });
        QCOMPARE(askPrinter(printer, &window_, 1), accepted);
    }
    QSettings(QSettings::UserScope, u"QtProject"_s).sync();
    QCOMPARE(filesAtHome(), QStringList());
}

ZOMREL_QTEST_MAIN(DoorsTest)
#include "doors_test.moc"
