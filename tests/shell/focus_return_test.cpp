#include "shell/focus_return.h"

#include "support/widgets.h"

#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>

using namespace Qt::StringLiterals;

class FocusReturnTest : public QObject
{
    Q_OBJECT

private slots:
    void closedDialog_activatesTheMainWindow();
    void closedDialog_activatesTheDialogBelow();
    void closedDialogOfThePreview_activatesThePreview();
};

namespace {

/// A main window with a box that has the focus.
struct Frame : QMainWindow
{
    QLineEdit* box = new QLineEdit(this);
    shell::FocusReturn focusReturn;

    Frame()
    {
        setObjectName(u"MDIZomrel"_s);
        setCentralWidget(box);
        qApp->installEventFilter(&focusReturn);
        show();
        activateWindow();
        box->setFocus();
    }
};

} // namespace

void FocusReturnTest::closedDialog_activatesTheMainWindow()
{
    Frame frame;
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    QDialog dialog(&frame);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.accept();
    QTRY_COMPARE(QApplication::activeWindow(), &frame);
    QTRY_COMPARE(QApplication::focusWidget(), frame.box);
}

void FocusReturnTest::closedDialog_activatesTheDialogBelow()
{
    Frame frame;
    QDialog below(&frame);
    below.open();
    QVERIFY(QTest::qWaitForWindowActive(&below));
    QDialog above(&below);
    above.open();
    QVERIFY(QTest::qWaitForWindowActive(&above));
    above.accept();
    QTRY_COMPARE(QApplication::activeWindow(), &below);
}

/// The preview is a main window of its own beside the program's main window.
void FocusReturnTest::closedDialogOfThePreview_activatesThePreview()
{
    Frame frame;
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    QMainWindow preview;
    preview.show();
    preview.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&preview));
    for (const int result : {QDialog::Accepted, QDialog::Rejected}) {
        QDialog dialog(&preview);
        dialog.open();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        dialog.done(result);
        QTRY_COMPARE(QApplication::activeWindow(), &preview);
    }
}

ZOMREL_QTEST_MAIN(FocusReturnTest)
#include "focus_return_test.moc"
