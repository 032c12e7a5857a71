#include "output/form_view.h"

#include "output/fitted_label.h"
#include "output/form_print.h"
#include "platform/controls/form.h"
#include "platform/dao/database.h"
#include "store/store_access.h"

#include "support/doors.h"
#include "support/errors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QPaintDevice>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;
using output::formView;
using testsupport::child;

namespace {

QLabel* label(const QString& name)
{
    return child<QLabel>(formView(), name);
}

QLabel* label(const QString& array, int index)
{
    return label(u"%1_%2"_s.arg(array).arg(index));
}

QPushButton* button(const QString& name)
{
    return child<QPushButton>(formView(), name);
}

/// Returns the shaped text of a label.
report::ShapedText drawn(const QLabel* label)
{
    return dynamic_cast<const output::FittedLabel&>(*label).shapedText();
}

const QString lineOfOrder = u"SELECT * FROM CUTS WHERE ORDER_NUM = %1 ORDER BY ORDER_DATE ASC"_s;

std::shared_ptr<dao::Recordset> linesOf(int order)
{
    return store::OpenMyDataBase()->OpenRecordset(lineOfOrder.arg(order), dao::dbOpenDynaset);
}

/// Returns the number of the error that filling throws, or 0.
int errorOfFilling(dao::Recordset& line)
{
    return testsupport::errorOf([&line] { output::fillFromLine(formView(), line); });
}

} // namespace

class FormViewTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void labels_haveTheirLayout_data();
    void labels_haveTheirLayout();
    void partLabels_haveTheirLayout_data();
    void partLabels_haveTheirLayout();
    void window_hasItsProperties();
    void window_staysAboveTheMainWindow();
    void buttons_haveTheirLayout();
    void load_leavesTheFigureLabelsBlank();
    void labels_areHighEnoughForTheirFont();
    void numbers_readLeftToRight();
    void wideNumber_isCondensed();
    void longColour_endsWithAnEllipsis();
    void text_isDrawnInsideItsLabel();

    void fillFromLine_showsTheStoredValues();
    void fillFromLine_withNullTexts_leavesThemBlank();
    void fillFromLine_withANullNumber_failsWithInvalidUseOfNull_data();
    void fillFromLine_withANullNumber_failsWithInvalidUseOfNull();
    void fillFromLine_withoutACurrentRow_failsWithNoCurrentRecord();
    void fillFromLine_ofAnOpenView_replacesTheTexts();

    void formView_isASingleInstance();
    void showModal_returnsAfterUnload();
    void showModal_ofAnOpenView_makesItModal();
    void buttonEscapeAndCloseBox_closeTheView();
    void enter_closesAndPrintsNothingMore();

private:
    testsupport::FixedToday today_{QDate(2026, 3, 1)};
};

void FormViewTest::cleanup()
{
    if (output::isFormViewLoaded())
        formView().Unload();
    QVERIFY(!output::isFormViewLoaded());
}

void FormViewTest::labels_haveTheirLayout_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRect>("twips");
    QTest::addColumn<double>("points");
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("alignment");

    const auto row = [](const char* name, const QString& text, const QRect& twips, double points,
                        const QString& style, int alignment) {
        QTest::newRow(name) << text << twips << points << style << alignment;
    };
    const QString bold = u"bold"_s;
    const QString under = u"underlined"_s;
    const int left = Qt::AlignLeft;
    const int right = Qt::AlignRight;
    const int centre = Qt::AlignHCenter;
    row("Label1", u"הזמנה"_s, {4080, 120, 2535, 615}, 20.25, bold, centre);
    row("Label17", u"תאריך :"_s, {1440, 240, 855, 375}, 14.25, bold, right);
    row("LabelDate", u"01/03/2026"_s, {120, 240, 1215, 375}, 14.25, bold, right);
    row("Label13", u"שם סדרה :"_s, {5040, 1200, 1455, 255}, 14.25, {}, left);
    row("LabelName", {}, {840, 1200, 4095, 255}, 14.25, {}, right);
    row("Label2", u"רוחב הפתח"_s, {4440, 2280, 1695, 255}, 14.25, under, right);
    row("Label3", u"גובה הפתח"_s, {2280, 2280, 1455, 255}, 14.25, under, right);
    row("LabelOpenWidth", {}, {4920, 2760, 1215, 375}, 14.25, {}, centre);
    row("LabelOpenHeight", {}, {2520, 2760, 1215, 375}, 14.25, {}, centre);
    row("Label15", u"פריט"_s, {7920, 3840, 735, 255}, 14.25, under, right);
    row("Label11", u"רוחב"_s, {6600, 3840, 975, 255}, 14.25, under, right);
    row("Label10", u"גובה"_s, {5280, 3840, 1095, 255}, 14.25, under, right);
    row("Label4", u"כמות"_s, {4680, 3840, 615, 255}, 14.25, under, right);
    row("Label5", u"סוג"_s, {2160, 3840, 2175, 255}, 14.25, under, right);
    row("Label14", u"צבע"_s, {120, 3840, 1695, 255}, 14.25, under, right);
    row("Label6", u"משקוף :"_s, {7920, 4320, 0, 255}, 14.25, {}, left);
    row("Label7", u"כנף :"_s, {7920, 4680, 0, 255}, 14.25, {}, left);
    row("Label8", u"זכוכית :"_s, {7920, 5040, 0, 255}, 14.25, {}, left);
    row("Label9", u"רשת :"_s, {7920, 5400, 0, 255}, 14.25, {}, left);
}

