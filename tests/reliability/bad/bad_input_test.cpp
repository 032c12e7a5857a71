#include "calculation/form_select_serial.h"
#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "orders/order_head.h"
#include "platform/controls/db_combo.h"
#include "shell/base/input_boxes.h"
#include "tools/store/checker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// Texts that no one means to type in the boxes of an opening, a customer and a monoblock: each is
/// refused, ends the program with its box or makes a correct row, and leaves a sound store.
class BadInputTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void measureBox_data();
    void measureBox();
    void doorBox_data() { texts(); }
    void doorBox();
    void monoblockBox_data() { texts(); }
    void monoblockBox();
    void customerBoxes_data();
    void customerBoxes();
    void kindsAndColours();

private:
    static void texts();
    void chooseSeries(const QString& sign = {}, int monoblockBox = -1, const QString& text = {});
    void type(int box, const QString& text) const;
    void expectOutcome(int error, const QString& field, double value);

    std::unique_ptr<Desk> desk_;
};

namespace {

constexpr int refused = -1; ///< A box with the program's own refusal.
constexpr int correct = 0;

struct TypedText
{
    const char* name;
    QString text;
    int error;
    double value = 0;
};

/// What a box gives for a text, a refusal of 0 left aside.
QList<TypedText> typedTexts()
{
    const int mismatch = runtime::TypeMismatch;
    return {
        {"empty", QString(), mismatch},
        {"blank", u"   "_s, mismatch},
        {"letters", u"abc"_s, mismatch},
        {"digit and letter", u"1a"_s, mismatch},
        {"Hebrew", u"אבג"_s, mismatch},
        {"Arabic-Indic digits", u"١٢"_s, mismatch},
        {"full-width digit", u"５"_s, mismatch},
        {"plus", u"+5"_s, correct, 5},
        {"minus", u"-5"_s, correct, -5},
        {"sign alone", u"-"_s, mismatch},
        {"sign behind", u"5-"_s, mismatch},
        {"two signs", u"--5"_s, mismatch},
        {"blanks around", u" 7 "_s, correct, 7},
        {"blank within", u"1 2"_s, mismatch},
        {"point", u"2.5"_s, correct, 2.5},
        {"exponent", u"1e2"_s, correct, 100},
        {"exponent alone", u"e5"_s, mismatch},
        {"too large", u"9e999"_s, runtime::Overflow},
        {"comma", u"1,5"_s, mismatch},
        {"left-to-right mark", u"\u200e5"_s, mismatch},
        {"right-to-left override", u"\u202e12"_s, mismatch},
        {"isolate", u"\u20665\u2069"_s, mismatch},
        {"quote", u"'"_s, mismatch},
        {"SQL", u"1';DROP TABLE Cuts--"_s, mismatch},
        {"infinity", u"inf"_s, mismatch},
        {"no number", u"nan"_s, mismatch},
        {"zero byte", u"5"_s + QChar(u'\0'), mismatch},
        {"line end", u"5\n"_s, mismatch},
    };
}

/// Past the box's own length, which a program may set and a user may not type.
void setWhole(QLineEdit& box, const QString& text)
{
    if (text.size() > box.maxLength())
        box.setMaxLength(static_cast<int>(text.size()));
    box.setText(text);
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
    QCOMPARE(storetools::checkStore(desk_->store.path()), QStringList());
    desk_.reset();
}

void BadInputTest::texts()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<double>("value");
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text << each.error << each.value;
    QTest::newRow("zero") << u"0"_s << correct << 0.0;
    QTest::newRow("longest") << QString(32767, u'9') << int{runtime::Overflow} << 0.0;
}

/// Chooses the only series through the picker; a text may be laid in one of the monoblock's boxes.
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

/// No line and a box, or the one line with the value in the field.
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
    QCOMPARE(desk_->boxes.shown().size(), std::size_t{1});
    const QString text = desk_->boxes.shown().front().text;
    if (error == refused) {
        QCOMPARE(text, u"ערך נומרי 0 !"_s);
        QVERIFY(!desk_->end.exitStatus());
        return;
    }
    QVERIFY2(text.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(text));
    QCOMPARE(desk_->end.exitStatus(), std::optional(1));
}

