#include "driving/opening.h"
#include "output/order_lines.h"
#include "output/order_report.h"
#include "platform/report/doors.h"
#include "platform/report/pdf_words.h"
#include "platform/report/preview_pages.h"

#include "support/doors.h"
#include "support/widgets.h"

#include <QMainWindow>
#include <QPainter>
#include <QTest>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

/// Returns the sections with the page header filled in like the print handler does.
std::vector<Section> headedSections()
{
    auto sections = makeSections(output::orderReportDesign);
    Section& head = sections[1];
    head.Controls(u"LabelDate"_s).setCaption(u"15/02/2026"_s);
    head.Controls(u"LabelOrder_Num"_s).setCaption(u"17"_s);
    head.Controls(u"LabelClientName"_s).setCaption(u"אלון"_s);
    head.Controls(u"LabelAddress"_s).setCaption(u"הרצל 12 חיפה"_s);
    head.Controls(u"LabelTel"_s).setCaption(u"03-1234567"_s);
    return sections;
}

std::unique_ptr<Document> orderDocument(const QList<Values>& lines,
                                        std::vector<Section> sections = headedSections())
{
    return std::make_unique<Document>(output::orderReportDesign, std::move(sections),
                                      orderLines(lines), a4Portrait);
}

const ControlDesign& designed(Role role, QStringView name)
{
    for (const ControlDesign& control : sectionOf(output::orderReportDesign, role)->controls) {
        if (control.name == name)
            return control;
    }
    qFatal("the design has no control %s", qPrintable(name.toString()));
}

constexpr int bodyLeft = 500;
constexpr int headTop = 1440;
constexpr int firstBlockTop = 1440 + 4020;
constexpr int blockHeight = 2250;
constexpr int footTop = 16838 - 1440 - 450;

/// Returns the rectangle of a control in a band with this top edge.
QRect boxOf(int bandTop, Role role, QStringView name)
{
    const ControlDesign& control = designed(role, name);
    return {bodyLeft + control.left, bandTop + control.top, control.width, control.height};
}

/// Returns the text printed inside the rectangle of a control.
QString printed(const PdfWords& pdf, int page, int bandTop, Role role, QStringView name)
{
    return pdf.at(page, boxOf(bandTop, role, name));
}

/// Returns the bounding box of a control's printed text in the first block of the first page.
QRectF inkInBlock(const PdfWords& pdf, QStringView name)
{
    return pdf.placeAt(0, boxOf(firstBlockTop, Role::Detail, name));
}

QString inBlock(const PdfWords& pdf, int block, QStringView name, int page = 0)
{
    return printed(pdf, page, firstBlockTop + block * blockHeight, Role::Detail, name);
}

QString inHead(const PdfWords& pdf, QStringView name, int page = 0)
{
    return printed(pdf, page, headTop, Role::PageHeader, name);
}

/// Maps each control to the text of its field.
const std::vector<std::pair<QString, QString>>& fieldsOfControls()
{
    static const std::vector<std::pair<QString, QString>> fields = [] {
        std::vector<std::pair<QString, QString>> found;
        for (const ControlDesign& control :
             sectionOf(output::orderReportDesign, Role::Detail)->controls) {
            if (control.kind == Kind::Field)
                found.emplace_back(control.name.toString(), control.text.toString());
        }
        return found;
    }();
    return fields;
}

QString asText(const QVariant& value)
{
    return value.typeId() == QMetaType::QDate ? value.toDate().toString(u"dd/MM/yyyy"_s)
                                              : value.toString();
}

} // namespace

class OrderPaperTest : public QObject
{
    Q_OBJECT

private slots:
    void eachKindOfLine_printsAllItsValues_data();
    void eachKindOfLine_printsAllItsValues();
    void texts_areAtTheirDesignedPlaces();
    void texts_haveTheirDesignedSizes();
    void pageHeaderAndFooter_areOnEveryPage();
    void fifthLine_startsASecondPage();
    void missingLogo_leavesItsPlaceBlank();
    void emptyCustomer_keepsTheCaptions();
    void mixedText_keepsItsReadingOrder();
    void tooWideText_endsWithAnEllipsis();
    void wideShutterValues_keepClearOfTheirCaptions();
    void negativeNumbers_haveTheirSignInFront();
    void nullValues_areBlank();
    void show_opensThePreview();
};

void OrderPaperTest::eachKindOfLine_printsAllItsValues_data()
{
    QTest::addColumn<Values>("line");
    QTest::newRow("ordinary") << ordinaryLine(1);
    QTest::newRow("monoblock") << monoblockLine(2);
    QTest::newRow("door") << doorLine(3);
}

