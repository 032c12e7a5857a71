#include "platform/controls/frame_fit.h"

#include "platform/controls/form.h"
#include "support/widgets.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize fullSize(600, 400);
constexpr QRect boxPlace(450, 320, 100, 30);
constexpr QRect buttonPlace(200, 350, 120, 40);

/// A child form with a box and a button at fixed places.
class FixedForm : public controls::ChildForm
{
public:
    FixedForm() : ChildForm(u"FrFixed"_s, u"form"_s), box(new QLineEdit(this))
    {
        setFixedSize(fullSize);
        box->setGeometry(boxPlace);
        button->setGeometry(buttonPlace);
        new controls::FrameFit(*this, {button});
    }

    QLineEdit* box;
    QPushButton* button = new QPushButton(u"close"_s, this);
};

bool isInFullView(const QWidget& widget)
{
    return widget.visibleRegion().boundingRect() == widget.rect();
}

} // namespace

class FrameFitTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shrunkFrame_scrollsTheFormAndKeepsItsButton();
    void grownFrame_showsTheFormAsItWas();
    void formBehindAnother_takesNoFocus();

private:
    bool isInside() const
    {
        return frame_->viewport()->rect().contains(form_->parentWidget()->geometry());
    }

    std::unique_ptr<QMdiArea> frame_;
    QPointer<FixedForm> form_;
};

void FrameFitTest::init()
{
    frame_ = std::make_unique<QMdiArea>();
    frame_->resize(900, 600);
    controls::setFrame(frame_.get());
    QVERIFY(testsupport::showActive(*frame_));
    form_ = new FixedForm;
    form_->Show();
    QCOMPARE(form_->size(), fullSize);
    form_->box->setFocus();
}

void FrameFitTest::cleanup()
{
    controls::setFrame(nullptr);
    frame_.reset();
}

void FrameFitTest::shrunkFrame_scrollsTheFormAndKeepsItsButton()
{
    for (const QSize& size : {QSize(500, 300), QSize(400, 250)}) {
        frame_->resize(size);
        QTRY_VERIFY(isInside());
        QTRY_VERIFY(isInFullView(*form_->button));
        QTRY_VERIFY(isInFullView(*form_->box));
        QCOMPARE(form_->box->geometry(), boxPlace);
        QVERIFY(form_->box->hasFocus());
    }
}

void FrameFitTest::grownFrame_showsTheFormAsItWas()
{
    frame_->resize(400, 250);
    QTRY_VERIFY(isInside());
    frame_->resize(900, 600);
    QTRY_COMPARE(form_->size(), fullSize);
    QVERIFY(isInside());
    QCOMPARE(form_->box->geometry(), boxPlace);
    QCOMPARE(form_->button->geometry(), buttonPlace);
    QVERIFY(isInFullView(*form_->box) && isInFullView(*form_->button));
    QVERIFY(form_->box->hasFocus());
    QTest::keyClick(form_->box, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), form_->button);
}

void FrameFitTest::formBehindAnother_takesNoFocus()
{
    auto* other = new QLineEdit;
    frame_->addSubWindow(other)->show();
    other->setFocus();
    QVERIFY(other->hasFocus());
    frame_->resize(400, 250);
    QTRY_VERIFY(form_->size() != fullSize);
    QVERIFY(other->hasFocus());
}

ZOMREL_QTEST_MAIN(FrameFitTest)
#include "frame_fit_test.moc"
