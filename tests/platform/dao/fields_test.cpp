#include "platform/dao/fixture.h"

#include <QDateTime>
#include <QLocale>

#include <limits>

using namespace daotest;

namespace {

class FieldsTest : public ItemsTest
{
protected:
    /// Returns the value of a field after it has been assigned and stored.
    QVariant stored(const QString& field, const QVariant& value)
    {
        const auto rows = dynaset(u"Items"_s);
        rows->AddNew();
        rows->Fields(field).SetValue(value);
        rows->Update();
        const auto again = dynaset(u"Items"_s);
        again->MoveLast();
        return again->Fields(field).Value();
    }

    int errorOfAssigning(const QString& field, const QVariant& value)
    {
        const auto rows = dynaset(u"Items"_s);
        rows->AddNew();
        return errorOf([&] { rows->Fields(field).SetValue(value); });
    }

    /// Returns the value of a field if the store contains this literal.
    QVariant read(const QString& field, const QString& literal)
    {
        sql(u"DELETE FROM Items"_s);
        sql(u"INSERT INTO Items (%1) VALUES (%2)"_s.arg(field, literal));
        return dynaset(u"Items"_s)->Fields(field).Value();
    }
    int errorOfReading(const QString& field, const QString& literal)
    {
        return errorOf([&] { read(field, literal); });
    }
};

TEST_F(FieldsTest, fields_areFoundByPositionAndByNameInAnyCase)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    EXPECT_EQ(rows->FieldCount(), 8);
    EXPECT_EQ(rows->Fields(1).Name(), u"Num"_s);
    EXPECT_EQ(rows->Fields(u"nUM"_s).Value(), 10);
    EXPECT_EQ(rows->Fields(u"Name"_s).Size(), 10);
    EXPECT_EQ(rows->Fields(u"Note"_s).Size(), 0);
    EXPECT_EQ(errorOf([&] { rows->Fields(-1); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->Fields(8); }), 3265);
    EXPECT_EQ(errorOf([&] { rows->Fields(u"Nun"_s); }), 3265);
}

TEST_F(FieldsTest, declaredTypesInAnySpelling_areRecognised)
{
    EMBEDDED_ONLY("a server has its own type names");
    sql(u"CREATE TABLE Kinds (A text ( 7 ), B Long, C double, D datetime, E boolean, F counter, "
        "G integer, H VARCHAR(9), I, J TEXT(5,2), K DOUBLE PRECISION, L \"TEXT(\", "
        "M \"TEXT()\", N \"LONG(4) \")"_s);
    const auto rows = table(u"Kinds"_s);
    const QList<dao::DataType> types{dao::dbText,    dao::dbLong, dao::dbDouble,  dao::dbDate,
                                     dao::dbBoolean, dao::dbLong, dao::dbInteger, dao::dbText,
                                     dao::dbText,    dao::dbText, dao::dbText,    dao::dbText,
                                     dao::dbText,    dao::dbLong};
    ASSERT_EQ(rows->FieldCount(), types.size());
    for (int i = 0; i < rows->FieldCount(); ++i)
        EXPECT_EQ(rows->Fields(i).Type(), types[i]) << i;
    EXPECT_EQ(rows->Fields(0).Size(), 7);
    for (int i = 1; i < rows->FieldCount(); ++i)
        EXPECT_EQ(rows->Fields(i).Size(), 0) << i;
}

TEST_F(FieldsTest, wholeNumbers_areRoundedHalfToEven)
{
    EXPECT_EQ(stored(u"Num"_s, 2.5), 2);
    EXPECT_EQ(stored(u"Num"_s, 3.5), 4);
    EXPECT_EQ(stored(u"Num"_s, -2.5), -2);
    EXPECT_EQ(stored(u"Small"_s, u"-1.5"_s), -2);
    EXPECT_EQ(stored(u"Num"_s, true), -1);
}