void BadInputTest::measureBox_data()
{
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<double>("value");
    for (int box = 0; box < 4; ++box) {
        const bool whole = box % 2 == 0;
        const auto row = [&](const char* name, const QString& text, int error, double value) {
            // A whole box holds centimetres; a hundredths box adds to the whole 100 beside it.
            QTest::addRow("%d, %s", box, name)
                << box << text << error << (whole ? value : 100 + value / 100);
        };
        for (const TypedText& each : typedTexts())
            row(each.name, each.text, each.error, each.value);
        row("zero", u"0"_s, whole ? refused : correct, 0);
        row("negative zero", u"-0"_s, whole ? refused : correct, 0);
        row("vanishing", u"1e-999"_s, whole ? refused : correct, 0);
        row("longest", QString(32767, u'9'), runtime::Overflow, 0);
    }
}

void BadInputTest::measureBox()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    chooseSeries();
    for (int each = 0; each < 4; ++each)
        type(each, each % 2 == 0 ? u"100"_s : u"00"_s);
    type(box, text);
    desk_->click("CmdAdd");
    expectOutcome(error, box < 2 ? u"MyWidth"_s : u"MYHeight"_s, value);
}

/// The thickness comes off the door's width twice.
void BadInputTest::doorBox()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    chooseSeries(u"d2000"_s);
    type(0, u"90"_s);
    type(2, u"210"_s);
    type(4, text);
    type(5, u"00"_s);
    desk_->click("CmdAdd");
    expectOutcome(error, u"MyWidth_2"_s, 90 - 2 * value);
}

/// The width deduction's whole box; the second one holds the proposed hundredths.
void BadInputTest::monoblockBox()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    chooseSeries({}, 0, text);
    if (error != correct) {
        expectOutcome(error, {}, 0);
        QCOMPARE(desk_->label("LabelSerial"), u"סדרה"_s);
        return;
    }
    type(0, u"90"_s);
    type(2, u"210"_s);
    desk_->click("CmdAdd");
    expectOutcome(correct, u"MyWidth_2"_s, 90 - (value + 0.8));
}

void BadInputTest::customerBoxes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text << correct;
    QTest::newRow("full") << QString(20, u'ש') << correct;
    QTest::newRow("one too long") << QString(51, u'ש') << int{runtime::FieldTooSmall};
    QTest::newRow("longest") << QString(32767, u'ש') << int{runtime::FieldTooSmall};
}

/// A customer's text is stored as it stands, an empty one as Null; one too long ends the program
/// and leaves the details that were there.
void BadInputTest::customerBoxes()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    for (const char* box : {"TextCustomerName", "TextCustomerAddress", "TextCustomerTel"})
        setWhole(*desk_->on<QLineEdit>(box), text);
    const QString shown = desk_->box("TextCustomerName");
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
    QCOMPARE(desk_->boxes.shown().size(), std::size_t{1});
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '%1':"_s.arg(error)));
    QCOMPARE(desk_->end.exitStatus(), std::optional(1));
    for (const QVariant& each : row)
        QVERIFY(each.isNull());
}

void BadInputTest::kindsAndColours()
{
    chooseSeries();
    const QString quoted = u"'; DROP TABLE Cuts; -- \" \u202e א"_s;
    desk_->form()->opening().DBComboKind[0]->setEditText(quoted);
    desk_->form()->opening().DBComboColor[3]->setEditText(QString(50, u'"'));
    type(0, u"100"_s);
    type(2, u"100"_s);
    desk_->click("CmdAdd");
    expectOutcome(correct, u"MyWidth"_s, 100);
    QVERIFY(desk_->store.scalar(u"SELECT count(*) FROM Cuts WHERE Mashof_Kind = ?"_s, {quoted})
                .toInt() == 1);
}

ZOMREL_QTEST_MAIN(BadInputTest)
#include "bad_input_test.moc"