void OrderPaperTest::eachKindOfLine_printsAllItsValues()
{
    QFETCH(Values, line);
    const PdfWords pdf(*orderDocument({line}));
    int checked = 0;
    for (const auto& [control, field] : fieldsOfControls()) {
        const QString column = field == u"Num"_s ? u"NUM"_s : field;
        QVERIFY2(line.contains(column), qPrintable(column));
        QVERIFY2(inBlock(pdf, 0, control) == asText(line[column]),
                 qPrintable(control + u": "_s + inBlock(pdf, 0, control)));
        ++checked;
    }
    QCOMPARE(checked, lineColumns().size());
}

void OrderPaperTest::texts_areAtTheirDesignedPlaces()
{
    const PdfWords pdf(*orderDocument({monoblockLine(1)}));
    const auto near = [](double found, double stated) { return qAbs(found - stated) <= 25; };
    // Right-aligned texts end at left plus width, or 40 twips before a border. Centred texts are in
    // the middle, left-aligned texts start at the left. All texts are centred vertically.
    const QRectF width = pdf.placeOf(0, u"118.75"_s);
    QVERIFY(near(width.right(), 500 + 3588 + 600 - 40));
    QVERIFY(near(width.center().y(), firstBlockTop + 420 + 150));
    const QRectF colour = pdf.placeOf(0, u"אפור"_s);
    QVERIFY(near(colour.right(), 500 + 1200 - 40));
    QVERIFY(near(colour.center().y(), firstBlockTop + 984 + 150));
    const QRectF date = pdf.placeOf(0, u"15/02/2026"_s);
    QVERIFY(near(date.center().x(), 500 + 270 + 1695 / 2.0));
    QVERIFY(near(date.center().y(), headTop + 2595 + 150));
    const QRectF part = pdf.placeOf(0, u"משקוף"_s);
    QVERIFY(near(part.left(), 500 + 4296));
    QVERIFY(near(part.center().y(), firstBlockTop + 360 + 150));
    const QRectF slats = pdf.placeOf(0, u"26"_s);
    QVERIFY(near(slats.center().x(), 500 + 1512 + 504 / 2.0));
    QVERIFY(near(slats.center().y(), firstBlockTop + 1872 + 150));
    const QRectF customer = pdf.placeOf(0, u"אלון"_s);
    QVERIFY(near(customer.right(), 500 + 3885 + 5055));
    QVERIFY(near(customer.center().y(), headTop + 2910 + 120));
    // The row of the mesh is above the row of the glass.
    QVERIFY(pdf.placeOf(0, u"רשת"_s).top() < pdf.placeOf(0, u"זכוכית"_s).top());
}

void OrderPaperTest::texts_haveTheirDesignedSizes()
{
    const PdfWords pdf(*orderDocument({monoblockLine(1)}));
    const auto points = [&](const QString& word) {
        return pdf.placeOf(0, word).height() / 20 / PdfWords::lineHeight();
    };
    const auto isSize = [&](const QString& word, double size) {
        return qAbs(points(word) - size) < 0.1;
    };
    QVERIFY(isSize(u"תאריך"_s, 15.75));
    QVERIFY(isSize(u"15/02/2026"_s, 14.25));
    QVERIFY(isSize(u"118.75"_s, 12));
    QVERIFY(isSize(u"מונובלוק"_s, 11.25));
    QVERIFY(isSize(u"דף"_s, 14.25));
}

void OrderPaperTest::pageHeaderAndFooter_areOnEveryPage()
{
    QList<Values> lines;
    for (int i = 1; i <= 9; ++i)
        lines += ordinaryLine(i);
    const PdfWords pdf(*orderDocument(lines));
    QCOMPARE(pdf.pageCount(), 3);
    QVERIFY(qAbs(pdf.paper().width() - 11906) <= 10);
    QVERIFY(qAbs(pdf.paper().height() - 16838) <= 10);
    for (int page = 0; page < 3; ++page) {
        QCOMPARE(inHead(pdf, u"Label1", page), u"תאריך הזמנה"_s);
        QCOMPARE(inHead(pdf, u"LabelDate", page), u"15/02/2026"_s);
        QCOMPARE(inHead(pdf, u"Label34", page), u"מס' הזמנה:"_s);
        QCOMPARE(inHead(pdf, u"LabelOrder_Num", page), u"17"_s);
        QCOMPARE(inHead(pdf, u"LabelClientName", page), u"אלון"_s);
        QCOMPARE(inHead(pdf, u"LabelAddress", page), u"הרצל 12 חיפה"_s);
        QCOMPARE(inHead(pdf, u"LabelTel", page), u"03-1234567"_s);
        QCOMPARE(printed(pdf, page, footTop, Role::PageFooter, u"Label3"),
                 QString::number(page + 1));
        QCOMPARE(printed(pdf, page, footTop, Role::PageFooter, u"Label36"), u"3"_s);
    }
}