void FormViewTest::labels_haveTheirLayout()
{
    QFETCH(QString, text);
    QFETCH(QRect, twips);
    QFETCH(double, points);
    QFETCH(QString, style);
    QFETCH(int, alignment);

    formView().ShowModeless();
    const QLabel* shown = label(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(shown->text(), text);
    QCOMPARE(shown->pos(), twips.topLeft() / 15);
    if (twips.width() > 0)
        QCOMPARE(shown->width(), twips.width() / 15);
    QVERIFY(shown->height() >= twips.height() / 15);
    QCOMPARE(shown->font().family(), u"David"_s);
    QCOMPARE(shown->font().pointSizeF(), points);
    QCOMPARE(shown->font().bold(), style == u"bold"_s);
    QCOMPARE(shown->font().underline(), style == u"underlined"_s);
    QCOMPARE(int(shown->alignment() & (Qt::AlignLeft | Qt::AlignRight | Qt::AlignHCenter)),
             alignment);
    QVERIFY(alignment == Qt::AlignHCenter || shown->alignment().testFlag(Qt::AlignAbsolute));
}

void FormViewTest::partLabels_haveTheirLayout_data()
{
    QTest::addColumn<QString>("array");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("width");
    QTest::newRow("widths") << u"LabelWidth"_s << 6480 << 1095;
    QTest::newRow("heights") << u"LabelHeight"_s << 5280 << 1095;
    QTest::newRow("counts") << u"LabelCount"_s << 4560 << 615;
    QTest::newRow("kinds") << u"LabelKind"_s << 2040 << 2295;
    QTest::newRow("colours") << u"LabelColor"_s << 120 << 1815;
}

void FormViewTest::partLabels_haveTheirLayout()
{
    QFETCH(QString, array);
    QFETCH(int, left);
    QFETCH(int, width);
    const int tops[] = {4320, 4680, 5040, 5400};
    for (int part = 0; part < 4; ++part) {
        const QLabel* cell = label(array, part);
        QCOMPARE(cell->pos(), QPoint(left, tops[part]) / 15);
        QCOMPARE(cell->width(), width / 15);
        QVERIFY(cell->height() >= 255 / 15);
        QCOMPARE(cell->font().family(), u"David"_s);
        QCOMPARE(cell->font().pointSizeF(), 12.0);
        QVERIFY(!cell->font().bold() && !cell->font().underline());
        QVERIFY(cell->alignment().testFlag(Qt::AlignRight));
        QVERIFY(cell->alignment().testFlag(Qt::AlignAbsolute));
    }
}

void FormViewTest::window_hasItsProperties()
{
    formView().ShowModeless();
    QCOMPARE(formView().objectName(), u"FormView"_s);
    QCOMPARE(formView().windowTitle(), u"הזמנה"_s);
    QCOMPARE(formView().size(), QSize(650, 450));
    const QPoint off = formView().geometry().center() - formView().screen()->geometry().center();
    QVERIFY(std::abs(off.x()) <= 1 && std::abs(off.y()) <= 1);
}

void FormViewTest::window_staysAboveTheMainWindow()
{
    QMainWindow mainWindow;
    auto* area = new QMdiArea;
    mainWindow.setCentralWidget(area);
    mainWindow.setGeometry(0, 0, 300, 200);
    controls::setFrame(area);
    mainWindow.show();
    formView().ShowModeless();
    controls::setFrame(nullptr);
    QCOMPARE(formView().parentWidget(), &mainWindow);
    QVERIFY(formView().isWindow());
    QCOMPARE(formView().size(), QSize(650, 450));
    const QPoint off = formView().geometry().center() - formView().screen()->geometry().center();
    QVERIFY(std::abs(off.x()) <= 1 && std::abs(off.y()) <= 1);
    formView().Unload();
}

void FormViewTest::buttons_haveTheirLayout()
{
    QCOMPARE(button(u"CmdPrint"_s)->text(), u"הדפס"_s);
    QCOMPARE(button(u"CmdPrint"_s)->geometry(), QRect(256, 400, 65, 33));
    QCOMPARE(button(u"CmdClose"_s)->text(), u"סגור"_s);
    QCOMPARE(button(u"CmdClose"_s)->geometry(), QRect(136, 400, 65, 33));
    QVERIFY(!button(u"CmdPrint"_s)->icon().isNull());
    QVERIFY(!button(u"CmdClose"_s)->icon().isNull());
}

void FormViewTest::load_leavesTheFigureLabelsBlank()
{
    for (const QString& name : {u"LabelName"_s, u"LabelOpenWidth"_s, u"LabelOpenHeight"_s})
        QCOMPARE(label(name)->text(), QString());
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(label(u"LabelKind"_s, i)->text(), QString());
        QCOMPARE(label(u"LabelColor"_s, i)->text(), QString());
        QCOMPARE(label(u"LabelCount"_s, i)->text(), QString());
        QCOMPARE(label(u"LabelWidth"_s, i)->text(), QString());
        QCOMPARE(label(u"LabelHeight"_s, i)->text(), i == 0 ? QString() : u"Label17"_s);
    }
    QCOMPARE(label(u"LabelDate"_s)->text(), u"01/03/2026"_s);
}

