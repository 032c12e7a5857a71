#include "shop/checking/plan_check.h"

#include "shop/checking/lower_bound.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <set>

using namespace Qt::StringLiterals;

namespace shop::checking {

namespace {

constexpr double noise = 1e-9;
/// Floating-point sums of the same lengths, added in different sequences, differ by less than this
/// value.
constexpr double noiseOfSums = 1.1e-9;

bool isWhole(const QJsonValue& value, double least)
{
    return value.isDouble() && value.toDouble() >= least && value.toDouble() < 2147483648.0 &&
           std::floor(value.toDouble()) == value.toDouble();
}

/// Returns true if the value is any 32-bit integer. The numbers of orders and lines are tested with
/// it, because they may be 0 or negative.
bool isInteger(const QJsonValue& value)
{
    return isWhole(value, -2147483648.0);
}

bool isLength(const QJsonValue& value)
{
    return value.isDouble() && std::isfinite(value.toDouble());
}

/// Returns an error text for each missing or unknown key of a JSON object.
QStringList wrongKeys(const QJsonObject& object, const QStringList& wanted)
{
    QStringList findings;
    for (const QString& key : wanted) {
        if (!object.contains(key))
            findings.append(u"'%1' is missing"_s.arg(key));
    }
    for (const QString& key : object.keys()) {
        if (!wanted.contains(key))
            findings.append(u"'%1' is unknown"_s.arg(key));
    }
    return findings;
}

/// Returns the names of the sides, "width" or "height" or both, for which pieces of a part are cut.
/// Returns an empty list for an unknown part.
QStringList sidesOf(const QString& part)
{
    if (part == "frame"_L1 || part == "sash"_L1 || part == "mesh"_L1)
        return {u"width"_s, u"height"_s};
    if (part == "guide"_L1)
        return {u"height"_s};
    if (part == "slat"_L1 || part == "box"_L1)
        return {u"width"_s};
    return {};
}

/// Checks the section of a plan.json that describes one group of pieces.
class GroupCheck
{
public:
    GroupCheck(const QJsonObject& group, QStringList& findings)
        : group_(group), findings_(findings),
          name_(u"%1 '%2' '%3'"_s.arg(group["part"_L1].toString(), group["profile"_L1].toString(),
                                      group["colour"_L1].toString()))
    {
    }

    void run()
    {
        if (!checkShape())
            return;
        barLength_ = group_["barLength"_L1].toDouble();
        kerf_ = group_["kerf"_L1].toDouble();
        trim_ = group_["trim"_L1].toDouble();
        const QJsonArray bars = group_["bars"_L1].toArray();
        for (bar_ = 1; bar_ <= bars.size(); ++bar_)
            checkBars(bars[bar_ - 1].toObject());
        checkTotals();
    }

private:
    void add(const QString& finding) { findings_.append(name_ + ": "_L1 + finding); }
    void addOfBar(const QString& finding) { add(u"bar %1: %2"_s.arg(bar_).arg(finding)); }

    bool checkShape()
    {
        const QStringList wrong =
            wrongKeys(group_, {u"part"_s, u"profile"_s, u"colour"_s, u"barLength"_s, u"kerf"_s,
                               u"trim"_s, u"bound"_s, u"proved"_s, u"stops"_s, u"bars"_s});
        for (const QString& each : wrong)
            add(each);
        if (!wrong.isEmpty())
            return false;
        const qsizetype before = findings_.size();
        if (sidesOf(group_["part"_L1].toString()).isEmpty())
            add(u"unknown part"_s);
        if (!group_["profile"_L1].isString() || !group_["colour"_L1].isString())
            add(u"profile and colour must be texts"_s);
        for (const QString& key : {u"barLength"_s, u"kerf"_s, u"trim"_s}) {
            if (!isLength(group_[key]) || group_[key].toDouble() < 0)
                add(u"'%1' is not a length"_s.arg(key));
        }
        if (!isWhole(group_["bound"_L1], 0) || !isWhole(group_["stops"_L1], 0) ||
            !group_["proved"_L1].isBool())
            add(u"bound, stops or proved has the wrong type"_s);
        if (group_["bars"_L1].toArray().isEmpty())
            add(u"there are no bars"_s);
        return findings_.size() == before;
    }

