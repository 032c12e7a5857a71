#pragma once

#include "crash/contents.h"

#include <QString>

#include <memory>

namespace dao {
class Database;
}

namespace crash {

/// One station at work on a store, through the object model that the forms use.
class Station
{
public:
    explicit Station(const QString& path);

    /// Each change returns after the store has acknowledged it.
    void addOrder(int number);
    void setCustomer(int order, const QString& name);
    void closeOrder(int number);
    void deleteOrder(int number);
    /// Returns the code that the store has given to the line.
    int addLine(int order, int number, double width);
    void changeWidth(int line, double width);
    void deleteLine(int line);

private:
    std::shared_ptr<dao::Database> database_;
};

/// The rows that the station's changes have to leave, as SQLite shows them.
Row orderRow(int number);
Row lineRow(int code, int order, int number, double width);
std::string orderKey(int number);
std::string lineKey(int code);

} // namespace crash
