#include "calculation/form_select_serial.h"
#include "calculation/opening_panel.h"
#include "catalogue/catalogue.h"
#include "catalogue/fr_color_kind.h"
#include "orders/desk.h"
#include "output/form_view.h"
#include "platform/controls/db_combo.h"
#include "platform/runtime/guard.h"
#include "reliability/bad/stored_values.h"
#include "reliability/figures.h"
#include "tools/store/checker.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// Puts unusual values into every field of the store directly. Grids and combo boxes show a value
/// that its type does not allow as blank. A command that uses the value ends the program with an
/// error box and writes no partial row.
class BadFieldsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void cleanupTestCase();

    void oddSeriesField_isUsedOrEndsTheProgram_data()
    {
        combinations(u"Serials"_s, {u"AutoNum"_s});
    }
    void oddSeriesField_isUsedOrEndsTheProgram();
    void oddLineField_isUsedOrEndsTheProgram_data()
    {
        combinations(u"Cuts"_s, {u"Code"_s, u"Order_Num"_s});
    }
    void oddLineField_isUsedOrEndsTheProgram();
    void oddOrderField_isUsedOrEndsTheProgram_data() { combinations(u"Orders"_s, {u"Number"_s}); }
    void oddOrderField_isUsedOrEndsTheProgram();
    void oddLastOrderNumber_isContinuedOrEndsTheProgram_data();
    void oddLastOrderNumber_isContinuedOrEndsTheProgram();
    void oddNumberInTheSearch_isTakenOrEndsTheProgram_data();
    void oddNumberInTheSearch_isTakenOrEndsTheProgram();
    void oddListName_isShown_data();
    void oddListName_isShown();

private:
    static void combinations(const QString& table, const QStringList& butFor);
    template <typename Work>
    int errorOf(Work work);
    int errorOfOpeningTheOrder();
    int errorOfAdding();
    int errorOfTakingByTheSearch();
    QList<QVariant> row(const QString& table) const;
    bool isFound(int unreadable) const;

    std::unique_ptr<Desk> desk_;
    int tried_ = 0;
    int ended_ = 0;
};

namespace {

void closeWindow(const char* name)
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == QLatin1String(name) && each->isVisible())
            each->close();
    }
}

/// Returns true for fields that the line view reads. It requires a value in all of them except the
/// texts.
bool isViewed(const QString& field)
{
    constexpr int last = 23;
    return store::tableSchema(u"Cuts"_s)->ordinalOf(field) <= last;
}

bool isText(const QString& table, const QString& field)
{
    const store::TableSchema& schema = *store::tableSchema(table);
    return schema.fields[std::size_t(schema.ordinalOf(field))].type == dao::dbText;
}

/// Returns the expected error of a field that must not be Null.
int errorWithoutNull(const QString& value, int unreadable)
{
    return value == u"NULL" ? int{runtime::InvalidUseOfNull} : unreadable;
}

} // namespace

void BadFieldsTest::init()
{
    desk_ = std::make_unique<Desk>();
    Module1::IsMonoblock = false;
    Module1::IsDoorFrame = false;
    desk_->store.addSeries(u"סדרה"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    desk_->store.addOrder(1);
}

void BadFieldsTest::cleanup()
{
    for (const char* each : {"FormSelectSerial", "FormView", "DataReport1"})
        closeWindow(each);
    desk_.reset();
    ++tried_;
}

void BadFieldsTest::cleanupTestCase()
{
    reliability::writeFigures(
        u"bad_fields"_s, {{u"fields with unusual contents"_s, QString::number(tried_)},
                          {u"commands that ended with an error box"_s, QString::number(ended_)}});
}

void BadFieldsTest::combinations(const QString& table, const QStringList& butFor)
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    // The error that reading the value throws.
    QTest::addColumn<int>("unreadable");
    for (const dao::FieldInfo& field : store::tableSchema(table)->fields) {
        for (const StoredValue& value : valuesFor(field)) {
            if (butFor.contains(field.name) ||
                // The column does not allow Null.
                (field.type == dao::dbBoolean && value.sql == u"NULL"))
                continue;
            QTest::addRow("%s %s", qPrintable(field.name), value.name)
                << field.name << value.sql << readingError(value, field);
        }
    }
}

