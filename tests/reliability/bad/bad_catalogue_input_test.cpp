#include "catalogue/fr_color_kind.h"
#include "catalogue/serials_screen.h"
#include "platform/controls/db_grid.h"
#include "reliability/bad/typed_texts.h"
#include "reliability/figures.h"
#include "store/schema.h"
#include "tools/store/checker.h"

#include <QMap>

#include <cmath>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

/// Enters unusual texts into the boxes of a series and the cells of the kind and colour grids. Each
/// text yields a correct row or none, and the store stays sound.
class BadCatalogueInputTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { stage_ = std::make_unique<SerialsStage>(); }
    void cleanup();
    void cleanupTestCase();

    void oddDeductionOnAdd_isStoredOrRefused_data();
    void oddDeductionOnAdd_isStoredOrRefused();
    void oddDeductionOnSave_isStoredOrRefused_data() { oddDeductionOnAdd_isStoredOrRefused_data(); }
    void oddDeductionOnSave_isStoredOrRefused();
    void oddNameAndRemark_areStoredOrRefused_data();
    void oddNameAndRemark_areStoredOrRefused();
    void oddCellText_isStoredOrRefused_data();
    void oddCellText_isStoredOrRefused();

private:
    std::unique_ptr<SerialsStage> stage_;
    int typed_ = 0;
};

namespace {

/// The box of a deduction of -7.25 that gets another text. A text that numbersMadeBy does not list
/// is not a number.
enum Box { Sign, Whole, Hundredths };

QMap<QString, double> numbersMadeBy(Box box)
{
    switch (box) {
    // The text replaces the sign before "7.25".
    case Sign:
        return {{u"empty"_s, 7.25},   {u"blank"_s, 7.25},       {u"plus"_s, 57.25},
                {u"minus"_s, -57.25}, {u"sign alone"_s, -7.25}, {u"plus alone"_s, 7.25}};
    // The text replaces the digit between "-" and ".25".
    case Whole:
        return {{u"empty"_s, -0.25}};
    // The text replaces the digits after "-7.".
    case Hundredths:
        return {{u"empty"_s, -7},
                {u"blank"_s, -7},
                {u"exponent"_s, -710},
                {u"exponent alone"_s, -700000},
                {u"thousand by exponent"_s, -7100},
                {u"vanishing"_s, 0}};
    }
    return {};
}

QLineEdit* boxOf(const SerialsScreen& screen, int box, int deduction)
{
    switch (box) {
    case Sign:
        return screen.sign(deduction);
    case Whole:
        return screen.num(2 * deduction);
    default:
        return screen.num(2 * deduction + 1);
    }
}

} // namespace

void BadCatalogueInputTest::cleanup()
{
    QCOMPARE(storetools::checkStore(stage_->store.path()), QStringList());
    stage_.reset();
    ++typed_;
}

void BadCatalogueInputTest::cleanupTestCase()
{
    reliability::writeFigures(
        u"bad_catalogue_input"_s,
        {{u"texts typed into a series and the lists"_s, QString::number(typed_)}});
}

void BadCatalogueInputTest::oddDeductionOnAdd_isStoredOrRefused_data()
{
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<double>("value");
    const QList<std::pair<Box, const char*>> boxes{
        {Sign, "sign"}, {Whole, "whole"}, {Hundredths, "hundredths"}};
    for (const auto& [box, name] : boxes) {
        const QMap<QString, double> numbers = numbersMadeBy(box);
        for (const TypedText& each : typedTexts()) {
            const QString key = QString::fromLatin1(each.name);
            int error = numbers.contains(key) ? correct : int{runtime::DataTypeConversion};
            // "-7.9e999" overflows. An exponent in the other boxes is followed by a point and is
            // not a number.
            if (box == Hundredths && (key == u"too large" || key == u"exponent too large"))
                error = runtime::Overflow;
            if (error == runtime::DataTypeConversion && !typedNumbers().contains(each))
                continue;
            QTest::addRow("%s, %s", name, each.name)
                << int{box} << each.text << error << numbers.value(key);
        }
    }
    QTest::newRow("whole, longest")
        << int{Whole} << QString(32767, u'9') << int{runtime::Overflow} << 0.0;
    QTest::newRow("hundredths, longest")
        << int{Hundredths} << QString(32767, u'9') << correct << -8.0;
}

/// The hash of the row's tag chooses one of the eight deductions, so all are covered.
void BadCatalogueInputTest::oddDeductionOnAdd_isStoredOrRefused()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    const int deduction = int(qHash(QString::fromLatin1(QTest::currentDataTag()), 0) % 8);
    const SerialsScreen screen;
    screen.press("CmdNew");
    screen.box(u"TextName"_s)->setText(u"סדרה"_s);
    for (int i = 0; i < 8; ++i)
        screen.setDeduction(i, u"- 7 25"_s);
    setWhole(*boxOf(screen, box, deduction), text);
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdAdd");

    const QString field = store::deductionFields()[deduction];
    if (error == correct) {
        // The only box is the question.
        QCOMPARE(stage_->boxes.shown().size(), std::size_t{1});
        const double stored =
            stage_->store.scalar(u"SELECT %1 FROM Serials"_s.arg(field)).toDouble();
        QVERIFY2(std::abs(stored - value) <= std::abs(value) * 1e-12,
                 qPrintable(QString::number(stored, 'g', 17)));
        QCOMPARE(stage_->names(), QStringList(u"סדרה"_s));
        return;
    }
    QCOMPARE(stage_->names(), QStringList());
    QCOMPARE(stage_->boxes.shown().size(), std::size_t{2});
    const QString shown = stage_->boxes.shown().back().text;
    QVERIFY2(shown.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(shown));
    QCOMPARE(stage_->end.exitStatus(), std::optional(1));
}

