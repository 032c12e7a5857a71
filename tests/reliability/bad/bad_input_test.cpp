#include "base/input_boxes.h"
#include "calculation/form_select_serial.h"
#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "orders/order_head.h"
#include "output/form_view.h"
#include "platform/controls/db_combo.h"
#include "reliability/bad/typed_texts.h"
#include "reliability/figures.h"
#include "tools/store/checker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QTest>

#include <array>
#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// Enters unusual texts into the boxes of an opening, a customer and a monoblock. Each text is
/// refused, ends the program with an error box, or yields a correct row; the store stays sound.
class BadInputTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void cleanupTestCase();

    void oddMeasure_isStoredOrRefused_data();
    void oddMeasure_isStoredOrRefused();
    void oddDoorThickness_isStoredOrRefused_data() { texts({4, 5}); }
    void oddDoorThickness_isStoredOrRefused();
    void oddMonoblockValue_isStoredOrRefused_data() { texts({0, 1, 2, 3, 4, 5}); }
    void oddMonoblockValue_isStoredOrRefused();
    void oddCustomerText_isStoredOrRefused_data();
    void oddCustomerText_isStoredOrRefused();
    void oneCustomerTextTooLong_storesNoneOfThem_data();
    void oneCustomerTextTooLong_storesNoneOfThem();
    void oddMeasureInPreCalculation_isShownOrRefused_data() { texts({0, 1, 2, 3}); }
    void oddMeasureInPreCalculation_isShownOrRefused();
    void oddKindOrColour_isStoredOrRefused_data();
    void oddKindOrColour_isStoredOrRefused();

private:
    static void texts(const QList<int>& boxes);
    void chooseSeries(const QString& sign = {}, int monoblockBox = -1, const QString& text = {});
    void type(int box, const QString& text) const;
    void typeOpening(int box, const QString& text);
    void expectOutcome(int error, const QString& field, double value);

    std::unique_ptr<Desk> desk_;
    int typed_ = 0;
};

namespace {

/// Marks a text that the program refuses with a message box of its own.
constexpr int refused = -1;

/// Returns the boxes to try. An input is validated before the store is accessed, so one box is
/// enough on a server.
QList<int> triedBoxes(const QList<int>& boxes)
{
    return testsupport::isOnServer() ? boxes.mid(0, 1) : boxes;
}

} // namespace

void BadInputTest::init()
{
    desk_ = std::make_unique<Desk>();
    Module1::IsMonoblock = false;
    Module1::IsDoorFrame = false;
    desk_->store.addOrder(1);
    desk_->openOrder(1);
}

void BadInputTest::cleanup()
{
    // Without this call, events of the picker would accumulate over all rows and slow down each
    // posting of an event.
    QCoreApplication::sendPostedEvents();
    QCOMPARE(storetools::checkStore(desk_->store.path()), QStringList());
    desk_.reset();
    ++typed_;
}

void BadInputTest::cleanupTestCase()
{
    reliability::writeFigures(u"bad_input"_s,
                              {{u"texts typed into an order's boxes"_s, QString::number(typed_)}});
}

void BadInputTest::texts(const QList<int>& boxes)
{
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<double>("value");
    for (const int box : triedBoxes(boxes)) {
        for (const TypedText& each : typedNumbers())
            QTest::addRow("%d, %s", box, each.name) << box << each.text << each.error << each.value;
        QTest::addRow("%d, zero", box) << box << u"0"_s << correct << 0.0;
        QTest::addRow("%d, longest", box)
            << box << QString(32767, u'9') << int{runtime::Overflow} << 0.0;
    }
}

/// Chooses the only series in the picker. A text may be entered into one of the monoblock's boxes.
void BadInputTest::chooseSeries(const QString& sign, int monoblockBox, const QString& text)
{
    desk_->store.addSeries(u"סדרה"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2,
                           sign.isEmpty() ? QVariant() : sign);
    desk_->click("CmdPicSerial");
    calculation::FormSelectSerial& picker = calculation::formSelectSerial();
    if (monoblockBox >= 0) {
        picker.CheckKind->setChecked(true);
        picker.ComboMonoBlock->setCurrentIndex(0);
        setWhole(*picker.TextNum[static_cast<std::size_t>(monoblockBox)], text);
    }
    picker.CmdPic->click();
    picker.close();
}

void BadInputTest::type(int box, const QString& text) const
{
    setWhole(*desk_->form()->opening().TextNum[static_cast<std::size_t>(box)], text);
}

/// Chooses the series and enters the text into one box of an opening of 100 by 100.
void BadInputTest::typeOpening(int box, const QString& text)
{
    chooseSeries();
    for (int each = 0; each < 4; ++each)
        type(each, each % 2 == 0 ? u"100"_s : u"00"_s);
    type(box, text);
}