    bool checkPiece(const QJsonObject& piece)
    {
        QStringList wrong =
            wrongKeys(piece, {u"order"_s, u"line"_s, u"part"_s, u"side"_s, u"length"_s});
        if (wrong.isEmpty()) {
            if (piece["part"_L1] != group_["part"_L1])
                wrong.append(u"a piece belongs to another part"_s);
            else if (!sidesOf(piece["part"_L1].toString()).contains(piece["side"_L1].toString()))
                wrong.append(u"a piece has the wrong side"_s);
            if (!isInteger(piece["order"_L1]) || !isInteger(piece["line"_L1]))
                wrong.append(u"a piece has no valid order or line"_s);
            if (!isLength(piece["length"_L1]) || piece["length"_L1].toDouble() <= 0)
                wrong.append(u"a piece has no length greater than 0"_s);
        }
        for (const QString& each : wrong)
            addOfBar(each);
        return wrong.isEmpty();
    }

    void checkBars(const QJsonObject& bars)
    {
        const QStringList wrong = wrongKeys(bars, {u"count"_s, u"rest"_s, u"pieces"_s});
        for (const QString& each : wrong)
            addOfBar(each);
        const QJsonArray pieces = bars["pieces"_L1].toArray();
        if (!wrong.isEmpty() || !isWhole(bars["count"_L1], 1) || !isLength(bars["rest"_L1]))
            return addOfBar(u"count or rest is wrong"_s);
        const qsizetype count = bars["count"_L1].toInt();
        if (pieces.isEmpty() || pieces.size() % count != 0)
            return addOfBar(
                u"%1 pieces cannot be divided among %2 equal bars"_s.arg(pieces.size()).arg(count));
        std::vector<double> lengths;
        for (const QJsonValue each : pieces) {
            if (!checkPiece(each.toObject()))
                return;
            lengths.push_back(each.toObject()["length"_L1].toDouble());
        }
        const std::size_t perBar = lengths.size() / static_cast<std::size_t>(count);
        for (std::size_t i = perBar; i < lengths.size(); ++i) {
            if (std::abs(lengths[i] - lengths[i % perBar]) >= noise)
                return addOfBar(u"the bars are not equal"_s);
        }
        lengths.resize(perBar);
        checkLengths(lengths, bars["rest"_L1].toDouble());
        bars_ += count;
        for (qsizetype i = 0; i < count; ++i)
            lengths_.insert(lengths_.end(), lengths.begin(), lengths.end());
        patterns_.push_back(std::move(lengths));
    }

    /// Returns the sum of the lengths plus one kerf for each length.
    double used(const std::vector<double>& lengths) const
    {
        double sum = 0;
        for (const double each : lengths)
            sum += each + kerf_;
        return sum;
    }

    void checkLengths(const std::vector<double>& lengths, double rest)
    {
        const double usable = barLength_ - 2 * trim_;
        const double need = used(lengths) - kerf_; // The last piece needs no kerf.
        if (need > usable + noiseOfSums)
            addOfBar(u"pieces and kerfs need %1, but the bar has %2"_s.arg(need, 0, 'g', 15)
                         .arg(usable, 0, 'g', 15));
        const double left = std::max(0.0, usable - need - kerf_);
        if (std::abs(left - rest) > noiseOfSums)
            addOfBar(
                u"the rest is %1 and should be %2"_s.arg(rest, 0, 'g', 15).arg(left, 0, 'g', 15));
    }

    void checkTotals()
    {
        int stops = 0;
        double at = 0;
        for (std::size_t i = 0; i < patterns_.size(); ++i) {
            for (const double length : patterns_[i]) {
                if (std::abs(length - at) >= noise)
                    ++stops;
                at = length;
            }
            for (std::size_t j = 0; j < i; ++j) {
                if (isSame(patterns_[i], patterns_[j]))
                    add(u"bars %1 and %2 are equal but not joined"_s.arg(j + 1).arg(i + 1));
            }
        }
        if (stops != group_["stops"_L1].toInt())
            add(u"stops is %1 and should be %2"_s.arg(group_["stops"_L1].toInt()).arg(stops));
        checkBound();
    }

    static bool isSame(const std::vector<double>& one, const std::vector<double>& other)
    {
        return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                          [](double a, double b) { return std::abs(a - b) < noise; });
    }

