#pragma once

#include "crash/ledger.h"
#include "crash/station.h"

namespace crash {

/// A short day of a workshop on an empty store: two stations take turns at adding orders and lines,
/// changing, closing and deleting. Every change is in the ledger.
class Day
{
public:
    explicit Day(const QString& path);

    /// Runs the whole day. Passes on the error that ends a station.
    void run();
    /// Makes one change of each kind.
    void runBriefly();
    const Ledger& ledger() const { return ledger_; }
    /// Returns the highest code that the store has given to a line.
    int highestCode() const { return highestCode_; }

private:
    void addOrder(Station& station, int number);
    void addLine(Station& station, int order, int number);
    void addManyLines(Station& station);
    void changeWidth(Station& station, int line, double width);
    void setField(const std::function<void()>& change, const std::string& key,
                  const std::string& field, const std::string& value);
    void remove(const std::function<void()>& change, const std::string& key);

    QString path_;
    Ledger ledger_;
    int highestCode_ = 0;
};

} // namespace crash