void FormViewTest::labels_areHighEnoughForTheirFont()
{
    const QList<QLabel*> all = formView().findChildren<QLabel*>();
    QCOMPARE(all.size(), 15 + 4 + 20);
    for (const QLabel* each : all) {
        QVERIFY2(each->height() >= each->fontMetrics().height(), qPrintable(each->objectName()));
        const report::ShapedText shaped = drawn(each);
        QVERIFY2(!shaped.fit.isCut, qPrintable(each->objectName()));
        QVERIFY2(shaped.fit.size == 100, qPrintable(each->objectName()));
        QVERIFY2(shaped.lines[0].width <= each->width() * 15, qPrintable(each->objectName()));
    }
}

void FormViewTest::numbers_readLeftToRight()
{
    for (const QLabel* each : {formView().LabelWidth[0], formView().LabelHeight[3],
                               formView().LabelOpenWidth, formView().LabelDate})
        QCOMPARE(each->layoutDirection(), Qt::LeftToRight);
    QCOMPARE(formView().LabelKind[0]->layoutDirection(), Qt::RightToLeft);
}

void FormViewTest::wideNumber_isCondensed()
{
    QLabel* cell = formView().LabelWidth[1]; // This label is 73 pixels wide.
    cell->setText(u"67.46666"_s);
    const report::ShapedText shaped = drawn(cell);
    QCOMPARE(shaped.lines[0].text, u"67.46666"_s);
    QVERIFY(!shaped.fit.isCut && shaped.lines[0].width <= 73 * 15);
    cell->setText(u"31.6666666666667"_s);
    const report::ShapedText smaller = drawn(cell);
    QCOMPARE(smaller.lines[0].text, u"31.6666666666667"_s);
    QVERIFY(smaller.fit.stretch == 75 && smaller.fit.size < 100);
    QVERIFY(smaller.lines[0].width <= 73 * 15);
    // The cell is right-aligned.
    QCOMPARE(smaller.lines[0].corner.x(), 73 * 15 - smaller.lines[0].width);
}

void FormViewTest::longColour_endsWithAnEllipsis()
{
    QLabel* colour = formView().LabelColor[0];
    colour->setText(u"ירוק בקבוק מטלי RAL 6005"_s);
    QVERIFY(!drawn(colour).fit.isCut);
    QVERIFY(drawn(colour).fit != report::Fit());
    const QString longer = u"ירוק בקבוק מטלי כהה במיוחד עם ברק עדין RAL 6005"_s;
    colour->setText(longer);
    const report::ShapedText shaped = drawn(colour);
    QVERIFY(shaped.fit.isCut);
    const QString shown = shaped.lines[0].text;
    QVERIFY2(shown.endsWith(u'…') && longer.startsWith(shown.chopped(1)), qPrintable(shown));
    QCOMPARE(colour->text(), longer);
}