/// Runs the work and returns the number of the run-time error that ends the program, or 0.
template <typename Work>
int BadFieldsTest::errorOf(Work work)
{
    desk_->boxes.clear();
    desk_->end.clear();
    runtime::guarded(work);
    if (!desk_->end.exitStatus() && desk_->boxes.shown().empty())
        return 0;
    const QStringList shown = desk_->boxes.takeUnexpected();
    const QString text = shown.size() == 1 ? shown.front() : QString();
    const QString number = text.section(u'\'', 1, 1);
    if (desk_->end.exitStatus() != 1 || text.section(u'\'', 0, 0) != u"Run-time error ")
        QTest::qFail("did not end with exactly one run-time error box: " + text.toUtf8(), __FILE__,
                     __LINE__);
    ++ended_;
    return number.toInt();
}

/// Opens the order and waits until the grid shows its lines.
int BadFieldsTest::errorOfOpeningTheOrder()
{
    const int opened = errorOf([this] { desk_->openOrder(1); });
    if (opened != 0)
        return opened;
    desk_->on<QTimer>("Timer1")->setInterval(0);
    return errorOf([this] {
        QTRY_VERIFY(desk_->timerRests() || desk_->end.exitStatus());
        desk_->form()->grab();
        QCoreApplication::sendPostedEvents();
    });
}

int BadFieldsTest::errorOfAdding()
{
    Module1::SelectedSerialNum = 1;
    desk_->type("TextNum_0", u"100"_s);
    desk_->type("TextNum_2", u"100"_s);
    const int before = desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt();
    const int error = errorOf([this] { desk_->click("CmdAdd"); });
    const int after = desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt();
    if (after != before + (error == 0 ? 1 : 0))
        QTest::qFail("a partial line was stored", __FILE__, __LINE__);
    return error;
}

/// Opens the search form, waits for the lines and chooses the current order.
int BadFieldsTest::errorOfTakingByTheSearch()
{
    // Destroyed with this call if the search form does not open.
    QTimer onceOpen;
    onceOpen.setSingleShot(true);
    connect(&onceOpen, &QTimer::timeout, this, [this] {
        auto* search = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QVERIFY(search != nullptr);
        search->grab();
        const auto* deferred = testsupport::child<QTimer>(*search, u"TimerGetOrder"_s);
        QTRY_VERIFY(!deferred->isActive() || desk_->end.exitStatus());
        if (!desk_->end.exitStatus())
            testsupport::child<QPushButton>(*search, u"CmdPic"_s)->click();
        if (desk_->end.exitStatus())
            search->reject();
    });
    onceOpen.start(0);
    return errorOf([] { orders::findOrder(); });
}

/// Returns the first row of the table without NUM, which printing changes.
QList<QVariant> BadFieldsTest::row(const QString& table) const
{
    QStringList fields;
    for (const dao::FieldInfo& field : store::tableSchema(table)->fields) {
        if (field.name != u"NUM")
            fields.append(field.name);
    }
    return desk_->store
        .rows(u"SELECT %1 FROM %2 ORDER BY rowid LIMIT 1"_s.arg(fields.join(u", "_s), table))
        .value(0);
}

/// Returns false if a value that cannot be read is no finding of the check.
bool BadFieldsTest::isFound(int unreadable) const
{
    return unreadable == 0 || !storetools::checkStore(desk_->store.path()).isEmpty();
}

/// Chooses the series in the picker, then views and adds a line.
void BadFieldsTest::oddSeriesField_isUsedOrEndsTheProgram()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(int, unreadable);
    desk_->openOrder(1);
    desk_->store.execute(u"UPDATE Serials SET %1 = %2"_s.arg(field, value));
    QVERIFY(isFound(unreadable));
    const auto before = row(u"Serials"_s);
    const bool isShown = field == u"Name" || field == u"Nativ_Num" || field == u"Kanaf_Num";
    const bool isComputedWith = store::deductionFields().contains(field) || field == u"Kanaf_Num";

    const int picked = errorOf([this] {
        desk_->click("CmdPicSerial");
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->objectName() == u"FormSelectSerial"_s && each->isVisible()) {
                each->grab();
                testsupport::child<QPushButton>(*each, u"CmdPic"_s)->click();
            }
        }
    });
    closeWindow("FormSelectSerial");
    QCOMPARE(picked, isShown              ? errorWithoutNull(value, unreadable)
                     : field == u"Sign"_s ? unreadable
                                          : 0);
    if (picked == 0) {
        QCOMPARE(Module1::SelectedSerialNum, 1);
        int computed = isComputedWith ? errorWithoutNull(value, unreadable) : 0;
        if (field == u"Kanaf_Num" && value == u"0")
            computed = runtime::DivisionByZero;
        desk_->type("TextNum_0", u"100"_s);
        desk_->type("TextNum_2", u"100"_s);
        QCOMPARE(errorOf([this] { desk_->click("CmdOK"); }), computed);
        // Twice the number of sashes is stored in the line and must fit 32 bits.
        if (field == u"Kanaf_Num" && value == u"2147483647")
            computed = runtime::Overflow;
        if (field == u"Name" && value.size() > 50)
            computed = runtime::FieldTooSmall;
        QCOMPARE(errorOfAdding(), computed);
    }
    QCOMPARE(row(u"Serials"_s), before);
}

