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
    explicit Ledger(testsupport::TemporaryStore& store);

    /// Takes a line of a station's standard output.
    void tell(const QString& told);

    /// Where the store differs from what was told; empty where nothing is lost. The change that was
    /// under way counts from then on as the store has it.
    QStringList findings(testsupport::TemporaryStore& store);

    int rowsCompared() const { return rowsCompared_; }
    int changesTold() const { return changesTold_; }
    qsizetype lineCount() const { return lines_.size(); }

private:
    struct Line
    {
        int order = 0;
        int number = 0; ///< 0 where a report may have numbered it anew.
        int width = 0;
        int height = 0;
    };

    void apply(const QStringList& change);
    void forgetNumbers(int order);
    void removeLinesOf(int order);

    bool isUnderWay(const QString& change) const { return underWay_ == change; }
    QStringList checkLine(const StoredLine& stored);
    QStringList checkLines(testsupport::TemporaryStore& store);
    QStringList checkOrders(testsupport::TemporaryStore& store);
    QStringList checkOrder(int number, const QString& state, const QVariant& customer);
    QStringList checkSeries(testsupport::TemporaryStore& store);
    QStringList checkOneSeries(const QString& name, const QList<QVariant>& row);

    QMap<QString, Line> lines_;
    QMap<int, bool> closed_; ///< All orders.
    QSet<int> withCustomer_;
    QMap<QString, int> series_;
    QString underWay_;
    int firstOwnSeries_;
    int rowsCompared_ = 0;
    int changesTold_ = 0;
};

} // namespace reliability