void FormViewTest::text_isDrawnInsideItsLabel()
{
    QLabel* cell = formView().LabelWidth[1];
    formView().ShowModeless();
    cell->setText(u"31.6666666666667"_s);
    const QImage image = cell->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto hasInk = [&](int x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qGray(image.pixel(x, y)) < 160)
                return true;
        }
        return false;
    };
    int first = 0;
    while (first < image.width() && !hasInk(first))
        ++first;
    int last = image.width() - 1;
    while (last > first && !hasInk(last))
        --last;
    // The drawn width equals the shaped width to one pixel on each side.
    const double scale = image.devicePixelRatio() / 15;
    QVERIFY(qAbs(last - first + 1 - drawn(cell).lines[0].width * scale) <= 3);
    QVERIFY(last >= image.width() - 4);
}

void FormViewTest::fillFromLine_showsTheStoredValues()
{
    testsupport::TemporaryStore store;
    store.addLine(7, 1, u"בלגי 7000"_s);
    store.execute(u"UPDATE Cuts SET MyWidth=1234.5, MYHeight=100, Mashkof_W=1, Mashkof_H=2.25, "
                  "Kanaf_W=31.6666666666667, Kanaf_H=4, Glass_W=5, Glass_H=0.1, Reshet_W=-7.5, "
                  "Reshet_H=8, Mashof_Kind='k0', Mahkof_Color='c0', Mahkof_Count=2, "
                  "Kanaf_Kind='k1', Kanaf_Color='c1', Kanaf_Count=4, Glass_Kind='k2', "
                  "Glass_Color='c2', Glass_Count=3, Reshet_Kind='k3', Reshet_Color='c3', "
                  "Reshet_Count=5"_s);
    output::fillFromLine(formView(), *linesOf(7));

    QCOMPARE(label(u"LabelName"_s)->text(), u"בלגי 7000"_s);
    QCOMPARE(label(u"LabelDate"_s)->text(), u"01/03/2026"_s);
    QCOMPARE(label(u"LabelOpenWidth"_s)->text(), u"1234.5"_s);
    QCOMPARE(label(u"LabelOpenHeight"_s)->text(), u"100"_s);
    const QString widths[] = {u"1"_s, u"31.6666666666667"_s, u"5"_s, u"-7.5"_s};
    const QString heights[] = {u"2.25"_s, u"4"_s, u"0.1"_s, u"8"_s};
    const QString counts[] = {u"2"_s, u"4"_s, u"3"_s, u"5"_s};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(label(u"LabelWidth"_s, i)->text(), widths[i]);
        QCOMPARE(label(u"LabelHeight"_s, i)->text(), heights[i]);
        QCOMPARE(label(u"LabelCount"_s, i)->text(), counts[i]);
        QCOMPARE(label(u"LabelKind"_s, i)->text(), u"k%1"_s.arg(i));
        QCOMPARE(label(u"LabelColor"_s, i)->text(), u"c%1"_s.arg(i));
    }
}

void FormViewTest::fillFromLine_withNullTexts_leavesThemBlank()
{
    testsupport::TemporaryStore store;
    store.addLine(7, 1);
    store.execute(u"UPDATE Cuts SET Name=NULL, Kanaf_Kind=NULL, Reshet_Color=NULL, "
                  "Mashof_Kind='k', Mahkof_Color='c', Glass_Count=3"_s);
    output::fillFromLine(formView(), *linesOf(7));
    QCOMPARE(label(u"LabelName"_s)->text(), QString());
    QCOMPARE(label(u"LabelKind"_s, 1)->text(), QString());
    QCOMPARE(label(u"LabelColor"_s, 3)->text(), QString());
    QCOMPARE(label(u"LabelKind"_s, 0)->text(), u"k"_s);
    QCOMPARE(label(u"LabelColor"_s, 0)->text(), u"c"_s);
    QCOMPARE(label(u"LabelCount"_s, 2)->text(), u"3"_s);
}

void FormViewTest::fillFromLine_withANullNumber_failsWithInvalidUseOfNull_data()
{
    QTest::addColumn<QString>("field");
    for (const QString& field :
         {u"MyWidth"_s, u"MYHeight"_s, u"Mashkof_W"_s, u"Mashkof_H"_s, u"Kanaf_W"_s, u"Kanaf_H"_s,
          u"Glass_W"_s, u"Glass_H"_s, u"Reshet_W"_s, u"Reshet_H"_s, u"Mahkof_Count"_s,
          u"Kanaf_Count"_s, u"Glass_Count"_s, u"Reshet_Count"_s})
        QTest::newRow(qPrintable(field)) << field;
}