/// Uses the last of the eight deductions, when all other fields have already been assigned.
void BadCatalogueInputTest::oddDeductionOnSave_isStoredOrRefused()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(int, error);
    QFETCH(double, value);
    constexpr int last = 7;
    stage_->add(u"לפני"_s, -1);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    screen.box(u"TextName"_s)->setText(u"אחרי"_s);
    for (int i = 0; i <= last; ++i)
        screen.setDeduction(i, u"- 7 25"_s);
    setWhole(*boxOf(screen, box, last), text);
    screen.press("CmdUpdate");

    const auto rows =
        stage_->store.rows(u"SELECT Name, Mashkof_W, Glass_H, Reshet_H FROM Serials"_s);
    QCOMPARE(rows.size(), 1);
    if (error == correct) {
        QVERIFY(stage_->boxes.shown().empty());
        QCOMPARE(rows.constFirst().mid(0, 3), QVariantList({u"אחרי"_s, -7.25, -7.25}));
        const double stored = rows.constFirst().constLast().toDouble();
        QVERIFY2(std::abs(stored - value) <= std::abs(value) * 1e-12,
                 qPrintable(QString::number(stored, 'g', 17)));
        return;
    }
    QCOMPARE(rows.constFirst(), QVariantList({u"לפני"_s, -1.0, -1.0, -1.0}));
    QCOMPARE(stage_->boxes.shown().size(), std::size_t{1});
    const QString shown = stage_->boxes.shown().back().text;
    QVERIFY2(shown.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(shown));
    QCOMPARE(stage_->end.exitStatus(), std::optional(1));
}

void BadCatalogueInputTest::oddNameAndRemark_areStoredOrRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text << storingError(each);
    QTest::newRow("full") << QString(50, u'ש') << correct;
    QTest::newRow("one too long") << QString(51, u'ש') << int{runtime::FieldTooSmall};
    QTest::newRow("longest") << QString(32767, u'ש') << int{runtime::FieldTooSmall};
}

/// The name and the remark are stored unchanged, even if empty.
void BadCatalogueInputTest::oddNameAndRemark_areStoredOrRefused()
{
    QFETCH(QString, text);
    QFETCH(int, error);
    const SerialsScreen screen;
    screen.press("CmdNew");
    for (const QString& box : {u"TextName"_s, u"TextRem"_s})
        setWhole(*screen.box(box), text);
    const QString shown = keptText(screen.box(u"TextName"_s)->text());
    stage_->boxes.answer(runtime::vbYes);
    for (int i = 0; i < 8; ++i)
        screen.setDeduction(i, u"- 7 25"_s);
    screen.press("CmdAdd");
    const auto rows = stage_->store.rows(u"SELECT Name, Rem FROM Serials"_s);
    if (error == correct) {
        QCOMPARE(rows.size(), 1);
        for (const QVariant& each : rows.constFirst()) {
            QVERIFY(!each.isNull());
            QCOMPARE(each.toString(), shown);
        }
        return;
    }
    QVERIFY(rows.isEmpty());
    QVERIFY(stage_->boxes.shown().back().text.startsWith(u"Run-time error '%1':"_s.arg(error)));
    QCOMPARE(stage_->end.exitStatus(), std::optional(1));
}

void BadCatalogueInputTest::oddCellText_isStoredOrRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isRefused");
    for (const TypedText& each : typedTexts())
        QTest::newRow(each.name) << each.text << (storingError(each) != correct);
    QTest::newRow("full") << QString(50, u'ש') << false;
    QTest::newRow("one too long") << QString(51, u'ש') << true;
    QTest::newRow("longest") << QString(32767, u'ש') << true;
}

/// A text that fits the field is stored. Any other text is rejected, and no row is lost.
void BadCatalogueInputTest::oddCellText_isStoredOrRefused()
{
    QFETCH(QString, text);
    QFETCH(bool, isRefused);
    stage_->store.execute(u"INSERT INTO GlassKind (Name) VALUES ('שקוף')"_s);
    const auto names = [this] {
        return stage_->store.rows(u"SELECT Name FROM GlassKind ORDER BY Code"_s);
    };
    catalogue::FrColorKind& form = catalogue::frColorKind();
    form.Show();
    auto* grid = testsupport::child<controls::DBGrid>(form, u"DBGridKind_2"_s);
    const QModelIndex cell = grid->model()->index(0, 1);
    QCOMPARE(cell.data().toString(), u"שקוף"_s);
    grid->setCurrentIndex(cell);
    grid->model()->setData(cell, text);
    stage_->boxes.answer(runtime::vbOK);
    QCOMPARE(grid->commitEdits(), !isRefused);
    const auto shown = stage_->boxes.shown();
    // Escape discards the rejected text.
    QTest::keyClick(grid, Qt::Key_Escape);
    form.Unload();
    QVERIFY(!stage_->end.exitStatus());
    if (isRefused) {
        QCOMPARE(shown.size(), std::size_t{1});
        QVERIFY(shown.front().text.startsWith(u"השורה לא נשמרה: "_s));
        QCOMPARE(stage_->boxes.shown().size(), std::size_t{1});
        QCOMPARE(names().constFirst().constFirst().toString(), u"שקוף"_s);
        return;
    }
    QVERIFY(stage_->boxes.shown().empty());
    QCOMPARE(names().size(), 1);
    QCOMPARE(names().constFirst().constFirst().toString(), keptText(text));
}

ZOMREL_QTEST_MAIN(BadCatalogueInputTest)
#include "bad_catalogue_input_test.moc"