/// Expects an error box and no line, or one line with this value in the field.
void BadInputTest::expectOutcome(int error, const QString& field, double value)
{
    const int lines = desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt();
    if (error == correct) {
        QVERIFY2(desk_->boxes.shown().empty(),
                 desk_->boxes.shown().empty() ? "" : qPrintable(desk_->boxes.shown().back().text));
        QCOMPARE(lines, 1);
        const double stored = desk_->store.scalar(u"SELECT %1 FROM Cuts"_s.arg(field)).toDouble();
        QVERIFY2(std::abs(stored - value) < 1e-9, qPrintable(QString::number(stored, 'g', 17)));
        return;
    }
    QCOMPARE(lines, 0);
    const QStringList shown = desk_->boxes.takeUnexpected();
    QCOMPARE(shown.size(), 1);
    const QString text = shown.front();
    if (error == refused) {
        QCOMPARE(text, u"ערך נומרי 0 !"_s);
        QVERIFY(!desk_->end.exitStatus());
        return;
    }
    QVERIFY2(text.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(text));
    QCOMPARE(desk_->end.exitStatus(), std::optional(1));
}

void BadInputTest::oddMeasure_isStoredOrRefused_data()
{
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<double>("value");
    for (const int box : triedBoxes({0, 1, 2, 3})) {
        const bool whole = box % 2 == 0;
        const auto row = [&](const char* name, const QString& text, int error, double value) {
            // The value of a whole box is the measure itself; the value of a hundredths box is
            // added to the whole part 100.
            QTest::addRow("%d, %s", box, name)
                << box << text << error << (whole ? value : 100 + value / 100);
        };
        for (const TypedText& each : typedNumbers()) {
            const bool isZero = each.error == correct && each.value == 0;
            row(each.name, each.text, isZero && whole ? refused : each.error, each.value);
        }
        row("zero", u"0"_s, whole ? refused : correct, 0);
        row("negative zero", u"-0"_s, whole ? refused : correct, 0);
        row("longest", QString(32767, u'9'), runtime::Overflow, 0);
    }
}

void BadInputTest::oddMeasure_isStoredOrRefused()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    typeOpening(box, text);
    desk_->click("CmdAdd");
    expectOutcome(error, box < 2 ? u"MyWidth"_s : u"MYHeight"_s, value);
}

/// The thickness of the door frame is subtracted from the width twice.
void BadInputTest::oddDoorThickness_isStoredOrRefused()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    chooseSeries(u"d2000"_s);
    type(0, u"90"_s);
    type(2, u"210"_s);
    type(4, u"3"_s);
    type(5, u"50"_s);
    type(box, text);
    desk_->click("CmdAdd");
    const double thickness = box == 4 ? value + 0.5 : 3 + value / 100;
    expectOutcome(error, u"MyWidth_2"_s, 90 - 2 * thickness);
}

/// The first monoblock type proposes a width deduction of 2.80, a height deduction of 18.00 and
/// slats of 4.50.
void BadInputTest::oddMonoblockValue_isStoredOrRefused()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    chooseSeries({}, box, text);
    if (error != correct) {
        expectOutcome(error, {}, 0);
        QCOMPARE(desk_->label("LabelSerial"), u"סדרה"_s);
        return;
    }
    type(0, u"90"_s);
    type(2, u"210"_s);
    desk_->click("CmdAdd");
    const std::array<double, 3> proposed{2.8, 18, 4.5};
    const double proposal = proposed[std::size_t(box) / 2];
    const double whole = std::floor(proposal);
    const double measure = box % 2 == 0 ? value + proposal - whole : whole + value / 100;
    if (box < 2)
        expectOutcome(correct, u"MyWidth_2"_s, 90 - measure);
    else if (box < 4)
        expectOutcome(correct, u"MYHeight_2"_s, 210 - measure);
    else
        expectOutcome(correct, u"Shalav_Thick"_s, measure);
}

void BadInputTest::oddCustomerText_isStoredOrRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text << storingError(each);
    QTest::newRow("full") << QString(20, u'ש') << correct;
    QTest::newRow("one too long") << QString(51, u'ש') << int{runtime::FieldTooSmall};
    QTest::newRow("longest") << QString(32767, u'ש') << int{runtime::FieldTooSmall};
}

/// A customer's text is stored unchanged, an empty one as Null. A text that is too long ends the
/// program and leaves the stored details unchanged.
void BadInputTest::oddCustomerText_isStoredOrRefused()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    for (const char* box : {"TextCustomerName", "TextCustomerAddress", "TextCustomerTel"})
        setWhole(*desk_->on<QLineEdit>(box), text);
    const QString shown = keptText(desk_->box("TextCustomerName"));
    desk_->click("CmdPrint");
    const auto row =
        desk_->store.rows(u"SELECT CustomerName, CustomerAddress, CustomerTel FROM Orders"_s)
            .constFirst();
    if (error == correct) {
        QVERIFY(desk_->boxes.shown().empty());
        for (const QVariant& each : row)
            QCOMPARE(each.isNull() ? QString() : each.toString(), shown);
        QCOMPARE(row.constFirst().isNull(), text.isEmpty());
        return;
    }
    const QStringList boxes = desk_->boxes.takeUnexpected();
    QCOMPARE(boxes.size(), 1);
    QVERIFY(boxes.front().startsWith(u"Run-time error '%1':"_s.arg(error)));
    QCOMPARE(desk_->end.exitStatus(), std::optional(1));
    for (const QVariant& each : row)
        QVERIFY(each.isNull());
}