/// Shows the line, views it, adds another line and prints the order.
void BadFieldsTest::oddLineField_isUsedOrEndsTheProgram()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(int, unreadable);
    desk_->store.addLine(1, 1);
    desk_->store.execute(u"UPDATE Cuts SET \"%1\" = %2"_s.arg(field, value));
    QVERIFY(isFound(unreadable));
    const auto before = row(u"Cuts"_s);

    QCOMPARE(errorOfOpeningTheOrder(), 0);
    const int viewed = isText(u"Cuts"_s, field) ? unreadable : errorWithoutNull(value, unreadable);
    QCOMPARE(errorOf([this] {
                 QTimer::singleShot(0, qApp, [] { closeWindow("FormView"); });
                 desk_->click("CmdView");
                 QCoreApplication::sendPostedEvents();
             }),
             isViewed(field) ? viewed : 0);
    int added = 0;
    if (field == u"NUM")
        added = value.toLongLong() > 32766 && unreadable == 0 ? int{runtime::Overflow}
                                                              : errorWithoutNull(value, unreadable);
    QCOMPARE(errorOfAdding(), added);
    QCOMPARE(errorOf([this] {
                 desk_->click("CmdPrint");
                 for (QWidget* each : QApplication::topLevelWidgets()) {
                     if (each->objectName() == u"DataReport1"_s && each->isVisible())
                         each->grab();
                 }
                 QCoreApplication::sendPostedEvents();
             }),
             // The report's record source reads whole rows, and printing renumbers the line.
             field == u"NUM" ? 0 : unreadable);
    QCOMPARE(row(u"Cuts"_s), before);
}

/// Uses the order's fields on the form, when saving, and for the next order.
void BadFieldsTest::oddOrderField_isUsedOrEndsTheProgram()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(int, unreadable);
    desk_->store.addLine(1, 1);
    desk_->store.execute(u"UPDATE Orders SET %1 = %2"_s.arg(field, value));
    QVERIFY(isFound(unreadable));
    const auto before = row(u"Orders"_s);
    const bool isShown = field != u"Open_Close";
    const int shown = field == u"Order_Date" ? errorWithoutNull(value, unreadable)
                      : isShown              ? unreadable
                                             : 0;
    const int opened = errorOfOpeningTheOrder();
    QCOMPARE(opened, shown);
    QCOMPARE(errorOfTakingByTheSearch(), shown);
    if (opened != 0) {
        QCOMPARE(row(u"Orders"_s), before);
        return;
    }
    QCOMPARE(errorOf([this] { desk_->click("CmdPrint"); }), 0);
    QCOMPARE(errorOf([this] { orders::openOrderLongForm(desk_->dataMDI); }), unreadable);
    if (unreadable != 0) {
        QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Orders"_s).toInt(), 1);
        return;
    }
    const bool isOpen = field != u"Open_Close" || value == u"0";
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Orders"_s).toInt(), isOpen ? 1 : 2);
    QCOMPARE(Module1::CurrentOrderNum, isOpen ? 1 : 2);
}

void BadFieldsTest::oddLastOrderNumber_isContinuedOrEndsTheProgram_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isClosed");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("number");
    const int over = runtime::Overflow;
    QTest::newRow("zero") << u"0"_s << false << 0 << 0;
    QTest::newRow("zero, closed") << u"0"_s << true << 0 << 1;
    QTest::newRow("negative") << u"-3"_s << false << 0 << -3;
    QTest::newRow("negative, closed") << u"-3"_s << true << 0 << -2;
    QTest::newRow("last") << u"32767"_s << false << 0 << 32767;
    QTest::newRow("last, closed") << u"32767"_s << true << over << 0;
    QTest::newRow("beyond 16 bits") << u"32768"_s << false << over << 0;
    // A server's column accepts no other value.
    if (testsupport::isOnServer())
        return;
    QTest::newRow("beyond 32 bits") << u"3000000000"_s << false << over << 0;
    QTest::newRow("huge, closed") << u"1e308"_s << true << over << 0;
    QTest::newRow("infinite") << u"9e999"_s << false << over << 0;
    QTest::newRow("letters") << u"'many'"_s << false << int{runtime::DataTypeConversion} << 0;
    QTest::newRow("bytes") << u"x'00ff'"_s << true << int{runtime::DataTypeConversion} << 0;
}