TEST_F(FieldsTest, numbersOutsideTheirRange_areRefused)
{
    EXPECT_EQ(stored(u"Num"_s, 2147483647.0), std::numeric_limits<int>::max());
    EXPECT_EQ(errorOfAssigning(u"Num"_s, 2147483648.0), 6);
    EXPECT_EQ(errorOfAssigning(u"Num"_s, qlonglong(-2147483649)), 6);
    EXPECT_EQ(stored(u"Small"_s, -32768), -32768);
    EXPECT_EQ(errorOfAssigning(u"Small"_s, 32768), 6);
    EXPECT_EQ(errorOfAssigning(u"Small"_s, u"32767.5"_s), 6);
    for (const QString& field : {u"Num"_s, u"Amount"_s, u"Done"_s}) {
        EXPECT_EQ(errorOfAssigning(field, std::numeric_limits<double>::quiet_NaN()), 6);
        EXPECT_EQ(errorOfAssigning(field, std::numeric_limits<double>::infinity()), 6);
    }
    EXPECT_EQ(errorOfAssigning(u"Amount"_s, u"1e999"_s), 6);
}

TEST_F(FieldsTest, textThatIsNotANumber_isRefused)
{
    for (const QString& field : {u"Num"_s, u"Small"_s, u"Amount"_s, u"Done"_s}) {
        for (const QVariant& value : {QVariant(u""_s), QVariant(QString()), QVariant(u" "_s),
                                      QVariant(u"12a"_s), QVariant(u"--1"_s), QVariant(u"1,2,3"_s),
                                      QVariant(QDate(2026, 1, 1)), QVariant(QByteArray("1"))})
            EXPECT_EQ(errorOfAssigning(field, value), 3421)
                << qPrintable(field) << " " << qPrintable(value.toString());
    }
}

TEST_F(FieldsTest, decimals_areStoredExactly)
{
    for (double value : {0.1, 1.0 / 3.0, -123456.789, 1e-300, 1.7976931348623157e308, 5e-324})
        EXPECT_EQ(stored(u"Amount"_s, value).toDouble(), value);
    EXPECT_EQ(stored(u"Amount"_s, 4).typeId(), QMetaType::Double);
    EXPECT_EQ(stored(u"Num"_s, 4).typeId(), QMetaType::Int);
}

TEST_F(FieldsTest, localeDecimalSignAndPoint_areAccepted)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(stored(u"Amount"_s, u"6,5"_s), 6.5);
    EXPECT_EQ(stored(u"Amount"_s, u"6.5"_s), 6.5);
    EXPECT_EQ(stored(u"Name"_s, 6.5), u"6,5"_s);
    EXPECT_EQ(rest(*dynaset(u"SELECT * FROM Items WHERE Amount = 6.5"_s), u"Amount"_s).size(), 2);
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(errorOfAssigning(u"Amount"_s, u"6,5"_s), 3421);
}

TEST_F(FieldsTest, textsUpToTheirSize_areAccepted)
{
    EXPECT_EQ(stored(u"Name"_s, u"0123456789"_s), u"0123456789"_s);
    EXPECT_EQ(errorOfAssigning(u"Name"_s, u"01234567890"_s), 3163);
    EXPECT_EQ(stored(u"Name"_s, u"חלון  דלת "_s), u"חלון  דלת "_s);
    EXPECT_EQ(errorOfAssigning(u"Name"_s, u"חלון ודלת ארוכה"_s), 3163);
    EXPECT_EQ(stored(u"Note"_s, QString(5000, u'x')), QString(5000, u'x'));
    EXPECT_EQ(stored(u"Name"_s, -7), u"-7"_s);
    EXPECT_EQ(errorOfAssigning(u"Name"_s, -1234567890.5), 3163);
}

TEST_F(FieldsTest, unpairedSurrogate_isReplaced)
{
    EXPECT_EQ(stored(u"Name"_s, u"א😀ב"_s), u"א😀ב"_s);
    EXPECT_EQ(stored(u"Name"_s, u"א"_s + QChar(0xd83d) + u"בג"_s), u"א?בג"_s);
    EXPECT_EQ(stored(u"Name"_s, u"א"_s + QChar(0xde00) + u"בג"_s), u"א?בג"_s);
}