void OrderPaperTest::fifthLine_startsASecondPage()
{
    QList<Values> lines;
    for (int i = 1; i <= 4; ++i)
        lines += ordinaryLine(i);
    const PdfWords full(*orderDocument(lines));
    QCOMPARE(full.pageCount(), 1);
    for (int block = 0; block < 4; ++block)
        QCOMPARE(inBlock(full, block, u"Text24"), QString::number(block + 1));
    lines += ordinaryLine(5);
    const PdfWords more(*orderDocument(lines));
    QCOMPARE(more.pageCount(), 2);
    QCOMPARE(inBlock(more, 3, u"Text24"), u"4"_s);
    QCOMPARE(inBlock(more, 0, u"Text24", 1), u"5"_s);
    QCOMPARE(inBlock(more, 1, u"Text24", 1), QString());
}

void OrderPaperTest::missingLogo_leavesItsPlaceBlank()
{
    // One pixel is ten twips, so the sheet has 1191 by 1684 pixels.
    const auto inked = [](Document& document) {
        QImage sheet(1191, 1684, QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        painter.scale(0.1, 0.1);
        document.paintPage(0, painter);
        return sheet;
    };
    auto sections = headedSections();
    QImage logo(1071, 201, QImage::Format_RGB32);
    logo.fill(Qt::red);
    sections[1].Controls(u"ImageCompanyLogo"_s).setPicture(logo);
    const auto with = orderDocument({ordinaryLine(1)}, sections);
    const auto without = orderDocument({ordinaryLine(1)});
    const QImage logoSheet = inked(*with);
    const QImage plainSheet = inked(*without);
    // 530, 1545 to 11240, 3555 in twips, reduced by one pixel.
    const QRect band(54, 156, 1068, 199);
    for (const QPoint& corner :
         {band.topLeft(), band.topRight(), band.bottomLeft(), band.bottomRight()}) {
        QCOMPARE(logoSheet.pixelColor(corner), QColor(Qt::red));
        QCOMPARE(plainSheet.pixelColor(corner), QColor(Qt::white));
    }
    // Everything else keeps its position.
    const QRect rest(0, 358, 1191, 1684 - 358);
    QCOMPARE(logoSheet.copy(rest), plainSheet.copy(rest));
    QCOMPARE(inHead(PdfWords(*without), u"LabelOrder_Num"), u"17"_s);
}

void OrderPaperTest::emptyCustomer_keepsTheCaptions()
{
    auto sections = headedSections();
    for (const QString& label : {u"LabelClientName"_s, u"LabelAddress"_s, u"LabelTel"_s})
        sections[1].Controls(label).setCaption(QString());
    const PdfWords pdf(*orderDocument({ordinaryLine(1)}, sections));
    QCOMPARE(inHead(pdf, u"Label18"), u"עבור לקוח :"_s);
    QCOMPARE(inHead(pdf, u"Label20"), u"כתובת :"_s);
    QCOMPARE(inHead(pdf, u"Label22"), u"טלפון :"_s);
    for (const QStringView label : {u"LabelClientName", u"LabelAddress", u"LabelTel"})
        QCOMPARE(inHead(pdf, label), QString());
}

void OrderPaperTest::mixedText_keepsItsReadingOrder()
{
    auto sections = headedSections();
    sections[1].Controls(u"LabelClientName"_s).setCaption(u"אלומיניום PVC 2000 חיפה"_s);
    const PdfWords pdf(*orderDocument({ordinaryLine(1)}, sections));
    const double first = pdf.placeOf(0, u"אלומיניום"_s).left();
    const double latin = pdf.placeOf(0, u"PVC"_s).left();
    const double digits = pdf.placeOf(0, u"2000"_s).left();
    const double last = pdf.placeOf(0, u"חיפה"_s).left();
    // The Latin word and the following number read left-to-right inside the Hebrew text.
    QVERIFY(first > digits && digits > latin && latin > last && last > 0);
}

void OrderPaperTest::tooWideText_endsWithAnEllipsis()
{
    const PdfWords pdf(*orderDocument({with(ordinaryLine(1), {{u"Mashkof_W"_s, 12345678901.25},
                                                              {u"Kanaf_H"_s, 2.0 / 3},
                                                              {u"Shalav_Count"_s, 12345678901.0},
                                                              {u"MyWidth"_s, 12345678.90123},
                                                              {u"Reshet_W"_s, 268.25},
                                                              {u"Reshet_H"_s, 131.325}})}));
    const std::pair<QStringView, QString> cells[] = {{u"Text4", u"12345678901.25"_s},
                                                     {u"Text10", u"0.666666666666667"_s},
                                                     {u"Text30", u"12345678901"_s}};
    for (const auto& [control, value] : cells) {
        const QString shown = inBlock(pdf, 0, control);
        QVERIFY2(shown.endsWith(u'…') && value.startsWith(shown.chopped(1)), qPrintable(shown));
        QVERIFY2(shown.size() >= 4 && shown.size() < value.size(), qPrintable(shown));
    }
    QCOMPARE(inBlock(pdf, 0, u"Width1"), u"12345678.90123"_s);
    QCOMPARE(inBlock(pdf, 0, u"Text19"), u"268.25"_s);
    QCOMPARE(inBlock(pdf, 0, u"Text20"), u"131.325"_s);
}

void OrderPaperTest::wideShutterValues_keepClearOfTheirCaptions()
{
    const PdfWords pdf(*orderDocument({with(monoblockLine(1), {{u"U_Thick"_s, 123.75},
                                                               {u"U_Cut"_s, 102.4},
                                                               {u"U_Vasa"_s, 118.25},
                                                               {u"Shalav_Thick"_s, 123.75},
                                                               {u"Shalav_Width"_s, 264.35},
                                                               {u"Shalav_Count"_s, 1000}})}));
    // From right to left, each caption has its value at its left.
    const QStringView row[] = {u"Label25", u"Text25", u"Label26", u"Text26", u"Label27", u"Text27",
                               u"Label29", u"Text29", u"Label30", u"Text30", u"Label28", u"Text28"};
    for (std::size_t i = 0; i + 1 < std::size(row); ++i) {
        const QRectF right = inkInBlock(pdf, row[i]);
        const QRectF left = inkInBlock(pdf, row[i + 1]);
        QVERIFY(!right.isEmpty() && !left.isEmpty());
        const double gap = right.left() - left.right();
        QVERIFY2(gap >= 39, qPrintable(row[i + 1].toString() + u" "_s + QString::number(gap)));
    }
    QCOMPARE(inBlock(pdf, 0, u"Text26"), u"102.4"_s);
    // The value is condensed but not moved.
    for (const QStringView value : {u"Text25", u"Text26", u"Text27", u"Text28"}) {
        const ControlDesign& control = designed(Role::Detail, value);
        const double middle = bodyLeft + control.left + control.width / 2.0;
        QVERIFY(qAbs(inkInBlock(pdf, value).center().x() - middle) < 5);
    }
}

void OrderPaperTest::negativeNumbers_haveTheirSignInFront()
{
    const PdfWords pdf(*orderDocument({with(
        monoblockLine(1), {{u"U_Cut"_s, -6.5}, {u"Glass_W"_s, -0.25}, {u"MYHeight_2"_s, -12.0}})}));
    QCOMPARE(inBlock(pdf, 0, u"Text26"), u"-6.5"_s); // This control is right-to-left.
    QCOMPARE(inBlock(pdf, 0, u"Text14"), u"-0.25"_s);
    QCOMPARE(inBlock(pdf, 0, u"Height2"), u"-12"_s);
}

void OrderPaperTest::nullValues_areBlank()
{
    Values nothing;
    for (const QString& column : lineColumns())
        nothing[column] = QVariant();
    const PdfWords pdf(*orderDocument({nothing}));
    for (const auto& [control, field] : fieldsOfControls())
        QVERIFY2(inBlock(pdf, 0, control).isEmpty(), qPrintable(control));
    QCOMPARE(inBlock(pdf, 0, u"Label35"), u"מס' פריט :"_s);
}

void OrderPaperTest::show_opensThePreview()
{
    const PaperDoor::Function former = paperDoor().replace([] { return a4Portrait; });
    DataReport& report = output::dataReport1();
    report.setDataSource(ordinaryLines(10));
    report.Sections(2).Controls(u"LabelOrder_Num"_s).setCaption(u"17"_s);
    report.Show();
    auto* window = qobject_cast<QMainWindow*>(driving::shownWindow(driving::names::preview));
    QVERIFY(window != nullptr);
    QCOMPARE(window->windowTitle(), u" דו\"ח הזמנות"_s);
    QVERIFY(window->isMaximized());
    auto* pages = child<PreviewPages>(*window, u"PreviewPages"_s);
    QCOMPARE(pages->property("pageCount").toInt(), 3);
    QCOMPARE(pages->property("currentPage").toInt(), 1);
    paperDoor().replace([] { return Paper{11799, 16838}; });
    QVERIFY_EXCEPTION_THROWN(report.Show(), runtime::RunTimeError);
    paperDoor().replace(former);
}

ZOMREL_QTEST_MAIN(OrderPaperTest)
#include "order_paper_test.moc"
