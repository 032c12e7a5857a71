#include "shell/enter_clicks.h"

#include "support/widgets.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

class EnterClicksTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void enterOnAFocusedButton_clicksIt_data();
    void enterOnAFocusedButton_clicksIt();
    void otherKeys_areUnchanged();
    void heldEnter_clicksOnce();
    void enterInABox_clicksNoButton();

private:
    struct Form : QWidget
    {
        QLineEdit* box = new QLineEdit(this);
        QPushButton* button = new QPushButton(this);
        Form()
        {
            auto* layout = new QVBoxLayout(this);
            layout->addWidget(box);
            layout->addWidget(button);
            show();
        }
    };

    std::unique_ptr<shell::EnterClicks> filter_;
};

void EnterClicksTest::init()
{
    filter_ = std::make_unique<shell::EnterClicks>();
    qApp->installEventFilter(filter_.get());
}

void EnterClicksTest::cleanup()
{
    filter_.reset();
}

void EnterClicksTest::enterOnAFocusedButton_clicksIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("main keyboard") << Qt::Key_Return;
    QTest::newRow("numeric keypad") << Qt::Key_Enter;
}

void EnterClicksTest::enterOnAFocusedButton_clicksIt()
{
    QFETCH(Qt::Key, key);
    Form form;
    const QSignalSpy clicked(form.button, &QPushButton::clicked);
    form.button->setFocus();
    QTest::keyClick(form.button, key);
    QCOMPARE(clicked.count(), 1);
}

void EnterClicksTest::otherKeys_areUnchanged()
{
    Form form;
    const QSignalSpy clicked(form.button, &QPushButton::clicked);
    form.button->setFocus();
    QTest::keyClick(form.button, Qt::Key_A);
    QCOMPARE(clicked.count(), 0);
    QTest::keyClick(form.button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
}

void EnterClicksTest::heldEnter_clicksOnce()
{
    Form form;
    const QSignalSpy clicked(form.button, &QPushButton::clicked);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(form.button, &press);
    QCoreApplication::sendEvent(form.button, &repeated);
    QCOMPARE(clicked.count(), 1);
}

void EnterClicksTest::enterInABox_clicksNoButton()
{
    Form form;
    const QSignalSpy clicked(form.button, &QPushButton::clicked);
    const QSignalSpy returned(form.box, &QLineEdit::returnPressed);
    form.box->setFocus();
    QTest::keyClick(form.box, Qt::Key_Return);
    QCOMPARE(returned.count(), 1);
    QCOMPARE(clicked.count(), 0);
}

ZOMREL_QTEST_MAIN(EnterClicksTest)
#include "enter_clicks_test.moc"