    void checkBound()
    {
        const int bound = group_["bound"_L1].toInt();
        if (bound > bars_)
            add(u"the bound %1 is greater than the number of bars, %2"_s.arg(bound).arg(bars_));
        const double usable = barLength_ - 2 * trim_;
        const int needed = usable > 0 ? lowerBound(lengths_, usable, kerf_) : 0;
        if (bound < needed)
            add(u"the bound is %1, but the lengths need at least %2 bars"_s.arg(bound).arg(needed));
        if (group_["proved"_L1].toBool() != (bound == bars_))
            add(u"proved must be true exactly if the number of bars equals the bound"_s);
    }

    const QJsonObject group_;
    QStringList& findings_;
    QString name_;
    double barLength_ = 0;
    double kerf_ = 0;
    double trim_ = 0;
    qsizetype bar_ = 0;
    qsizetype bars_ = 0;
    std::vector<double> lengths_; ///< Of all pieces.
    std::vector<std::vector<double>> patterns_;
};

void checkPane(const QJsonObject& pane, QStringList& findings)
{
    QStringList wrong = wrongKeys(
        pane, {u"order"_s, u"line"_s, u"width"_s, u"height"_s, u"count"_s, u"kind"_s, u"colour"_s});
    if (wrong.isEmpty() && (!isInteger(pane["order"_L1]) || !isInteger(pane["line"_L1]) ||
                            !isLength(pane["width"_L1]) || pane["width"_L1].toDouble() <= 0 ||
                            !isLength(pane["height"_L1]) || pane["height"_L1].toDouble() <= 0 ||
                            !isWhole(pane["count"_L1], 1) || !pane["kind"_L1].isString() ||
                            !pane["colour"_L1].isString()))
        wrong.append(u"a value has the wrong type or is not greater than 0"_s);
    for (const QString& each : wrong)
        findings.append("glass: "_L1 + each);
}

void checkError(const QJsonObject& error, QStringList& findings)
{
    QStringList wrong =
        wrongKeys(error, {u"order"_s, u"line"_s, u"part"_s, u"side"_s, u"reason"_s});
    if (wrong.isEmpty()) {
        const QString part = error["part"_L1].toString();
        const QString side = error["side"_L1].toString();
        if (!isInteger(error["order"_L1]) || !isInteger(error["line"_L1]))
            wrong.append(u"there is no valid order or line"_s);
        if (part != "glass"_L1 && sidesOf(part).isEmpty())
            wrong.append(u"unknown part '%1'"_s.arg(part));
        if (side != "width"_L1 && side != "height"_L1)
            wrong.append(u"unknown side '%1'"_s.arg(side));
        if (error["reason"_L1].toString().isEmpty())
            wrong.append(u"there is no reason"_s);
    }
    for (const QString& each : wrong)
        findings.append("errors: "_L1 + each);
}

} // namespace

QStringList checkPlan(const QJsonObject& plan)
{
    QStringList findings = wrongKeys(plan, {u"groups"_s, u"glass"_s, u"errors"_s});
    for (const QString& key : {u"groups"_s, u"glass"_s, u"errors"_s}) {
        if (plan.contains(key) && !plan[key].isArray())
            findings.append(u"'%1' is not a list"_s.arg(key));
    }
    if (!findings.isEmpty())
        return findings;
    QSet<QString> groups;
    for (const QJsonValue each : plan["groups"_L1].toArray()) {
        const QJsonObject group = each.toObject();
        const QString name =
            QStringList{group["part"_L1].toString(), group["profile"_L1].toString(),
                        group["colour"_L1].toString()}
                .join(QChar(0));
        if (groups.contains(name))
            findings.append(u"%1: the group occurs twice"_s.arg(group["part"_L1].toString()));
        groups.insert(name);
        GroupCheck(group, findings).run();
    }
    for (const QJsonValue each : plan["glass"_L1].toArray())
        checkPane(each.toObject(), findings);
    for (const QJsonValue each : plan["errors"_L1].toArray())
        checkError(each.toObject(), findings);
    return findings;
}

QStringList checkPlanFile(const QByteArray& file)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file, &error);
    if (error.error != QJsonParseError::NoError)
        return {u"the file is not JSON: %1"_s.arg(error.errorString())};
    if (!document.isObject())
        return {u"the file does not contain a plan"_s};
    return checkPlan(document.object());
}

} // namespace shop::checking