void BadInputTest::oneCustomerTextTooLong_storesNoneOfThem_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("isTooLong");
    const std::pair<const char*, int> sizes[] = {
        {"TextCustomerName", 50}, {"TextCustomerAddress", 50}, {"TextCustomerTel", 20}};
    for (const auto& [box, size] : sizes) {
        QTest::addRow("%s, full", box) << QString::fromLatin1(box) << size << false;
        QTest::addRow("%s, one too long", box) << QString::fromLatin1(box) << size + 1 << true;
    }
}

/// If one of the three texts does not fit its field, the other two are not stored either.
void BadInputTest::oneCustomerTextTooLong_storesNoneOfThem()
{
    QFETCH(QString, box);
    QFETCH(int, length);
    QFETCH(bool, isTooLong);
    for (const char* each : {"TextCustomerName", "TextCustomerAddress", "TextCustomerTel"})
        desk_->on<QLineEdit>(each)->setText(u"לפני"_s);
    desk_->click("CmdPrint");
    for (const char* each : {"TextCustomerName", "TextCustomerAddress", "TextCustomerTel"})
        desk_->on<QLineEdit>(each)->setText(u"אחרי"_s);
    const QString whole(length, u'ש');
    setWhole(*testsupport::child<QLineEdit>(*desk_->form(), box), whole);
    desk_->click("CmdPrint");
    const QStringList fields{u"CustomerName"_s, u"CustomerAddress"_s, u"CustomerTel"_s};
    for (const QString& field : fields) {
        const QString expected = isTooLong                  ? u"לפני"_s
                                 : box == u"Text"_s + field ? whole
                                                            : u"אחרי"_s;
        QCOMPARE(desk_->store.scalar(u"SELECT %1 FROM Orders"_s.arg(field)).toString(), expected);
    }
    QCOMPARE(desk_->end.exitStatus(), isTooLong ? std::optional(1) : std::nullopt);
    if (isTooLong) {
        const QStringList boxes = desk_->boxes.takeUnexpected();
        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.front().startsWith(u"Run-time error '3163':"_s));
    }
}

/// The result is shown but not stored. A zero is computed like any other measure.
void BadInputTest::oddMeasureInPreCalculation_isShownOrRefused()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    typeOpening(box, text);
    desk_->click("CmdOK");
    if (error != correct) {
        expectOutcome(error, {}, 0);
        QVERIFY(!output::formView().isVisible());
        return;
    }
    QVERIFY(desk_->boxes.shown().empty());
    const QLabel* label =
        box < 2 ? output::formView().LabelOpenWidth : output::formView().LabelOpenHeight;
    QCOMPARE(label->text().toDouble(), box % 2 == 0 ? value : 100 + value / 100);
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s), 0);
    QCOMPARE(desk_->box(box == 0 ? "TextNum_0" : "TextNum_2"), box % 2 == 0 ? text : u"100"_s);
    output::formView().close();
}

void BadInputTest::oddKindOrColour_isStoredOrRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text << storingError(each);
    QTest::newRow("quotes") << u"'; DROP TABLE Cuts; -- \" ` א"_s << correct;
    QTest::newRow("full") << QString(50, u'"') << correct;
    QTest::newRow("one too long") << QString(51, u'ש') << int{runtime::FieldTooSmall};
    QTest::newRow("longest") << QString(32767, u'ש') << int{runtime::FieldTooSmall};
}

/// Texts are stored unchanged; an empty one is stored as an empty text.
void BadInputTest::oddKindOrColour_isStoredOrRefused()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    chooseSeries();
    const calculation::OpeningPanel& panel = desk_->form()->opening();
    for (std::size_t part = 0; part < 4; ++part) {
        panel.DBComboKind[part]->setEditText(text);
        panel.DBComboColor[part]->setEditText(text);
    }
    type(0, u"100"_s);
    type(2, u"100"_s);
    const QString shown = keptText(panel.DBComboKind[0]->currentText());
    desk_->click("CmdAdd");
    expectOutcome(error, u"MyWidth"_s, 100);
    if (error != correct)
        return;
    const auto row =
        desk_->store
            .rows(u"SELECT Mashof_Kind, Mahkof_Color, Kanaf_Kind, Kanaf_Color, Glass_Kind,"
                  " Glass_Color, Reshet_Kind, Reshet_Color FROM Cuts"_s)
            .value(0);
    for (const QVariant& each : row) {
        QVERIFY(!each.isNull());
        QCOMPARE(each.toString(), shown);
    }
}

ZOMREL_QTEST_MAIN(BadInputTest)
#include "bad_input_test.moc"
