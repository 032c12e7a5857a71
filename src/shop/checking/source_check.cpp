#include "shop/checking/plan_check.h"

#include <QJsonArray>

#include <map>
#include <set>

using namespace Qt::StringLiterals;

namespace shop::checking {

namespace {

/// Compares how often an item is in a plan with how often it should be there. Each item, such as a
/// piece or a pane, is identified by a text.
class Tally
{
public:
    void want(const QString& thing, int count = 1) { counts_[thing] += count; }
    void have(const QString& thing, int count = 1) { counts_[thing] -= count; }

    QStringList findings(const QString& what) const
    {
        QStringList findings;
        for (const auto& [thing, count] : counts_) {
            if (count > 0)
                findings.append(u"%1: %2 missing: %3"_s.arg(what).arg(count).arg(thing));
            else if (count < 0)
                findings.append(u"%1: %2 too many: %3"_s.arg(what).arg(-count).arg(thing));
        }
        return findings;
    }

private:
    std::map<QString, int> counts_;
};

QString words(const QJsonObject& object, const QStringList& keys)
{
    QStringList texts;
    for (const QString& key : keys) {
        const QJsonValue value = object[key];
        texts.append(value.isDouble() ? numberText(value.toDouble()) : value.toString());
    }
    return texts.join(" | "_L1);
}

QString pieceWords(const GroupKey& group, const Piece& piece)
{
    return QStringList{partName(group.part),
                       group.profile,
                       group.colour,
                       QString::number(piece.order),
                       QString::number(piece.line),
                       sideName(piece.side),
                       numberText(piece.length)}
        .join(" | "_L1);
}

QString paneWords(const Pane& pane)
{
    return QStringList{QString::number(pane.order),
                       QString::number(pane.line),
                       numberText(pane.width),
                       numberText(pane.height),
                       QString::number(pane.count),
                       pane.kind,
                       pane.colour}
        .join(" | "_L1);
}

void checkSettings(const QJsonObject& group, const SettingsByGroup& settings, QStringList& findings)
{
    const std::optional<Part> part = partNamed(group["part"_L1].toString());
    if (!part)
        return;
    const BarSettings wanted = settingsOf(
        settings, {*part, group["profile"_L1].toString(), group["colour"_L1].toString()});
    if (group["barLength"_L1].toDouble() != wanted.barLength ||
        group["kerf"_L1].toDouble() != wanted.kerf || group["trim"_L1].toDouble() != wanted.trim)
        findings.append(u"%1: bar length, kerf or trim differs from the settings"_s.arg(
            words(group, {u"part"_s, u"profile"_s, u"colour"_s})));
}

Tally pieceTally(const QJsonObject& plan, const Pieces& wanted)
{
    Tally tally;
    for (const Piece& each : wanted.pieces)
        tally.want(pieceWords(each.group, each));
    for (const QJsonValue each : plan["groups"_L1].toArray()) {
        const QJsonObject group = each.toObject();
        const QString name = words(group, {u"part"_s, u"profile"_s, u"colour"_s});
        for (const QJsonValue bars : group["bars"_L1].toArray()) {
            for (const QJsonValue piece : bars["pieces"_L1].toArray())
                tally.have(
                    name + " | "_L1 +
                    words(piece.toObject(), {u"order"_s, u"line"_s, u"side"_s, u"length"_s}));
        }
    }
    return tally;
}

} // namespace

QStringList checkAgainst(const QJsonObject& plan, const Pieces& wanted,
                         const SettingsByGroup& settings)
{
    QStringList findings = pieceTally(plan, wanted).findings(u"pieces"_s);
    for (const QJsonValue each : plan["groups"_L1].toArray())
        checkSettings(each.toObject(), settings, findings);
    Tally panes;
    for (const Pane& each : wanted.glass)
        panes.want(paneWords(each));
    for (const QJsonValue each : plan["glass"_L1].toArray())
        panes.have(words(each.toObject(), {u"order"_s, u"line"_s, u"width"_s, u"height"_s,
                                           u"count"_s, u"kind"_s, u"colour"_s}));
    Tally errors;
    for (const Fault& each : wanted.faults)
        errors.want(QStringList{QString::number(each.order), QString::number(each.line),
                                partName(each.part), sideName(each.side), reasonText(each)}
                        .join(" | "_L1));
    for (const QJsonValue each : plan["errors"_L1].toArray())
        errors.have(
            words(each.toObject(), {u"order"_s, u"line"_s, u"part"_s, u"side"_s, u"reason"_s}));
    return findings + panes.findings(u"glass"_s) + errors.findings(u"errors"_s);
}

QList<int> ordersIn(const QJsonObject& plan)
{
    std::set<int> orders;
    const auto addFrom = [&](const QJsonArray& list) {
        for (const QJsonValue each : list)
            orders.insert(each["order"_L1].toInt());
    };
    for (const QJsonValue group : plan["groups"_L1].toArray()) {
        for (const QJsonValue bars : group["bars"_L1].toArray())
            addFrom(bars["pieces"_L1].toArray());
    }
    addFrom(plan["glass"_L1].toArray());
    addFrom(plan["errors"_L1].toArray());
    return {orders.begin(), orders.end()};
}

} // namespace shop::checking
