// Prints many random lines and reads every figure back from the PDF.

#include "output/order_lines.h"
#include "output/order_report_design.h"
#include "platform/report/pdf_words.h"
#include "platform/report/report_text.h"

#include "support/widgets.h"

#include <QTest>

#include <cmath>
#include <random>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

constexpr int lineCount = 2000;
constexpr int linesOfAPage = 4;
constexpr int bodyLeft = 500;
constexpr int firstBlockTop = 1440 + 4020;
constexpr int blockHeight = 2250;
/// Rounding error of positions in a PDF, in twips.
constexpr double rounding = 1;

const QStringList measures{u"MyWidth"_s,     u"MYHeight"_s,     u"MyWidth_2"_s,   u"MYHeight_2"_s,
                           u"Argaz_Width"_s, u"Argaz_Height"_s, u"Mashkof_W"_s,   u"Mashkof_H"_s,
                           u"Kanaf_W"_s,     u"Kanaf_H"_s,      u"Glass_W"_s,     u"Glass_H"_s,
                           u"Reshet_W"_s,    u"Reshet_H"_s,     u"U_Thick"_s,     u"U_Cut"_s,
                           u"U_Vasa"_s,      u"Shalav_Thick"_s, u"Shalav_Width"_s};
const QStringList counts{u"Mahkof_Count"_s, u"Kanaf_Count"_s, u"Glass_Count"_s, u"Reshet_Count"_s,
                         u"Shalav_Count"_s};

/// A random generator with the same results on every machine. The C++ standard specifies the engine
/// but not the distributions.
class Figures
{
public:
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

    /// Returns a size up to 999.99: in hundredths, in halves of hundredths, or in thirds.
    double measure()
    {
        const double hundredths = below(100000) / 100.0;
        switch (below(4)) {
        case 0:
            return hundredths / 2;
        case 1:
            return hundredths / 3;
        default:
            return hundredths;
        }
    }

private:
    std::mt19937 engine_{20260301};
};

QList<Values> randomLines()
{
    Figures figures;
    QList<Values> lines;
    for (int i = 1; i <= lineCount; ++i) {
        Values line = figures.below(2) == 0 ? ordinaryLine(i) : monoblockLine(i);
        for (const QString& column : measures)
            line[column] = figures.measure();
        for (const QString& column : counts)
            line[column] = figures.below(1000);
        lines += line;
    }
    return lines;
}

int significantDigits(const QString& figure)
{
    QString digits = figure;
    digits.removeIf([](QChar c) { return !c.isDigit(); });
    while (digits.startsWith(u'0'))
        digits.remove(0, 1);
    return static_cast<int>(digits.size());
}

QRect boxOf(int block, const ControlDesign& control)
{
    return {bodyLeft + control.left, firstBlockTop + block * blockHeight + control.top,
            control.width, control.height};
}

/// Returns what is wrong with a printed figure, or an empty text.
QString fault(const QString& stored, const QString& shown)
{
    if (shown == stored)
        return {};
    if (significantDigits(stored) <= 6)
        return u"lost a digit"_s;
    const bool isCutVisibly = shown.endsWith(u'…') && stored.startsWith(shown.chopped(1));
    return isCutVisibly ? QString() : u"cut without a sign"_s;
}

} // namespace

class OrderFiguresTest : public QObject
{
    Q_OBJECT

private slots:
    void randomFigures_arePrintedWholeInsideTheirCells();
};

void OrderFiguresTest::randomFigures_arePrintedWholeInsideTheirCells()
{
    const QList<Values> lines = randomLines();
    Document document(output::orderReportDesign, makeSections(output::orderReportDesign),
                      orderLines(lines), a4Portrait);
    const PdfWords pdf(document);
    QCOMPARE(pdf.pageCount(), lineCount / linesOfAPage);
    int compared = 0;
    int cut = 0;
    for (const ControlDesign& control :
         sectionOf(output::orderReportDesign, Role::Detail)->controls) {
        const QString column = control.text.toString();
        if (control.kind != Kind::Field || !(measures + counts).contains(column))
            continue;
        for (int i = 0; i < lineCount; ++i) {
            const int page = i / linesOfAPage;
            const QRect box = boxOf(i % linesOfAPage, control);
            const QString stored = valueText(lines[i][column]);
            const QString shown = pdf.at(page, box);
            const QString wrong = fault(stored, shown);
            QVERIFY2(wrong.isEmpty(), qPrintable(u"%1 of line %2: %3, printed as %4: %5"_s.arg(
                                          column, QString::number(i + 1), stored, shown, wrong)));
            const QRectF ink = pdf.placeAt(page, box);
            QVERIFY2(ink.left() >= box.left() - rounding &&
                         ink.right() <= box.left() + box.width() + rounding,
                     qPrintable(u"%1 of line %2 leaves its cell: %3, %4 to %5"_s.arg(
                         column, QString::number(i + 1), stored,
                         QString::number(ink.left() - box.left()),
                         QString::number(ink.right() - box.left()))));
            ++compared;
            cut += shown.endsWith(u'…') ? 1 : 0;
        }
    }
    QCOMPARE(compared, lineCount * int(measures.size() + counts.size()));
    QVERIFY(cut > 0);
}

ZOMREL_QTEST_MAIN(OrderFiguresTest)
#include "order_figures_test.moc"
