#include "output/form_print.h"
#include "output/form_view.h"
#include "platform/runtime/run_time_error.h"

#include "support/doors.h"
#include "support/widgets.h"

#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPdfWriter>
#include <QPrinter>
#include <QPushButton>
#include <QTemporaryDir>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using testsupport::child;

namespace {

/// A sheet of paper. It stores what has been printed when the printer releases it.
class Page : public QImage
{
public:
    /// `fineness` is the number of printer dots per screen dot.
    Page(const QSize& dots, int fineness, QImage& printed)
        : QImage(dots, Format_RGB32), printed_(printed)
    {
        fill(Qt::white);
        setDotsPerMeterX(dotsPerMeter(output::formView().logicalDpiX() * fineness));
        setDotsPerMeterY(dotsPerMeter(output::formView().logicalDpiY() * fineness));
    }
    ~Page() override { printed_ = copy(); }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

private:
    static int dotsPerMeter(int dotsPerInch) { return int(std::lround(dotsPerInch * 100 / 2.54)); }

    QImage& printed_;
};

/// Replaces the default printer for its lifetime.
class Printer
{
public:
    explicit Printer(output::PrintDeviceDoor::Function door)
        : former_(output::printDeviceDoor().replace(std::move(door)))
    {
    }
    ~Printer() { output::printDeviceDoor().replace(std::move(former_)); }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

private:
    output::PrintDeviceDoor::Function former_;
};

QRect inkOf(const QImage& image, const QRect& area)
{
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixelColor(x, y).lightness() < 128)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

QRect times(const QRect& rect, int factor)
{
    return {rect.topLeft() * factor, rect.size() * factor};
}

QPushButton* button(const QString& name)
{
    return child<QPushButton>(output::formView(), name);
}

QRect placeOf(const QString& label)
{
    return child<QLabel>(output::formView(), label)->geometry();
}

void pressPrint()
{
    QTest::mouseClick(button(u"CmdPrint"_s), Qt::LeftButton);
}

bool areButtonsVisible()
{
    return button(u"CmdPrint"_s)->isVisible() && button(u"CmdClose"_s)->isVisible();
}

} // namespace

class FormPrintTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { output::formView().ShowModeless(); }
    void cleanup() { output::formView().Unload(); }

    void print_omitsTheButtons();
    void print_withAnyResolution_keepsTheScreenSize_data();
    void print_withAnyResolution_keepsTheScreenSize();
    void print_onNarrowPaper_isReduced();
    void print_toAPdfFile_writesAPdf();
    void print_withoutAPrinter_changesNothing();
    void print_withAFailingPrinter_isIgnored();
};

void FormPrintTest::print_omitsTheButtons()
{
    QImage printed;
    bool areHidden = false;
    const Printer printer([&] {
        areHidden = !button(u"CmdPrint"_s)->isVisible() && !button(u"CmdClose"_s)->isVisible();
        return std::make_unique<Page>(QSize(800, 1100), 1, printed);
    });
    pressPrint();
    QVERIFY(areHidden);
    QVERIFY(areButtonsVisible());
    QVERIFY(output::formView().isVisible());
    for (const QString& label : {u"Label1"_s, u"LabelDate"_s, u"Label9"_s, u"LabelHeight_3"_s})
        QVERIFY2(!inkOf(printed, placeOf(label)).isEmpty(), qPrintable(label));
    for (const QString& name : {u"CmdPrint"_s, u"CmdClose"_s})
        QVERIFY2(inkOf(printed, button(name)->geometry()).isEmpty(), qPrintable(name));
}

void FormPrintTest::print_withAnyResolution_keepsTheScreenSize_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("heading") << u"Label1"_s;
    QTest::newRow("date") << u"LabelDate"_s;
    QTest::newRow("column head") << u"Label4"_s;
    QTest::newRow("number") << u"LabelHeight_2"_s;
    QTest::newRow("condensed number") << u"LabelWidth_1"_s;
}

void FormPrintTest::print_withAnyResolution_keepsTheScreenSize()
{
    QFETCH(QString, label);
    output::formView().LabelWidth[1]->setText(u"31.6666666666667"_s);
    const auto inkAt = [&](int fineness) {
        QImage printed;
        const Printer printer(
            [&] { return std::make_unique<Page>(QSize(800, 1100) * fineness, fineness, printed); });
        pressPrint();
        return inkOf(printed, times(placeOf(label), fineness));
    };
    const QRect coarse = inkAt(1);
    const QRect fine = inkAt(4);
    QVERIFY(!coarse.isEmpty());
    const QRect expected = times(coarse, 4);
    QVERIFY(std::abs(fine.left() - expected.left()) <= 8);
    QVERIFY(std::abs(fine.right() - expected.right()) <= 8);
    QVERIFY(std::abs(fine.top() - expected.top()) <= 8);
    QVERIFY(std::abs(fine.bottom() - expected.bottom()) <= 8);
}

void FormPrintTest::print_onNarrowPaper_isReduced()
{
    QImage printed;
    const Printer printer([&] { return std::make_unique<Page>(QSize(325, 600), 1, printed); });
    pressPrint();
    const QRect caption = placeOf(u"Label15"_s);
    QVERIFY(!inkOf(printed, {caption.topLeft() / 2, caption.size() / 2}).isEmpty());
    QVERIFY(inkOf(printed, {0, 226, 325, 374}).isEmpty());
}

void FormPrintTest::print_toAPdfFile_writesAPdf()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"view.pdf"_s);
    const Printer printer([&] {
        auto pdf = std::make_unique<QPrinter>();
        pdf->setOutputFileName(path);
        pdf->setResolution(150);
        return pdf;
    });
    pressPrint();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray pdf = file.readAll();
    QVERIFY(pdf.startsWith("%PDF"));
    QCOMPARE(pdf.count("/Type /Page\n"), 1);
    QVERIFY(pdf.contains("/Subtype /Image"));
}

void FormPrintTest::print_withoutAPrinter_changesNothing()
{
    const testsupport::RecordedBoxes boxes;
    const Printer printer([] { return nullptr; });
    pressPrint();
    QVERIFY(boxes.shown().empty());
    QVERIFY(output::formView().isVisible());
    QVERIFY(areButtonsVisible());
}

void FormPrintTest::print_withAFailingPrinter_isIgnored()
{
    const testsupport::RecordedBoxes boxes;
    const testsupport::RecordedEnd end;
    {
        const Printer printer([]() -> std::unique_ptr<QPaintDevice> {
            throw runtime::RunTimeError(runtime::DiskFull);
        });
        pressPrint();
    }
    QVERIFY(areButtonsVisible());
    {
        const Printer printer(
            [] { return std::make_unique<QPdfWriter>(u"/no/such/folder/view.pdf"_s); });
        pressPrint();
    }
    QVERIFY(areButtonsVisible());
    QVERIFY(boxes.shown().empty());
    QVERIFY(!end.exitStatus());
}

ZOMREL_QTEST_MAIN(FormPrintTest)
#include "form_print_test.moc"
