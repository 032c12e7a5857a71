#pragma once

#include "reliability/expected_line.h"

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

namespace reliability {

/// What stations have told of their changes to one store, against which the store is held. A change
/// that was announced and not told of as done may stand in the store or not, but never by half a
/// row.
class Ledger
{
public:
    explicit Ledger(const StoredRows& store);

    /// Takes a line of a station's standard output. Stations at work at once have names.
    void tell(const QString& told, const QString& station = {});

    /// Where the store differs from what was told; empty where nothing is lost. The change that was
    /// under way counts from then on as the store has it.
    QStringList findings(const StoredRows& store);

    int rowsCompared() const { return rowsCompared_; }
    int changesTold() const;
    /// How many changes of each kind have been told of, by the first word of their telling.
    const QMap<QString, int>& kindsTold() const { return kindsTold_; }
    bool isAnyUnderWay() const { return !underWay_.isEmpty(); }
    qsizetype lineCount() const { return lines_.size(); }

private:
    struct Line
    {
        int order = 0;
        int number = 0; ///< 0 where a report may have numbered it anew.
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
    QMap<int, bool> closed_; ///< All orders.
    QSet<int> withCustomer_;
    QMap<QString, int> series_;
    QMap<int, QMap<int, QString>> lists_;  ///< Names by code, the delivered ones too.
    QMap<QString, QString> underWay_;      ///< By station.
    QMap<int, QSet<QString>> renumbering_; ///< The stations whose reports number an order anew.
    int firstOwnSeries_;
    int rowsCompared_ = 0;
    QMap<QString, int> kindsTold_;
};

} // namespace reliability
