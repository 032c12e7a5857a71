#include "platform/controls/form.h"

#include "support/widgets.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <stdexcept>

using namespace Qt::StringLiterals;
using controls::ChildForm;
using controls::DefaultInstance;

namespace {

int loads = 0;
bool loadFails = false;

class SampleForm : public ChildForm
{
public:
    SampleForm() : ChildForm(u"FrSample"_s, u"דוגמה"_s)
    {
        if (loadFails)
            throw std::runtime_error("load");
        ++loads;
        resize(300, 200);
        auto* column = new QVBoxLayout(this);
        first = new QLineEdit(this);
        end = new QPushButton(u"סיים"_s, this);
        column->addWidget(first);
        column->addWidget(end);
        connect(end, &QPushButton::clicked, this, [this] { Unload(); });
    }

    QLineEdit* first;
    QPushButton* end;
    int unloads = 0;

protected:
    void aboutToUnload() override { ++unloads; }
};

class MaximisedForm : public ChildForm
{
public:
    MaximisedForm() : ChildForm(u"FrOrder"_s, u"הזמנות"_s) {}

protected:
    bool opensMaximised() const override { return true; }
};

QMdiSubWindow* windowOf(const QWidget& form)
{
    return qobject_cast<QMdiSubWindow*>(form.parentWidget());
}

} // namespace

class FormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void firstAccess_loadsTheForm();
    void failedLoad_leavesNoInstance();
    void unload_takesEffectImmediately();
    void closeBox_unloadsTheForm();
    void aboutToUnload_runsOnce();
    void show_opensInTheFrameWithItsSize();
    void secondShow_activatesTheForm();
    void maximisedForms_leaveOthersNormal();
    void resizedFrame_keepsTheDistanceFromTheRight();
    void resizedFrame_keepsTheWindowInside();
    void restoredWindow_returnsToItsPlace();
    void withoutAFrame_isATopLevelWindow();
    void unload_ofAHiddenForm_deletesIt();

private:
    std::unique_ptr<QMdiArea> frame_;
};

void FormTest::init()
{
    loads = 0;
    loadFails = false;
    frame_ = std::make_unique<QMdiArea>();
    frame_->resize(800, 600);
    controls::setFrame(frame_.get());
    QVERIFY(testsupport::showActive(*frame_));
}

void FormTest::cleanup()
{
    frame_.reset();
    QCOMPARE(controls::frame(), nullptr);
}

void FormTest::firstAccess_loadsTheForm()
{
    DefaultInstance<SampleForm> frSample;
    QVERIFY(!frSample.isLoaded());
    SampleForm& form = frSample();
    QVERIFY(frSample.isLoaded());
    QCOMPARE(&frSample(), &form);
    QCOMPARE(loads, 1);
    QCOMPARE(form.objectName(), u"FrSample"_s);
    QCOMPARE(form.windowTitle(), u"דוגמה"_s);
    QCOMPARE(form.layoutDirection(), Qt::RightToLeft);
    QVERIFY(!form.isVisible());
    form.Unload();
}

void FormTest::failedLoad_leavesNoInstance()
{
    DefaultInstance<SampleForm> frSample;
    loadFails = true;
    QVERIFY_EXCEPTION_THROWN(frSample(), std::runtime_error);
    QVERIFY(!frSample.isLoaded());
    loadFails = false;
    frSample().Unload();
    QCOMPARE(loads, 1);
}

void FormTest::unload_takesEffectImmediately()
{
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    const QPointer<SampleForm> first = &frSample();
    QSignalSpy unloaded(first.data(), &ChildForm::unloaded);
    first->Unload();
    QCOMPARE(unloaded.count(), 1);
    QVERIFY(!frSample.isLoaded());
    QVERIFY(!first.isNull()); // The form still exists, because its handler may be running.
    QVERIFY(!first->isVisible());
    SampleForm& second = frSample(); // The new form is created within the same event.
    QVERIFY(&second != first.data());
    QCOMPARE(loads, 2);
    second.Show();
    QTRY_VERIFY(first.isNull());
    QVERIFY(frSample.isLoaded());
    QVERIFY(second.isVisible());
    QCOMPARE(frame_->subWindowList().size(), 1);
    QTest::mouseClick(second.end, Qt::LeftButton);
    QVERIFY(!frSample.isLoaded());
    QTRY_VERIFY(frame_->subWindowList().isEmpty());
}

void FormTest::closeBox_unloadsTheForm()
{
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    const QPointer<SampleForm> form = &frSample();
    QVERIFY(windowOf(*form)->close());
    QVERIFY(!frSample.isLoaded());
    QTRY_VERIFY(form.isNull());
    QTRY_VERIFY(frame_->subWindowList().isEmpty());
}

