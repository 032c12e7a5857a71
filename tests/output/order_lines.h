#pragma once

#include "platform/report/memory_rows.h"

#include <QDate>
#include <QHash>

namespace testsupport {

using Values = QHash<QString, QVariant>;

/// The columns of an order line that the report reads, in the store's spelling.
inline const QStringList& lineColumns()
{
    static const QStringList names{QStringLiteral("NUM"),          QStringLiteral("Order_Date"),
                                   QStringLiteral("Name"),         QStringLiteral("Kind"),
                                   QStringLiteral("MyWidth"),      QStringLiteral("MYHeight"),
                                   QStringLiteral("MyWidth_2"),    QStringLiteral("MYHeight_2"),
                                   QStringLiteral("Argaz_Width"),  QStringLiteral("Argaz_Height"),
                                   QStringLiteral("Mashkof_W"),    QStringLiteral("Mashkof_H"),
                                   QStringLiteral("Mahkof_Count"), QStringLiteral("Mashof_Kind"),
                                   QStringLiteral("Mahkof_Color"), QStringLiteral("Kanaf_W"),
                                   QStringLiteral("Kanaf_H"),      QStringLiteral("Kanaf_Count"),
                                   QStringLiteral("Kanaf_Kind"),   QStringLiteral("Kanaf_Color"),
                                   QStringLiteral("Glass_W"),      QStringLiteral("Glass_H"),
                                   QStringLiteral("Glass_Count"),  QStringLiteral("Glass_Kind"),
                                   QStringLiteral("Glass_Color"),  QStringLiteral("Reshet_W"),
                                   QStringLiteral("Reshet_H"),     QStringLiteral("Reshet_Count"),
                                   QStringLiteral("Reshet_Kind"),  QStringLiteral("Reshet_Color"),
                                   QStringLiteral("U_Thick"),      QStringLiteral("U_Cut"),
                                   QStringLiteral("U_Vasa"),       QStringLiteral("Shalav_Thick"),
                                   QStringLiteral("Shalav_Width"), QStringLiteral("Shalav_Count")};
    return names;
}

/// Returns a line of an ordinary window.
inline Values ordinaryLine(int number)
{
    return {{QStringLiteral("NUM"), number},
            {QStringLiteral("Order_Date"), QDate(2026, 3, 1)},
            {QStringLiteral("Name"), QStringLiteral("קליל 7000 הזזה")},
            {QStringLiteral("Kind"), QStringLiteral("אור")},
            {QStringLiteral("MyWidth"), 120.5},
            {QStringLiteral("MYHeight"), 100.25},
            {QStringLiteral("MyWidth_2"), 0.0},
            {QStringLiteral("MYHeight_2"), 0.0},
            {QStringLiteral("Argaz_Width"), 0.0},
            {QStringLiteral("Argaz_Height"), 0.0},
            {QStringLiteral("Mashkof_W"), 118.75},
            {QStringLiteral("Mashkof_H"), 98.5},
            {QStringLiteral("Mahkof_Count"), 2},
            {QStringLiteral("Mashof_Kind"), QStringLiteral("רגיל")},
            {QStringLiteral("Mahkof_Color"), QStringLiteral("לבן")},
            {QStringLiteral("Kanaf_W"), 57.25},
            {QStringLiteral("Kanaf_H"), 91.5},
            {QStringLiteral("Kanaf_Count"), 4},
            {QStringLiteral("Kanaf_Kind"), QStringLiteral("מחוזק")},
            {QStringLiteral("Kanaf_Color"), QStringLiteral("חום")},
            {QStringLiteral("Glass_W"), 50.5},
            {QStringLiteral("Glass_H"), 84.25},
            {QStringLiteral("Glass_Count"), 2},
            {QStringLiteral("Glass_Kind"), QStringLiteral("שקוף")},
            {QStringLiteral("Glass_Color"), QStringLiteral("ירוק")},
            {QStringLiteral("Reshet_W"), 58.75},
            {QStringLiteral("Reshet_H"), 92.5},
            {QStringLiteral("Reshet_Count"), 2},
            {QStringLiteral("Reshet_Kind"), QStringLiteral("גלילה")},
            {QStringLiteral("Reshet_Color"), QStringLiteral("אפור")},
            {QStringLiteral("U_Thick"), 0.0},
            {QStringLiteral("U_Cut"), 0.0},
            {QStringLiteral("U_Vasa"), 0.0},
            {QStringLiteral("Shalav_Thick"), 0.0},
            {QStringLiteral("Shalav_Width"), 0.0},
            {QStringLiteral("Shalav_Count"), 0}};
}

/// Returns the line with some values replaced.
inline Values with(Values line, const Values& others)
{
    for (auto each = others.cbegin(); each != others.cend(); ++each)
        line[each.key()] = each.value();
    return line;
}

/// Returns a line of a window with a roller-shutter box.
inline Values monoblockLine(int number)
{
    return with(ordinaryLine(number),
                {{QStringLiteral("Kind"), QStringLiteral("מונובלוק : 20 מכסה 15")},
                 {QStringLiteral("MyWidth_2"), 120.5},
                 {QStringLiteral("MYHeight_2"), 80.17},
                 {QStringLiteral("Argaz_Width"), 119.7},
                 {QStringLiteral("Argaz_Height"), 20.08},
                 {QStringLiteral("U_Thick"), 6.5},
                 {QStringLiteral("U_Cut"), 81.67},
                 {QStringLiteral("U_Vasa"), 97.5},
                 {QStringLiteral("Shalav_Thick"), 3.9},
                 {QStringLiteral("Shalav_Width"), 112.3},
                 {QStringLiteral("Shalav_Count"), 26}});
}

/// Returns a line of a door. Glass and mesh have no size, and the U thickness is the frame's
/// thickness.
inline Values doorLine(int number)
{
    return with(ordinaryLine(number), {{QStringLiteral("Name"), QStringLiteral("דלת כניסה 9400")},
                                       {QStringLiteral("MyWidth_2"), 85.0},
                                       {QStringLiteral("MYHeight_2"), 203.75},
                                       {QStringLiteral("Glass_W"), 0.0},
                                       {QStringLiteral("Glass_H"), 0.0},
                                       {QStringLiteral("Reshet_W"), 0.0},
                                       {QStringLiteral("Reshet_H"), 0.0},
                                       {QStringLiteral("U_Thick"), 4.25}});
}

inline MemoryRows::Row lineRow(const Values& line)
{
    MemoryRows::Row row;
    for (const QString& name : lineColumns())
        row.push_back(line.value(name));
    return row;
}

/// Returns a record source with these lines.
inline std::shared_ptr<MemoryRows> orderLines(const QList<Values>& lines)
{
    return std::make_shared<MemoryRows>(lineColumns(), static_cast<int>(lines.size()),
                                        [lines](int row) { return lineRow(lines[row]); });
}

/// Returns this number of ordinary lines, numbered from 1.
inline std::shared_ptr<MemoryRows> ordinaryLines(int count)
{
    return std::make_shared<MemoryRows>(lineColumns(), count,
                                        [](int row) { return lineRow(ordinaryLine(row + 1)); });
}

} // namespace testsupport
