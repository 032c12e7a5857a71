#include "reliability/ledger.h"

#include "store/schema.h"

#include <cmath>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace reliability {

namespace {

/// Returns the eight lookup tables in grid order: kinds first, then colours.
QStringList listTables()
{
    QStringList kinds;
    QStringList colours;
    for (const store::PartLists& part : store::partLists()) {
        kinds.append(part.kindTable);
        colours.append(part.colorTable);
    }
    return kinds + colours;
}

QList<QList<QVariant>> namesOf(const StoredRows& store, int list)
{
    return store.rows(u"SELECT Code, Name FROM %1 ORDER BY Code"_s.arg(listTables()[list]));
}

} // namespace

Ledger::Ledger(const StoredRows& store)
    : firstOwnSeries_(store.scalar(u"SELECT max(AutoNum) + 1 FROM Serials"_s).toInt())
{
    for (int list = 0; list < listTables().size(); ++list) {
        for (const QList<QVariant>& row : namesOf(store, list))
            lists_[list].insert(row[0].toInt(), row[1].toString());
    }
}

void Ledger::tell(const QString& told, const QString& station)
{
    if (told == u"ready")
        return;
    if (told.startsWith(u"? ")) {
        underWay_[station] = told.mid(2);
        const QStringList words = told.mid(2).split(u' ');
        if (words[0] == u"printed" || words[0] == u"closed")
            forgetNumbers(words[1].toInt(), station);
        return;
    }
    underWay_.remove(station);
    const QStringList words = told.split(u' ');
    ++kindsTold_[words[0]];
    apply(words, station);
}

int Ledger::changesTold() const
{
    return std::accumulate(kindsTold_.begin(), kindsTold_.end(), 0);
}

void Ledger::apply(const QStringList& change, const QString& station)
{
    const QString& what = change[0];
    if (what == u"line") {
        const int order = change[1].toInt();
        const int number = numberOf(order, change[3].toInt(), station);
        lines_.insert(change[2], {order, number, change[4].toInt(), change[5].toInt()});
        withCustomer_.insert(order);
    } else if (what == u"order") {
        const int order = change[1].toInt();
        closed_.insert(order, closed_.value(order, false));
    } else if (what == u"closed") {
        closed_[change[1].toInt()] = true;
        withCustomer_.insert(change[1].toInt());
    } else if (what == u"deleted") {
        lines_.remove(change[1]);
    } else if (what == u"emptied") {
        removeLinesOf(change[1].toInt());
    } else if (what == u"series") {
        series_[change[1]] = change[2].toInt();
    } else if (what == u"seriesdeleted") {
        series_.remove(change[1]);
    } else if (what == u"name" || what == u"renamed") {
        lists_[change[1].toInt()][change[3].toInt()] = listedName(change[2]);
    } else if (what == u"unnamed") {
        lists_[change[1].toInt()].remove(change[2].toInt());
    }
}

/// Returns the line's number, or 0 if it is unknown because another station's report may have
/// renumbered the order.
int Ledger::numberOf(int order, int told, const QString& station) const
{
    const QSet<QString> renumbering = renumbering_.value(order);
    return (renumbering - QSet<QString>{station}).isEmpty() ? told : 0;
}

void Ledger::forgetNumbers(int order, const QString& station)
{
    renumbering_[order].insert(station);
    for (Line& line : lines_) {
        if (line.order == order)
            line.number = 0;
    }
}

void Ledger::removeLinesOf(int order)
{
    lines_.removeIf([order](const auto& each) { return each.value().order == order; });
}

QStringList Ledger::findings(const StoredRows& store)
{
    QStringList all =
        checkLines(store) + checkOrders(store) + checkSeries(store) + checkLists(store);
    underWay_.clear();
    return all;
}

QStringList Ledger::checkLine(const StoredLine& stored)
{
    ++rowsCompared_;
    QStringList findings = lineFindings(stored, days_.value_or(recentDays()));
    const QString tag = stored[u"Mashof_Kind"_s].toString();
    const int order = stored[u"Order_Num"_s].toInt();
    if (!lines_.contains(tag)) {
        if (!isUnderWay(u"line %1 %2"_s.arg(order).arg(tag)))
            findings.append(u"line %1 was never added"_s.arg(tag));
        lines_.insert(tag, {order, 0, int(stored[u"MyWidth"_s].toDouble()),
                            int(stored[u"MYHeight"_s].toDouble())});
        return findings;
    }
    const Line& line = lines_[tag];
    if (line.order != order || line.width + 0.5 != stored[u"MyWidth"_s].toDouble() ||
        line.height + 0.25 != stored[u"MYHeight"_s].toDouble() ||
        (line.number != 0 && line.number != stored[u"NUM"_s].toInt()))
        findings.append(u"line %1 is not the one that was added"_s.arg(tag));
    return findings;
}

QStringList Ledger::checkLines(const StoredRows& store)
{
    QStringList findings;
    QSet<QString> seen;
    for (const StoredLine& stored : storedLines(store)) {
        findings += checkLine(stored);
        const QString tag = stored[u"Mashof_Kind"_s].toString();
        if (seen.contains(tag))
            findings.append(u"line %1 stands there twice"_s.arg(tag));
        seen.insert(tag);
    }
    for (const QString& tag : lines_.keys()) {
        if (seen.contains(tag))
            continue;
        if (!isUnderWay(u"deleted "_s + tag) && !isUnderWay(u"emptied %1"_s.arg(lines_[tag].order)))
            findings.append(u"line %1 is lost"_s.arg(tag));
        lines_.remove(tag);
    }
    return findings;
}

