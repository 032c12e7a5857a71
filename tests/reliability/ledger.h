#pragma once

#include "reliability/expected_line.h"

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace reliability {

/// Records the changes that stations report and compares them with the store. A change that was
/// announced but not confirmed may be stored or not, but never partly.
class Ledger
{
public:
    explicit Ledger(const StoredRows& store);

    /// Sets the dates on which stations with another clock add their lines.
    void setDays(const Days& days) { days_ = days; }

    /// Records a line of a station's standard output. Concurrent stations have names.
    void tell(const QString& told, const QString& station = {});

    /// Returns the differences between the reports and the store, or an empty list if nothing is
    /// lost. An unconfirmed change then counts as the store shows it.
    QStringList findings(const StoredRows& store);

    int rowsCompared() const { return rowsCompared_; }
    int changesTold() const;
    /// Returns the number of confirmed changes of each kind, keyed by the first word of the report.
    const QMap<QString, int>& kindsTold() const { return kindsTold_; }
    bool isAnyUnderWay() const { return !underWay_.isEmpty(); }
    qsizetype lineCount() const { return lines_.size(); }

private:
    struct Line
    {
        int order = 0;
        int number = 0; ///< 0 if a report may have renumbered the line.
        int width = 0;
        int height = 0;
    };

    void apply(const QStringList& change, const QString& station);
    void forgetNumbers(int order, const QString& station);
    int numberOf(int order, int told, const QString& station) const;
    void removeLinesOf(int order);

    bool isUnderWay(const QString& change) const { return underWay_.values().contains(change); }
    QStringList checkLine(const StoredLine& stored);
    QStringList checkLines(const StoredRows& store);
    QStringList checkOrders(const StoredRows& store);
    QStringList checkOrder(int number, int highest, const QString& state, const QVariant& customer);
    QStringList checkSeries(const StoredRows& store);
    QStringList checkLists(const StoredRows& store);
    QStringList checkName(int list, int code, const QString& name);
    QStringList checkOneSeries(const QString& name, const QList<QVariant>& row);

    QMap<QString, Line> lines_;
    QMap<int, bool> closed_; ///< The state of all orders.
    QSet<int> withCustomer_;
    QMap<QString, int> series_;
    QMap<int, QMap<int, QString>> lists_;  ///< Names by code, including the delivered ones.
    QMap<QString, QString> underWay_;      ///< The unconfirmed change of each station.
    QMap<int, QSet<QString>> renumbering_; ///< The stations whose reports renumber an order.
    int firstOwnSeries_;
    std::optional<Days> days_; ///< The recent days if it is not set.
    int rowsCompared_ = 0;
    QMap<QString, int> kindsTold_;
};

} // namespace reliability