void FormViewTest::fillFromLine_withANullNumber_failsWithInvalidUseOfNull()
{
    QFETCH(QString, field);
    testsupport::TemporaryStore store;
    store.addLine(7, 1);
    store.execute(u"UPDATE Cuts SET %1=NULL"_s.arg(field));
    QCOMPARE(errorOfFilling(*linesOf(7)), int(runtime::InvalidUseOfNull));
}

void FormViewTest::fillFromLine_withoutACurrentRow_failsWithNoCurrentRecord()
{
    const testsupport::TemporaryStore store;
    QCOMPARE(errorOfFilling(*linesOf(7)), int(runtime::NoCurrentRecord));
}

void FormViewTest::fillFromLine_ofAnOpenView_replacesTheTexts()
{
    testsupport::TemporaryStore store;
    store.addLine(7, 1, u"first"_s);
    store.addLine(8, 1);
    store.execute(u"UPDATE Cuts SET Glass_Kind='g', Glass_Color='h' WHERE Order_Num=7"_s);
    store.execute(u"UPDATE Cuts SET Name=NULL, Glass_Kind=NULL, Glass_Color=NULL, Kanaf_Count=9 "
                  "WHERE Order_Num=8"_s);
    output::fillFromLine(formView(), *linesOf(7));
    QCOMPARE(label(u"LabelKind"_s, 2)->text(), u"g"_s);
    output::fillFromLine(formView(), *linesOf(8));
    QCOMPARE(label(u"LabelName"_s)->text(), QString());
    QCOMPARE(label(u"LabelKind"_s, 2)->text(), QString());
    QCOMPARE(label(u"LabelColor"_s, 2)->text(), QString());
    QCOMPARE(label(u"LabelCount"_s, 1)->text(), u"9"_s);
}

void FormViewTest::formView_isASingleInstance()
{
    QVERIFY(!output::isFormViewLoaded());
    output::FormView* first = &formView();
    QVERIFY(output::isFormViewLoaded());
    QCOMPARE(&formView(), first);
    first->LabelName->setText(u"old"_s);
    first->ShowModeless();
    QVERIFY(first->isVisible());
    QVERIFY(!first->isModal());
    const QPointer<output::FormView> watched(first);
    first->Unload();
    QVERIFY(!output::isFormViewLoaded());
    QTRY_VERIFY(watched.isNull());
    QCOMPARE(label(u"LabelName"_s)->text(), QString());
}

void FormViewTest::showModal_returnsAfterUnload()
{
    bool wasModal = false;
    QTimer::singleShot(0, this, [&] {
        wasModal = formView().isModal() && formView().isVisible();
        QTest::mouseClick(button(u"CmdClose"_s), Qt::LeftButton);
    });
    formView().ShowModal();
    QVERIFY(wasModal);
    QVERIFY(!output::isFormViewLoaded());
}

void FormViewTest::showModal_ofAnOpenView_makesItModal()
{
    formView().ShowModeless();
    output::FormView* open = &formView();
    bool wasModal = false;
    QTimer::singleShot(0, this, [&] {
        wasModal = open->isModal() && open->isVisible() && open == &formView() &&
                   QApplication::activeModalWidget() == open;
        open->close();
    });
    formView().ShowModal();
    QVERIFY(wasModal);
    QVERIFY(!output::isFormViewLoaded());
}

void FormViewTest::buttonEscapeAndCloseBox_closeTheView()
{
    formView().ShowModeless();
    QTest::keyClick(&formView(), Qt::Key_Escape);
    QVERIFY(!output::isFormViewLoaded());

    formView().ShowModeless();
    formView().close();
    QVERIFY(!output::isFormViewLoaded());

    formView().ShowModeless();
    QTest::mouseClick(button(u"CmdClose"_s), Qt::LeftButton);
    QVERIFY(!output::isFormViewLoaded());
}

void FormViewTest::enter_closesAndPrintsNothingMore()
{
    int prints = 0;
    const auto former = output::printDeviceDoor().replace([&prints] {
        ++prints;
        return std::unique_ptr<QPaintDevice>();
    });
    formView().ShowModeless();
    QVERIFY(QTest::qWaitForWindowActive(&formView()));
    QCOMPARE(QApplication::focusWidget(), button(u"CmdClose"_s));
    QTest::mouseClick(button(u"CmdPrint"_s), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), button(u"CmdClose"_s)); // Also after printing.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    output::printDeviceDoor().replace(former);
    QVERIFY(!output::isFormViewLoaded());
    QCOMPARE(prints, 1);
}

ZOMREL_QTEST_MAIN(FormViewTest)
#include "form_view_test.moc"