QStringList Ledger::checkOrders(const StoredRows& store)
{
    QStringList findings;
    QSet<int> seen;
    // Each station that was adding an order may have stored one that it has not reported.
    const int highest =
        (closed_.isEmpty() ? 0 : closed_.lastKey()) + int(underWay_.values().count(u"order"_s));
    for (
        const QList<QVariant>& row : store.rows(
            u"SELECT Number, Open_Close, CustomerName, Order_Date FROM Orders ORDER BY Number"_s)) {
        const int number = row[0].toInt();
        findings += checkOrder(number, highest, row[1].toString(), row[2]);
        if (row[3].isNull() || seen.contains(number))
            findings.append(u"order %1 has no date or stands there twice"_s.arg(number));
        seen.insert(number);
    }
    for (const int number : closed_.keys()) {
        if (!seen.contains(number))
            findings.append(u"order %1 is lost"_s.arg(number));
    }
    return findings;
}

QStringList Ledger::checkOrder(int number, int highest, const QString& state,
                               const QVariant& customer)
{
    ++rowsCompared_;
    QStringList findings;
    if (!closed_.contains(number)) {
        if (number > highest)
            findings.append(u"order %1 was never taken"_s.arg(number));
        closed_.insert(number, false);
    }
    const bool isClosed = state == u"-1";
    if (isClosed != closed_[number] && !isUnderWay(u"closed %1"_s.arg(number)))
        findings.append(u"order %1 has the state %2"_s.arg(number).arg(state));
    if (!isClosed && state != u"0")
        findings.append(u"order %1 has the state '%2'"_s.arg(number).arg(state));
    closed_[number] = isClosed;
    const bool mayBeNull = !withCustomer_.contains(number);
    if (!(mayBeNull && customer.isNull()) && customer.toString() != u"לקוח %1"_s.arg(number))
        findings.append(u"order %1 has the customer '%2'"_s.arg(number).arg(customer.toString()));
    return findings;
}

QStringList Ledger::checkSeries(const StoredRows& store)
{
    QStringList findings;
    if (store.scalar(u"SELECT count(*) FROM Serials WHERE AutoNum < ?"_s, {firstOwnSeries_}) !=
        store.scalar(u"SELECT ? - 1"_s, {firstOwnSeries_}))
        findings.append(u"a delivered series is lost"_s);
    QSet<QString> seen;
    for (const QList<QVariant>& row : store.rows(
             u"SELECT Name, Rem, Nativ_Num, Kanaf_Num, %1 FROM Serials WHERE AutoNum >= ?"_s.arg(
                 store::deductionFields().join(u", "_s)),
             {firstOwnSeries_})) {
        findings += checkOneSeries(row[0].toString(), row);
        seen.insert(row[0].toString());
    }
    for (const QString& name : series_.keys()) {
        if (seen.contains(name))
            continue;
        if (!isUnderWay(u"seriesdeleted "_s + name))
            findings.append(u"series %1 is lost"_s.arg(name));
        series_.remove(name);
    }
    return findings;
}

QStringList Ledger::checkOneSeries(const QString& name, const QList<QVariant>& row)
{
    ++rowsCompared_;
    QStringList findings;
    const int number = row[1].toInt();
    if (series_.value(name, 0) != number && !isUnderWay(u"series %1 %2"_s.arg(name).arg(number)))
        findings.append(u"series %1 has the remark '%2'"_s.arg(name, row[1].toString()));
    series_[name] = number;
    if (row[2].toInt() != 2 || row[3].toInt() != 2)
        findings.append(u"series %1 has other counts"_s.arg(name));
    for (qsizetype i = 4; i < row.size(); ++i) {
        if (row[i].isNull() || std::abs(row[i].toDouble() + number + 0.25) > 1e-9)
            findings.append(u"series %1 has the deduction '%2'"_s.arg(name, row[i].toString()));
    }
    return findings;
}

QStringList Ledger::checkLists(const StoredRows& store)
{
    QStringList findings;
    for (int list = 0; list < listTables().size(); ++list) {
        QSet<int> codes;
        QSet<QString> names;
        for (const QList<QVariant>& row : namesOf(store, list)) {
            findings += checkName(list, row[0].toInt(), row[1].toString());
            codes.insert(row[0].toInt());
            names.insert(row[1].toString());
        }
        if (names.size() != codes.size())
            findings.append(u"a name of list %1 stands there twice"_s.arg(list));
        for (const int code : lists_[list].keys()) {
            if (codes.contains(code))
                continue;
            if (!isUnderWay(u"unnamed %1 %2"_s.arg(list).arg(code)))
                findings.append(u"name %1 of list %2 is lost"_s.arg(lists_[list][code]).arg(list));
            lists_[list].remove(code);
        }
    }
    return findings;
}

/// A name whose change was not confirmed may be the old or the new one.
QStringList Ledger::checkName(int list, int code, const QString& name)
{
    ++rowsCompared_;
    const bool isKnown = lists_[list].contains(code);
    const QString former = std::exchange(lists_[list][code], name);
    if (isKnown && former == name)
        return {};
    const QStringList open = underWay_.values().filter(isKnown ? u"renamed "_s : u"name "_s);
    for (const QString& each : open) {
        const QStringList words = each.split(u' ');
        if (words[1].toInt() == list && listedName(words[2]) == name &&
            (!isKnown || words[3].toInt() == code))
            return {};
    }
    return {u"list %1 has '%2' in the place of '%3'"_s.arg(QString::number(list), name, former)};
}

} // namespace reliability