TEST_F(FieldsTest, textWithAnyCharacters_isStoredUnchanged)
{
    const QString odd = u"a?b'\"\u202e\U0001F600\n\\"_s;
    ASSERT_EQ(odd.size(), 10);
    EXPECT_EQ(stored(u"Name"_s, odd), odd);
    EXPECT_EQ(stored(u"Note"_s, u"'); DROP TABLE Items; --"_s), u"'); DROP TABLE Items; --"_s);
}

TEST_F(FieldsTest, zeroCharacterInAText_isStoredOrRefused)
{
    const QString zero = u"a\0b"_s;
    ASSERT_EQ(zero.size(), 3);
    if (!isOnServer()) {
        EXPECT_EQ(stored(u"Name"_s, zero), zero);
        return;
    }
    EXPECT_EQ(errorOf([&] { stored(u"Name"_s, zero); }), 3421);
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 0) << "no partial write";
}

TEST_F(FieldsTest, emptyText_differsFromNull)
{
    for (const QString& empty : {u""_s, QString()}) {
        const QVariant value = stored(u"Name"_s, empty);
        EXPECT_TRUE(value.isValid());
        EXPECT_EQ(value.toString(), QString());
        EXPECT_EQ(scalar(u"SELECT count(*) FROM Items WHERE Name IS NULL"_s), 0);
    }
    EXPECT_FALSE(stored(u"Name"_s, QVariant()).isValid());
}

TEST_F(FieldsTest, unassignedFields_areNull)
{
    const auto rows = dynaset(u"Items"_s);
    rows->AddNew();
    for (const QString& field : {u"Code"_s, u"Num"_s, u"Name"_s, u"Amount"_s, u"Day"_s})
        EXPECT_FALSE(rows->Fields(field).Value().isValid()) << qPrintable(field);
    EXPECT_EQ(rows->Fields(u"Done"_s).Value(), 0);
    rows->Update();
    for (const QString& field : {u"Num"_s, u"Small"_s, u"Name"_s, u"Amount"_s, u"Day"_s})
        EXPECT_FALSE(rows->Fields(field).Value().isValid()) << qPrintable(field);
    EXPECT_EQ(rows->Fields(u"Done"_s).Value(), 0);
    EXPECT_EQ(scalar(u"SELECT Done FROM Items"_s), 0) << "a Boolean is never Null";
}

TEST_F(FieldsTest, assignedNull_isStored)
{
    for (const QString& field : {u"Num"_s, u"Amount"_s, u"Day"_s})
        EXPECT_FALSE(stored(field, QVariant()).isValid()) << qPrintable(field);
    EXPECT_FALSE(stored(u"Num"_s, QVariant(QMetaType::fromType<int>())).isValid());
    EXPECT_EQ(stored(u"Done"_s, QVariant()), 0);
}

TEST_F(FieldsTest, trueValue_isStoredAsMinusOne)
{
    for (const QVariant& value : {QVariant(1), QVariant(true), QVariant(-1), QVariant(0.25)}) {
        EXPECT_EQ(stored(u"Done"_s, value), -1);
        EXPECT_EQ(scalar(u"SELECT max(Done) FROM Items"_s), -1);
        sql(u"DELETE FROM Items"_s);
    }
    EXPECT_EQ(stored(u"Done"_s, 0), 0);
    EXPECT_EQ(stored(u"Done"_s, false), 0);
    EXPECT_EQ(read(u"Done"_s, u"1"_s), -1);
    EXPECT_EQ(read(u"Done"_s, u"NULL"_s), 0);
}

