// A sample test program. boxes_test runs it and checks its exit status and its output.

#include "support/doors.h"
#include "support/widgets.h"

using namespace Qt::StringLiterals;

class BoxesSample : public QObject
{
    Q_OBJECT

public:
    /// Shows a message box after the last test, like a window that outlives its test.
    ~BoxesSample() override
    {
        if (isAskedAfterTheTests_)
            runtime::MsgBox(u"asked"_s);
    }

private slots:
    void answered();
    void taken();
    void unexpected();
    void unexpectedAndCleared();
    void didNotCome();
    void unwatched();
    void afterTheTests() { isAskedAfterTheTests_ = true; }

private:
    bool isAskedAfterTheTests_ = false;
};

void BoxesSample::answered()
{
    testsupport::RecordedBoxes boxes;
    boxes.answer(runtime::vbOK);
    runtime::MsgBox(u"asked"_s);
}

void BoxesSample::taken()
{
    testsupport::RecordedBoxes boxes;
    runtime::MsgBox(u"asked"_s);
    QCOMPARE(boxes.takeUnexpected(), QList<QString>{u"asked"_s});
}

void BoxesSample::unexpected()
{
    const testsupport::RecordedBoxes boxes;
    runtime::MsgBox(u"asked"_s);
}

void BoxesSample::unexpectedAndCleared()
{
    testsupport::RecordedBoxes boxes;
    runtime::MsgBox(u"asked"_s);
    boxes.clear();
}

void BoxesSample::didNotCome()
{
    testsupport::RecordedBoxes boxes;
    boxes.answer(runtime::vbOK);
}

void BoxesSample::unwatched()
{
    runtime::MsgBox(u"asked"_s);
}

ZOMREL_QTEST_MAIN(BoxesSample)
#include "boxes_sample_qtest.moc"
