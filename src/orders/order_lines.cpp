#include "orders/order_lines.h"

#include "orders/line_remarks.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

QList<controls::DBGridColumn> lineColumns()
{
    QList<controls::DBGridColumn> columns{
        {u"גובה פתח"_s, u"MYHeight"_s, 4, 2}, {u"רוחב פתח"_s, u"MyWidth"_s, 4, 2},
        {u"שם סדרה"_s, u"Name"_s, 10, -1},    {u"סוג חלון"_s, u"Kind"_s, 7, -1},
        {u"מס' "_s, u"Num"_s, 2, -1},
    };
    // The grid has hidden columns, whose captions are the field names. The line view and the report
    // show the values of the hidden columns.
    for (const QString& field :
         {u"Mashkof_H"_s, u"Kanaf_W"_s, u"Kanaf_H"_s, u"Glass_W"_s, u"Glass_H"_s, u"Reshet_W"_s,
          u"Reshet_H"_s, u"Mashof_Kind"_s, u"Mahkof_Color"_s, u"Mahkof_Count"_s, u"Kanaf_Kind"_s,
          u"Kanaf_Color"_s, u"Kanaf_Count"_s, u"Glass_Kind"_s, u"Glass_Color"_s, u"Glass_Count"_s,
          u"Reshet_Kind"_s, u"Reshet_Color"_s, u"Reshet_Count"_s})
        columns.append({field, field, 0, -1});
    return columns;
}

} // namespace

QString linesQuery(const QString& number)
{
    return u"SELECT * FROM CUTS WHERE ORDER_NUM = "_s + number + u" ORDER BY ORDER_DATE ASC"_s;
}

controls::DBGrid* makeLinesGrid(controls::DataControl* lines, QWidget* parent)
{
    auto* grid = new controls::DBGrid(u"DBGrid1"_s, parent);
    grid->setFont(QFont(u"Arial"_s));
    grid->horizontalHeader()->setFont(QFont(u"MS Sans Serif"_s));
    grid->setCaption(u"שורות בהזמנה"_s);
    grid->setColumns(lineColumns());
    constexpr int nameColumn = 2;
    grid->setRowRemark(lineRemark(), nameColumn);
    grid->setMinimumSize(280, 150);
    grid->setDataSource(lines);
    return grid;
}

} // namespace orders
