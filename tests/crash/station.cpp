#include "crash/station.h"

#include "platform/dao/database.h"
#include "store/schema.h"

#include <QDate>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace crash {

namespace {

const QString series = u"סדרה 7000 זכוכית כפולה"_s;
const QString kind = u"אור"_s;
const QString remark = u"חלון בחדר השינה, קומה שלישית, פתיחה לרחוב"_s;

/// Returns a recordset of the table with the row of this key current.
std::shared_ptr<dao::Recordset> rowOf(dao::Database& database, const QString& table, int key)
{
    auto rows = database.OpenRecordset(table, dao::dbOpenTable);
    rows->SetIndex(u"PrimaryKey"_s);
    rows->Seek(u"="_s, key);
    if (rows->NoMatch())
        throw std::runtime_error("the station misses a row");
    return rows;
}

void edit(dao::Database& database, const QString& table, int key, const QString& field,
          const QVariant& value)
{
    const auto row = rowOf(database, table, key);
    row->Edit();
    row->Fields(field).SetValue(value);
    row->Update();
}

std::string textOf(double value)
{
    return QString::number(value, 'f', 1).toStdString();
}

constexpr double anySize = 58.5;
constexpr int anyCount = 4;

/// Returns the numbers of a line that the simulation never changes, by field. The program stores a
/// number in every field, so a line without one would be a finding of zomrel-store.
std::map<QString, QVariant> otherNumbers()
{
    std::map<QString, QVariant> numbers;
    for (const dao::FieldInfo& field : store::tableSchema(u"Cuts"_s)->fields) {
        if (field.type == dao::dbDouble)
            numbers[field.name] = anySize;
        else if (field.type == dao::dbLong)
            numbers[field.name] = anyCount;
    }
    for (const QString& changing : {u"Code"_s, u"MyWidth"_s, u"Order_Num"_s, u"NUM"_s})
        numbers.erase(changing);
    return numbers;
}

} // namespace

Station::Station(const QString& path) : database_(dao::DBEngine::instance().OpenDatabase(path)) {}

void Station::addOrder(int number)
{
    const auto orders = database_->OpenRecordset(u"Orders"_s, dao::dbOpenTable);
    orders->AddNew();
    orders->Fields(u"Number"_s).SetValue(number);
    orders->Fields(u"Order_Date"_s).SetValue(QDate(2026, 3, 1));
    orders->Update();
}

void Station::setCustomer(int order, const QString& name)
{
    edit(*database_, u"Orders"_s, order, u"CustomerName"_s, name);
}

void Station::closeOrder(int number)
{
    edit(*database_, u"Orders"_s, number, u"Open_Close"_s, true);
}

void Station::deleteOrder(int number)
{
    rowOf(*database_, u"Orders"_s, number)->Delete();
}

int Station::addLine(int order, int number, double width)
{
    const auto lines = database_->OpenRecordset(
        u"SELECT * FROM Cuts WHERE Order_Num = %1"_s.arg(order), dao::dbOpenDynaset);
    lines->AddNew();
    for (const auto& [field, value] : otherNumbers())
        lines->Fields(field).SetValue(value);
    lines->Fields(u"Name"_s).SetValue(series);
    lines->Fields(u"Kind"_s).SetValue(kind);
    lines->Fields(u"MyWidth"_s).SetValue(width);
    lines->Fields(u"Order_Num"_s).SetValue(order);
    lines->Fields(u"Rem"_s).SetValue(remark);
    lines->Fields(u"Order_Date"_s).SetValue(QDate(2026, 3, 1));
    lines->Fields(u"NUM"_s).SetValue(number);
    lines->Update();
    lines->MoveLast();
    return lines->Fields(u"Code"_s).Value().toInt();
}

void Station::changeWidth(int line, double width)
{
    edit(*database_, u"Cuts"_s, line, u"MyWidth"_s, width);
}

void Station::deleteLine(int line)
{
    rowOf(*database_, u"Cuts"_s, line)->Delete();
}

Row orderRow(int number)
{
    return {{"Number", std::to_string(number)}, {"Order_Date", "2026-03-01"}, {"Open_Close", "0"}};
}

Row lineRow(int code, int order, int number, double width)
{
    Row row{{"Code", std::to_string(code)},       {"Name", series.toStdString()},
            {"Kind", kind.toStdString()},         {"MyWidth", textOf(width)},
            {"Order_Num", std::to_string(order)}, {"Rem", remark.toStdString()},
            {"Order_Date", "2026-03-01"},         {"NUM", std::to_string(number)}};
    for (const auto& [field, value] : otherNumbers())
        row[field.toStdString()] = value.toString().toStdString();
    return row;
}

std::string orderKey(int number)
{
    return "Orders " + std::to_string(number);
}

std::string lineKey(int code)
{
    return "Cuts " + std::to_string(code);
}

} // namespace crash