TEST_F(FieldsTest, dates_areStoredAsIsoText)
{
    EXPECT_EQ(stored(u"Day"_s, QDate(2026, 3, 1)), QVariant(QDate(2026, 3, 1)));
    EXPECT_EQ(scalar(u"SELECT Day FROM Items"_s), u"2026-03-01"_s);
    sql(u"DELETE FROM Items"_s);
    const QDateTime noon(QDate(2026, 3, 1), QTime(12, 30), Qt::UTC);
    EXPECT_EQ(stored(u"Day"_s, noon), QVariant(noon));
    EXPECT_EQ(scalar(u"SELECT Day FROM Items"_s), u"2026-03-01T12:30:00"_s);
    const QDateTime midnight(QDate(2026, 3, 2), QTime(0, 0));
    EXPECT_EQ(stored(u"Day"_s, midnight), QVariant(QDate(2026, 3, 2)));
    EXPECT_EQ(stored(u"Day"_s, u"2026-12-31"_s), QVariant(QDate(2026, 12, 31)));
}

TEST_F(FieldsTest, timesInTheDaylightSavingGap_areStored)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Asia/Jerusalem");
    const QDateTime skipped(QDate(2026, 3, 27), QTime(2, 30), Qt::UTC);
    EXPECT_EQ(stored(u"Day"_s, u"2026-03-27T02:30:00"_s), QVariant(skipped));
    EXPECT_EQ(stored(u"Day"_s, skipped), QVariant(skipped));
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

TEST_F(FieldsTest, valueThatIsNotADate_isRefused)
{
    for (const QVariant& value :
         {QVariant(u""_s), QVariant(u"2026-13-01"_s), QVariant(u"2026-02-29"_s),
          QVariant(u"yesterday"_s), QVariant(QDate()), QVariant(5), QVariant(QDate(-5, 1, 1))})
        EXPECT_EQ(errorOfAssigning(u"Day"_s, value), 3421) << qPrintable(value.toString());
}

TEST_F(FieldsTest, datesInOtherIsoForms_areRead)
{
    const QDateTime noon(QDate(2026, 3, 1), QTime(12, 30), Qt::UTC);
    EXPECT_EQ(read(u"Day"_s, u"'2026-03-01T12:30:00'"_s), QVariant(noon));
    EXPECT_EQ(read(u"Day"_s, u"'2026-03-01 12:30:00'"_s), QVariant(noon));
    EXPECT_EQ(read(u"Day"_s, u"'2026-03-01 12:30'"_s), QVariant(noon));
    EXPECT_EQ(read(u"Day"_s, u"'2026-03-01 00:00:00'"_s), QVariant(QDate(2026, 3, 1)));
}

TEST_F(FieldsTest, storedValuesOfAnotherType_areRefused)
{
    EMBEDDED_ONLY("a server does not store values of another type");
    EXPECT_EQ(errorOfReading(u"Num"_s, u"'many'"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Num"_s, u"''"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Num"_s, u"x'00'"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Num"_s, u"2147483648"_s), 6);
    EXPECT_EQ(errorOfReading(u"Small"_s, u"40000"_s), 6);
    EXPECT_EQ(errorOfReading(u"Amount"_s, u"'wide'"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Amount"_s, u"9e999"_s), 6);
    EXPECT_EQ(errorOfReading(u"Day"_s, u"'1.3.2026'"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Day"_s, u"20260301"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Day"_s, u"'2026-03-01x'"_s), 3421);
    EXPECT_EQ(errorOfReading(u"Done"_s, u"'yes'"_s), 3421);
    EXPECT_EQ(read(u"Num"_s, u"2.5"_s), 2);
    EXPECT_EQ(read(u"Name"_s, u"'longer than it may be'"_s), u"longer than it may be"_s);
}

TEST_F(FieldsTest, assignmentOutsideAddNewAndEdit_isRefused)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    EXPECT_EQ(errorOf([&] { rows->Fields(u"Num"_s).SetValue(1); }), 3020);
    rows->Edit();
    rows->CancelUpdate();
    EXPECT_EQ(errorOf([&] { rows->Fields(u"Num"_s).SetValue(1); }), 3020);
}

} // namespace
