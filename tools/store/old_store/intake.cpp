#include "tools/store/old_store/intake.h"

#include "tools/store/old_store/old_texts.h"
#include "tools/store/old_store/old_value.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Returns true if an old store may lack the table with this name. The program creates a missing
/// table Orders itself, and the user can enter the rows of a lookup table again. The tables Cuts
/// and Serials are required.
bool mayBeMissing(const QString& table)
{
    return table != u"Cuts"_s && table != u"Serials"_s;
}

} // namespace

Intake::Intake(RowSink& sink, const TakeOverOptions& options, TakeOverProgress progress)
    : sink_(sink), options_(options), progress_(std::move(progress))
{
}

void Intake::foreignTable(const QString& name, bool linked)
{
    const QString shown = decodedName(name, format_, options_.codePage);
    reports_.notes.add(linked ? say({u"%1: is a link to another file, not imported",
                                     u"הטבלה %1 היא קישור לקובץ אחר ולא יובאה"},
                                    shown)
                              : say({u"%1: not a table of the store, not imported",
                                     u"הטבלה %1 אינה של התוכנית ולא יובאה"},
                                    shown));
}

void Intake::table(const OldTable& table)
{
    schema_ = store::tableSchema(table.name);
    if (schema_ == nullptr || !added_.try_emplace(schema_->name).second)
        throw ToldError(runtime::CorruptDatabase, say(tablesCannotBeRead));
    table_ = std::make_unique<TableIntake>(*schema_, table, format_, options_, reports_);
    lastKey_.clear();
}

void Intake::row(const OldRow& row)
{
    const std::optional<NewRow> converted = table_->converted(row);
    if (converted)
        add(*converted);
}

void Intake::add(const NewRow& row)
{
    const auto key =
        static_cast<std::size_t>(schema_->ordinalOf(schema_->indexes.front().fields.front()));
    // The rows of an old table arrive sorted by key. Therefore a duplicate key is found by
    // comparing each key with the previous one.
    const bool doubled = lastKey_ == row[key];
    lastKey_ = row[key];
    if (doubled)
        reports_.findings.add(table_->found(say({u"occurs in several rows", u"נמצא בכמה רשומות"})));
    if (!reports_.findings.isEmpty())
        return;
    sink_.add(*schema_, row);
    RowDigest& added = added_[schema_->name];
    added.add(row);
    if (progress_)
        progress_(schema_->name, added.rows());
}

void Intake::tableEnd()
{
    table_->finish();
}

void Intake::end()
{
    for (const store::TableSchema& table : store::schema()) {
        if (added_.contains(table.name))
            continue;
        if (mayBeMissing(table.name))
            reports_.notes.add(
                say({u"%1: the table is missing; it stays empty", u"הטבלה %1 חסרה; היא נשארת ריקה"},
                    table.name));
        else
            reports_.findings.add(say(tableIsMissing, table.name));
    }
}

} // namespace storetools
