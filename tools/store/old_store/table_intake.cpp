#include "tools/store/old_store/table_intake.h"

#include "platform/dao/engine/values.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/old_store/old_value.h"

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

const QString& keyOf(const store::TableSchema& table)
{
    return table.indexes.front().fields.front();
}

/// Returns true if an old table may lack this field. Such a field is not used by the program, or
/// the program adds it to an older store itself.
bool mayBeMissing(const store::TableSchema& table, const dao::FieldInfo& field)
{
    if (table.name == u"Orders"_s)
        return field.name != keyOf(table);
    return field.name == u"Code"_s || field.name == u"Rem"_s || field.name == u"Sign"_s;
}

/// Returns a value as it appears in a message: printable and at most 40 characters long.
QString shown(const QVariant& value)
{
    constexpr qsizetype longest = 40;
    QString text = value.toString();
    for (QChar& character : text) {
        if (!character.isPrint())
            character = u' ';
    }
    return text.size() > longest ? text.left(longest) + u"..."_s : text;
}

} // namespace

TableIntake::TableIntake(const store::TableSchema& schema, const OldTable& table, OldFormat format,
                         const TakeOverOptions& options, TakeOverReports& reports)
    : schema_(schema), format_(format), options_(options), reports_(reports),
      sources_(schema.fields.size()),
      key_(static_cast<std::size_t>(schema.ordinalOf(keyOf(schema)))),
      recordedRows_(table.recordedRows)
{
    match(table);
    for (const OldColumn& column : table.foreignColumns)
        reports_.notes.add(u"%1.%2: not a field of the store, not imported"_s.arg(
            schema.name, decodedName(column.name, format, options.codePage)));
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        if (!sources_[i])
            reportMissing(schema.fields[i]);
    }
}

void TableIntake::match(const OldTable& table)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const int ordinal = schema_.ordinalOf(table.columns[i].name);
        if (ordinal < 0 || sources_[static_cast<std::size_t>(ordinal)])
            throw RunTimeError(runtime::CorruptDatabase,
                               u"the description of %1 cannot be read"_s.arg(schema_.name));
        sources_[static_cast<std::size_t>(ordinal)] = Source{i, table.columns[i].type};
    }
}

void TableIntake::reportMissing(const dao::FieldInfo& field) const
{
    const QString missing = u"%1.%2: the field is missing"_s.arg(schema_.name, field.name);
    if (!mayBeMissing(schema_, field))
        reports_.findings.add(missing);
    else if (field.counter)
        reports_.notes.add(missing + u"; the rows are numbered from 1"_s);
    else
        reports_.notes.add(missing + (field.type == dao::dbBoolean ? u"; False in every row"_s
                                                                   : u"; Null in every row"_s));
}

QString TableIntake::found(const QString& what) const
{
    return place_ + u": "_s + what;
}

void TableIntake::setPlace(const OldRow& row)
{
    ++rows_;
    place_ = u"%1, row %2"_s.arg(schema_.name).arg(rows_);
    try {
        const QVariant key = decoded(key_, row);
        if (key.isValid())
            place_ = u"%1, %2 %3"_s.arg(schema_.name, keyOf(schema_), shown(key));
    } catch (const RunTimeError&) {
        // The error is ignored here, because the conversion of the key field reports it later.
        return;
    }
}

/// Returns the decoded value of a field, or an invalid QVariant for Null or a missing field.
QVariant TableIntake::decoded(std::size_t ordinal, const OldRow& row) const
{
    const std::optional<Source>& source = sources_[ordinal];
    if (!source || !row[source->column])
        return {};
    return decodedValue(source->type, *row[source->column], format_, options_.codePage);
}

std::optional<NewRow> TableIntake::converted(const OldRow& row)
{
    setPlace(row);
    NewRow values(sources_.size());
    bool whole = true;
    for (std::size_t i = 0; i < sources_.size(); ++i)
        whole = take(i, row, values[i]) && whole;
    if (!sources_[key_]) {
        values[key_] = static_cast<int>(rows_);
    } else if (whole && !values[key_].isValid()) {
        reports_.findings.add(found(u"has no %1"_s.arg(keyOf(schema_))));
        whole = false;
    }
    return whole ? std::optional(std::move(values)) : std::nullopt;
}

bool TableIntake::take(std::size_t ordinal, const OldRow& row, QVariant& value)
{
    const dao::FieldInfo& field = schema_.fields[ordinal];
    QVariant old;
    try {
        old = decoded(ordinal, row);
        if (!fit(field, old))
            return false;
        value = dao::converted(field, old);
    } catch (const RunTimeError& error) {
        reports_.findings.add(found(
            old.isValid()
                ? u"%1 cannot take '%2': %3"_s.arg(field.name, shown(old), error.description())
                : u"%1 cannot be read: %2"_s.arg(field.name, error.description())));
        return false;
    }
    reportRounding(field, old, value);
    return true;
}

/// Checks the length of a text against its field. If truncation is enabled, a text that is too long
/// is truncated. Otherwise it is reported and the function returns false.
bool TableIntake::fit(const dao::FieldInfo& field, QVariant& text)
{
    if (field.type != dao::dbText || text.typeId() != QMetaType::QString)
        return true;
    const QString whole = text.toString();
    if (whole.size() <= field.size)
        return true;
    const QString length = u"%1 has %2 characters"_s.arg(field.name).arg(whole.size());
    if (!options_.cutTexts) {
        reports_.findings.add(found(length + u" and takes %1"_s.arg(field.size)));
        return false;
    }
    const bool halves = whole[field.size - 1].isHighSurrogate();
    text = whole.left(halves ? field.size - 1 : field.size);
    reports_.notes.add(found(length + u" and is cut to %1"_s.arg(field.size)));
    return true;
}

void TableIntake::reportRounding(const dao::FieldInfo& field, const QVariant& from,
                                 const QVariant& to)
{
    if (field.type == dao::dbLong && from.typeId() == QMetaType::Double && from != to)
        reports_.notes.add(
            found(u"%1 is %2 and becomes %3"_s.arg(field.name, shown(from), shown(to))));
}

void TableIntake::finish() const
{
    if (rows_ != recordedRows_)
        reports_.notes.add(u"%1: has %2 rows, but its description says %3"_s.arg(schema_.name)
                               .arg(rows_)
                               .arg(recordedRows_));
}

} // namespace storetools