/// Tests the stored order number that the new-order rule reads.
void BadFieldsTest::oddLastOrderNumber_isContinuedOrEndsTheProgram()
{
    QFETCH(QString, value);
    QFETCH(bool, isClosed);
    QFETCH(int, error);
    QFETCH(int, number);
    desk_->store.execute(
        u"UPDATE Orders SET Number = %1, Open_Close = %2"_s.arg(value).arg(isClosed ? -1 : 0));
    QCOMPARE(errorOf([this] { orders::openOrderLongForm(desk_->dataMDI); }), error);
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Orders"_s).toInt(),
             isClosed && error == 0 ? 2 : 1);
    if (error == 0)
        QCOMPARE(Module1::CurrentOrderNum, number);
}

void BadFieldsTest::oddNumberInTheSearch_isTakenOrEndsTheProgram_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("number");
    const dao::FieldInfo number{.name = u"Number"_s, .type = dao::dbLong};
    for (const StoredValue& each : storedValues()) {
        // The key column does not allow Null.
        if (each.sql == u"NULL" || !isKept(each, number))
            continue;
        const int value = QString(each.sql).remove(u'\'').toInt();
        const bool fits = readingError(each, number) == 0 && value == qint16(value);
        const int error = readingError(each, number) != 0 ? readingError(each, number)
                          : fits                          ? 0
                                                          : int{runtime::Overflow};
        QTest::newRow(each.name) << each.sql << error << (fits ? value : 1);
    }
}

/// The search form lists any stored number. Only a number that fits 16 bits can be loaded into the
/// order form.
void BadFieldsTest::oddNumberInTheSearch_isTakenOrEndsTheProgram()
{
    QFETCH(QString, value);
    QFETCH(int, error);
    QFETCH(int, number);
    desk_->openOrder(1);
    desk_->store.execute(u"UPDATE Orders SET Number = %1"_s.arg(value));
    QCOMPARE(errorOfTakingByTheSearch(), error);
    QCOMPARE(int{Module1::CurrentOrderNum}, number);
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Orders"_s), 1);
}

void BadFieldsTest::oddListName_isShown_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    const dao::FieldInfo name{.name = u"Name"_s, .type = dao::dbText, .size = 50};
    for (const store::PartLists& part : store::partLists()) {
        for (const QString& table : {part.kindTable, part.colorTable}) {
            for (const StoredValue& value : valuesFor(name))
                QTest::addRow("%s %s", qPrintable(table), value.name)
                    << table << value.sql << value.shownAsText;
        }
    }
}

/// Shows a kind or a colour in its combo box and in its editor.
void BadFieldsTest::oddListName_isShown()
{
    QFETCH(QString, table);
    QFETCH(QString, value);
    QFETCH(QString, shown);
    desk_->store.execute(u"INSERT INTO %1 (Name) VALUES (%2)"_s.arg(table, value));
    const auto before = row(table);
    QCOMPARE(errorOf([this] { desk_->openOrder(1); }), 0);
    int listed = 0;
    for (std::size_t part = 0; part < 4; ++part) {
        const store::PartLists& lists = store::partLists()[part];
        const calculation::OpeningPanel& panel = desk_->form()->opening();
        const QComboBox* combo = table == lists.kindTable    ? panel.DBComboKind[part]
                                 : table == lists.colorTable ? panel.DBComboColor[part]
                                                             : nullptr;
        if (combo == nullptr)
            continue;
        ++listed;
        QCOMPARE(combo->count(), 1);
        QCOMPARE(combo->itemText(0), shown);
    }
    QCOMPARE(listed, 1);
    QCOMPARE(errorOf([] {
                 catalogue::frColorKind().Show();
                 catalogue::frColorKind().grab();
                 QCoreApplication::sendPostedEvents();
             }),
             0);
    runtime::guarded([] { catalogue::frColorKind().Unload(); });
    QCOMPARE(row(table), before);
}

ZOMREL_QTEST_MAIN(BadFieldsTest)
#include "bad_fields_test.moc"
