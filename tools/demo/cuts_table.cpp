#include "demo/cuts_table.h"

#include "platform/dao/database.h"
#include "platform/runtime/conversions.h"

#include <QStringList>

#include <vector>

using namespace Qt::StringLiterals;

namespace demo {

namespace {

const QStringList fields{u"NUM"_s,          u"Name"_s,        u"Kind"_s,         u"MyWidth"_s,
                         u"MYHeight"_s,     u"Mashkof_W"_s,   u"Mashkof_H"_s,    u"Mahkof_Count"_s,
                         u"Kanaf_W"_s,      u"Kanaf_H"_s,     u"Kanaf_Count"_s,  u"Glass_W"_s,
                         u"Glass_H"_s,      u"Glass_Count"_s, u"Reshet_W"_s,     u"Reshet_H"_s,
                         u"Reshet_Count"_s, u"MyWidth_2"_s,   u"MYHeight_2"_s,   u"U_Thick"_s,
                         u"U_Cut"_s,        u"U_Vasa"_s,      u"Shalav_Thick"_s, u"Shalav_Width"_s,
                         u"Shalav_Count"_s, u"Argaz_Width"_s, u"Argaz_Height"_s};

QString shown(const QVariant& value)
{
    return runtime::isNull(value) ? QString() : runtime::toText(value);
}

} // namespace

QString cutsTable(const QString& storePath, int order)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(storePath);
    const auto lines = database->OpenRecordset(
        u"SELECT * FROM Cuts WHERE ORDER_NUM = %1 ORDER BY NUM ASC"_s.arg(order),
        dao::dbOpenDynaset);
    std::vector<QStringList> rows{fields};
    while (!lines->isEof()) {
        QStringList row;
        for (const QString& field : fields)
            row.append(shown(lines->Fields(field).Value()));
        rows.push_back(row);
        lines->MoveNext();
    }
    QString table;
    for (const QStringList& row : rows) {
        for (qsizetype column = 0; column < row.size(); ++column) {
            qsizetype width = 0;
            for (const QStringList& each : rows)
                width = qMax(width, each[column].size());
            table += row[column].leftJustified(width + 2);
        }
        table += u'\n';
    }
    return table;
}

} // namespace demo
