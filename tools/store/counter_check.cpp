#include "tools/store/counter_check.h"

#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/advice.h"
#include "tools/store/shared_texts.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

QStringList findingsOf(const dao::ExaminedCounter& counter)
{
    QStringList findings;
    if (!counter.mark)
        findings.append(say({u"the counter is missing", u"המונה חסר"}));
    if (counter.isLagging())
        findings.append(say({u"the counter stands at %1, below the highest number, %2",
                             u"המונה עומד על %1, פחות מהמספר הגבוה ביותר, %2"},
                            *counter.mark, counter.highest));
    if (counter.isExhausted())
        findings.append(say({u"the counter has no number left", u"למונה לא נשארו מספרים"}));
    return findings;
}

QStringList examine(dao::Database& database, const QString& table, const QString& field)
{
    try {
        return findingsOf(dao::examineCounter(database, table, field));
    } catch (const runtime::RunTimeError& error) {
        return {say({u"the counter cannot be read: %1", u"אי אפשר לקרוא את המונה: %1"},
                    Phrase{happened(error)})};
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
                findings.append(say(ofField, fieldOf(expected.name, field.name), Phrase{finding}));
        }
    }
    return findings;
}

} // namespace storetools
