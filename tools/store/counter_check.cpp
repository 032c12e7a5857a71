#include "tools/store/counter_check.h"

#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

QStringList findingsOf(const dao::ExaminedCounter& counter)
{
    QStringList findings;
    if (!counter.mark)
        findings.append(u"the counter is missing"_s);
    if (counter.isLagging())
        findings.append(
            u"the counter stands at %1, below the highest number, %2"_s.arg(*counter.mark)
                .arg(counter.highest));
    if (counter.isExhausted())
        findings.append(u"the counter has no number left"_s);
    return findings;
}

QStringList examine(dao::Database& database, const QString& table, const QString& field)
{
    try {
        return findingsOf(dao::examineCounter(database, table, field));
    } catch (const runtime::RunTimeError& error) {
        return {u"the counter cannot be read: "_s + error.description()};
    }
}

bool isCounted(const store::TableSchema& found, const QString& field)
{
    const int ordinal = found.ordinalOf(field);
    return ordinal >= 0 && found.fields[static_cast<std::size_t>(ordinal)].counter;
}

} // namespace

QStringList checkCounters(dao::Database& database, const Layout& layout)
{
    QStringList findings;
    for (const store::TableSchema& expected : store::wholeSchema()) {
        const store::TableSchema* found = tableIn(layout, expected.name);
        if (found == nullptr)
            continue;
        for (const dao::FieldInfo& field : expected.fields) {
            if (!field.counter || !isCounted(*found, field.name))
                continue;
            for (const QString& finding : examine(database, expected.name, field.name))
                findings.append(u"%1.%2: %3"_s.arg(expected.name, field.name, finding));
        }
    }
    return findings;
}

} // namespace storetools