void FormTest::aboutToUnload_runsOnce()
{
    for (const bool byCloseBox : {false, true}) {
        DefaultInstance<SampleForm> frSample;
        frSample().Show();
        SampleForm& form = frSample();
        int seen = -1;
        connect(&form, &ChildForm::unloaded, &form, [&] { seen = form.unloads; });
        if (byCloseBox)
            windowOf(form)->close();
        else
            form.Unload();
        QCOMPARE(seen, 1);
        QCOMPARE(form.unloads, 1);
        QTRY_VERIFY(frame_->subWindowList().isEmpty());
    }
}

void FormTest::show_opensInTheFrameWithItsSize()
{
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    QMdiSubWindow* window = windowOf(frSample());
    QVERIFY(window != nullptr);
    QCOMPARE(frame_->activeSubWindow(), window);
    QVERIFY(!window->isMaximized());
    QCOMPARE(frSample().size(), QSize(300, 200));
    QCOMPARE(QApplication::focusWidget(), frSample().first);
    // The window is near the top right corner, where reading starts.
    QVERIFY(window->geometry().right() > frame_->viewport()->width() - 40);
    QVERIFY(frame_->viewport()->rect().contains(window->geometry()));
    QVERIFY(window->y() < 40);
}

void FormTest::secondShow_activatesTheForm()
{
    DefaultInstance<SampleForm> first;
    DefaultInstance<SampleForm> second;
    first().Show();
    second().Show();
    QCOMPARE(frame_->activeSubWindow(), windowOf(second()));
    first().Show();
    QCOMPARE(frame_->activeSubWindow(), windowOf(first()));
    QCOMPARE(frame_->subWindowList().size(), 2);
    QCOMPARE(QApplication::focusWidget(), first().first);
    windowOf(first())->showMinimized();
    first().Show();
    QVERIFY(!windowOf(first())->isMinimized());
}

void FormTest::maximisedForms_leaveOthersNormal()
{
    DefaultInstance<MaximisedForm> frOrder;
    DefaultInstance<SampleForm> frSample;
    frOrder().Show();
    QVERIFY(windowOf(frOrder())->isMaximized());
    frSample().Show();
    QVERIFY(!windowOf(frSample())->isMaximized());
    QCOMPARE(frSample().size(), QSize(300, 200));
    QVERIFY(windowOf(frOrder())->isMaximized());
    frOrder().Show();
    QVERIFY(windowOf(frOrder())->isMaximized());
    QCOMPARE(frame_->activeSubWindow(), windowOf(frOrder()));
}

void FormTest::resizedFrame_keepsTheDistanceFromTheRight()
{
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    QMdiSubWindow* window = windowOf(frSample());
    window->move(window->pos() - QPoint(60, -30));
    const auto fromStart = [&] {
        return frame_->viewport()->width() - 1 - window->geometry().right();
    };
    const int distance = fromStart();
    const int top = window->y();
    frame_->resize(1000, 700);
    QTRY_COMPARE(fromStart(), distance);
    QCOMPARE(window->y(), top);
    frame_->resize(700, 500);
    QTRY_COMPARE(fromStart(), distance);
}

void FormTest::resizedFrame_keepsTheWindowInside()
{
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    QMdiSubWindow* window = windowOf(frSample());
    window->move(0, 300);
    frame_->resize(400, 350);
    QTRY_VERIFY(frame_->viewport()->rect().contains(window->geometry()));
    // If the frame is too small, the side where reading starts stays visible.
    frame_->resize(200, 150);
    QTRY_COMPARE(window->geometry().right(), frame_->viewport()->rect().right());
    QCOMPARE(window->y(), 0);
}

void FormTest::restoredWindow_returnsToItsPlace()
{
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    QMdiSubWindow* window = windowOf(frSample());
    const auto fromStart = [&] {
        return frame_->viewport()->width() - 1 - window->geometry().right();
    };
    const int distance = fromStart();
    window->showMaximized();
    frame_->resize(1000, 700);
    window->showNormal();
    QTRY_COMPARE(fromStart(), distance);
    QCOMPARE(frSample().size(), QSize(300, 200));
}

void FormTest::withoutAFrame_isATopLevelWindow()
{
    controls::setFrame(nullptr);
    DefaultInstance<SampleForm> frSample;
    frSample().Show();
    const QPointer<SampleForm> form = &frSample();
    QVERIFY(form->isWindow());
    QVERIFY(form->isVisible());
    form->Show();
    form->close();
    QVERIFY(!frSample.isLoaded());
    QTRY_VERIFY(form.isNull());
}

void FormTest::unload_ofAHiddenForm_deletesIt()
{
    DefaultInstance<SampleForm> frSample;
    const QPointer<SampleForm> form = &frSample();
    form->Unload();
    QVERIFY(!frSample.isLoaded());
    form->Show(); // The form has already been unloaded.
    QVERIFY(!form->isVisible());
    QTRY_VERIFY(form.isNull());
}

ZOMREL_QTEST_MAIN(FormTest)
#include "form_test.moc"
