#include "crash/day.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace crash {

Day::Day(const QString& path) : path_(path), ledger_(Contents()) {}

void Day::run()
{
    Station first(path_);
    Station second(path_);
    addOrder(first, 1);
    setField([&] { first.setCustomer(1, u"כהן"_s); }, orderKey(1), "CustomerName", "כהן");
    for (int number = 1; number <= 6; ++number)
        addLine(number % 2 == 0 ? second : first, 1, number);
    changeWidth(second, 2, 87.5);
    remove([&] { first.deleteLine(3); }, lineKey(3));
    addLine(second, 1, 7);
    addOrder(second, 2);
    setField([&] { first.closeOrder(1); }, orderKey(1), "Open_Close", "-1");
    addManyLines(second);
    remove([&] { first.deleteLine(highestCode_); }, lineKey(highestCode_));
    addOrder(first, 3);
    remove([&] { second.deleteOrder(3); }, orderKey(3));
}

void Day::runBriefly()
{
    Station first(path_);
    Station second(path_);
    addOrder(first, 1);
    addLine(first, 1, 1);
    addLine(second, 1, 2);
    changeWidth(first, 2, 87.5);
    remove([&] { second.deleteLine(1); }, lineKey(1));
    setField([&] { first.closeOrder(1); }, orderKey(1), "Open_Close", "-1");
}

void Day::addOrder(Station& station, int number)
{
    Contents after = ledger_.contents();
    after[orderKey(number)] = orderRow(number);
    ledger_.make([&] { station.addOrder(number); }, after);
}

/// The store gives the codes 1, 2, 3 and so on.
void Day::addLine(Station& station, int order, int number)
{
    const double width = 100.5 + number;
    const int expected = highestCode_ + 1;
    Contents after = ledger_.contents();
    after[lineKey(expected)] = lineRow(expected, order, number, width);
    int code = 0;
    ledger_.make([&] { code = station.addLine(order, number, width); }, after);
    if (code != expected)
        throw std::runtime_error("the store has given the code " + std::to_string(code));
    highestCode_ = code;
}

/// Adds 20 lines, which is enough to make the table grow by new pages.
void Day::addManyLines(Station& station)
{
    for (int number = 1; number <= 20; ++number)
        addLine(station, 2, number);
}

void Day::changeWidth(Station& station, int line, double width)
{
    setField([&] { station.changeWidth(line, width); }, lineKey(line), "MyWidth",
             QString::number(width, 'f', 1).toStdString());
}

void Day::setField(const std::function<void()>& change, const std::string& key,
                   const std::string& field, const std::string& value)
{
    Contents after = ledger_.contents();
    after[key][field] = value;
    ledger_.make(change, after);
}

void Day::remove(const std::function<void()>& change, const std::string& key)
{
    Contents after = ledger_.contents();
    after.erase(key);
    ledger_.make(change, after);
}

} // namespace crash
