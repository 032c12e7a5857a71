#include "reliability/expected_line.h"

#include "store/schema.h"
#include "support/plain_sql.h"
#include "support/temporary_store.h"

#include <QDate>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace reliability {

namespace {

constexpr double sashes = 2;

using Numbers = QList<std::pair<QString, double>>;

/// Calculates the numbers of a line from the opening. The deductions of addSeriesOfLines are
/// constants here. A monoblock uses the picker's first proposal: 2.80 off the width, 18 off the
/// height, slats of 4.5 that are 12.7 shorter than the width, a 6.5 profile.
Numbers numbersOf(double width, double height, bool monoblock)
{
    const double baseWidth = monoblock ? width - 2.8 : width;
    const double baseHeight = monoblock ? height - 18 : height;
    const auto shutter = [monoblock](double value) { return monoblock ? value : 0; };
    return {{u"Mashkof_W"_s, baseWidth - 1},
            {u"Mashkof_H"_s, baseHeight - 1.5},
            {u"Kanaf_W"_s, (baseWidth - 4.2) / sashes},
            {u"Kanaf_H"_s, baseHeight - 7.5},
            {u"Glass_W"_s, (baseWidth - 13.4) / sashes},
            {u"Glass_H"_s, baseHeight - 16},
            {u"Reshet_W"_s, (baseWidth - 6.3) / sashes},
            {u"Reshet_H"_s, baseHeight - 8.25},
            {u"Mahkof_Count"_s, 2},
            {u"Kanaf_Count"_s, 4},
            {u"Glass_Count"_s, 2},
            {u"Reshet_Count"_s, 2},
            {u"MyWidth_2"_s, shutter(baseWidth)},
            {u"MYHeight_2"_s, shutter(baseHeight)},
            {u"U_Thick"_s, shutter(6.5)},
            {u"U_Cut"_s, shutter(height - 14)},
            {u"U_Vasa"_s, shutter(height - 17.6)},
            {u"Shalav_Thick"_s, shutter(4.5)},
            {u"Shalav_Width"_s, shutter(width - 12.7)},
            {u"Shalav_Count"_s, shutter(std::nearbyint((height - 8) / 4.5))},
            {u"Argaz_Width"_s, shutter(width)},
            {u"Argaz_Height"_s, shutter(18)}};
}

/// Returns true for fields that adding a line fills.
bool isFilled(const QString& field)
{
    return field != u"Rem" && field != u"Sign";
}

bool isWithin(const Days& days, const QString& text)
{
    const QDate day = QDate::fromString(text, Qt::ISODate);
    return day.isValid() && day >= days.first && day <= days.last;
}

} // namespace

StoredRows::StoredRows(testsupport::TemporaryStore& store)
    : ask_([&store](const QString& sql, const QList<QVariant>& values) {
          return store.rows(sql, values);
      })
{
}

StoredRows::StoredRows(testsupport::PlainSql& store)
    : ask_([&store](const QString& sql, const QList<QVariant>& values) {
          return store.rows(sql, values);
      })
{
}

QList<QList<QVariant>> StoredRows::rows(const QString& sql, const QList<QVariant>& values) const
{
    return ask_(sql, values);
}

QVariant StoredRows::scalar(const QString& sql, const QList<QVariant>& values) const
{
    const QList<QList<QVariant>> all = rows(sql, values);
    return all.isEmpty() ? QVariant() : all.first().first();
}

QString seriesOfLines()
{
    return u"סדרת בדיקה"_s;
}

void addSeriesOfLines(testsupport::TemporaryStore& store)
{
    store.addSeries(seriesOfLines(), {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, int(sashes),
                    2);
}

QString listedName(const QString& tag)
{
    constexpr qsizetype longest = 50;
    return tag.leftJustified(longest, u'ש');
}

QList<StoredLine> storedLines(const StoredRows& store)
{
    QStringList fields;
    for (const dao::FieldInfo& field : store::tableSchema(u"Cuts"_s)->fields)
        fields.append(field.name);
    QList<StoredLine> all;
    for (const QList<QVariant>& row :
         store.rows(u"SELECT %1 FROM Cuts ORDER BY Code"_s.arg(fields.join(u", "_s)))) {
        StoredLine line;
        for (qsizetype i = 0; i < fields.size(); ++i)
            line.insert(fields[i], row[i]);
        all.append(line);
    }
    return all;
}

Days recentDays()
{
    const QDate today = QDate::currentDate();
    return {today.addDays(-1), today};
}

QStringList lineFindings(const StoredLine& line, const Days& days)
{
    QStringList findings;
    const QString tag = line[u"Mashof_Kind"_s].toString();
    const auto expect = [&](bool good, const QString& field) {
        if (!good)
            findings.append(u"line %1: %2 is '%3'"_s.arg(tag, field, line[field].toString()));
    };
    for (auto field = line.begin(); field != line.end(); ++field)
        expect(!isFilled(field.key()) || !field.value().isNull(), field.key());
    const QString kind = line[u"Kind"_s].toString();
    const bool monoblock = kind == u"מונו בלוק : 10";
    expect(monoblock || kind == u"אור", u"Kind"_s);
    expect(line[u"Name"_s].toString() == seriesOfLines(), u"Name"_s);
    expect(isWithin(days, line[u"Order_Date"_s].toString()), u"Order_Date"_s);
    expect(line[u"NUM"_s].toInt() >= 1, u"NUM"_s);
    for (const QString& field :
         {u"Mahkof_Color"_s, u"Kanaf_Kind"_s, u"Kanaf_Color"_s, u"Glass_Kind"_s, u"Glass_Color"_s,
          u"Reshet_Kind"_s, u"Reshet_Color"_s})
        expect(line[field].toString() == tag, field);
    for (const auto& [field, value] :
         numbersOf(line[u"MyWidth"_s].toDouble(), line[u"MYHeight"_s].toDouble(), monoblock))
        expect(std::abs(line[field].toDouble() - value) < 1e-9, field);
    return findings;
}

} // namespace reliability
