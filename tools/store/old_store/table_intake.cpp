#include "tools/store/old_store/table_intake.h"

#include "platform/dao/engine/values.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/advice.h"
#include "tools/store/old_store/old_texts.h"
#include "tools/store/old_store/old_value.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

const QString& keyOf(const store::TableSchema& table)
{
    return table.indexes.front().fields.front();
}

/// Returns true if a table of an old store may lack this field. This holds for a field that the
/// program does not use, or that it adds to an older store itself.
bool mayBeMissing(const store::TableSchema& table, const dao::FieldInfo& field)
{
    if (table.name == u"Orders"_s)
        return field.name != keyOf(table);
    return field.name == u"Code"_s || field.name == u"Rem"_s || field.name == u"Sign"_s;
}

/// Returns the text of a value for a message. Characters that are not printable become spaces, and
/// a text longer than 40 characters is cut.
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
        reports_.notes.add(say(
            {u"%1: not a field of the store, not imported", u"השדה %1 אינו של התוכנית ולא יובא"},
            fieldOf(schema.name, decodedName(column.name, format, options.codePage))));
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
            throw ToldError(runtime::CorruptDatabase, say(descriptionCannotBeRead, schema_.name));
        sources_[static_cast<std::size_t>(ordinal)] = Source{i, table.columns[i].type};
    }
}

void TableIntake::reportMissing(const dao::FieldInfo& field) const
{
    const QString name = fieldOf(schema_.name, field.name);
    if (!mayBeMissing(schema_, field))
        reports_.findings.add(say(fieldIsMissing, name));
    else if (field.counter)
        reports_.notes.add(say({u"%1: the field is missing; the rows are numbered from 1",
                                u"השדה %1 חסר; הרשומות ממוספרות מ-1"},
                               name));
    else if (field.type == dao::dbBoolean)
        reports_.notes.add(say({u"%1: the field is missing; False in every row",
                                u"השדה %1 חסר; הערך הוא \"לא\" בכל הרשומות"},
                               name));
    else
        reports_.notes.add(say(
            {u"%1: the field is missing; Null in every row", u"השדה %1 חסר; הוא ריק בכל הרשומות"},
            name));
}

QString TableIntake::found(const QString& what) const
{
    return ofRow(schema_.name, shownKey_, rows_, what);
}

void TableIntake::setPlace(const OldRow& row)
{
    ++rows_;
    shownKey_.clear();
    try {
        const QVariant key = decoded(key_, row);
        if (key.isValid())
            shownKey_ = keyOf(schema_) + u' ' + shown(key);
    } catch (const RunTimeError&) {
        // A key that cannot be decoded is not reported here. It is reported when the fields of the
        // row are converted.
        return;
    }
}

/// Returns the decoded value of a field of a row. Returns an invalid QVariant for Null, and for a
/// field that the old table lacks.
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
        reports_.findings.add(found(say(hasNoKey, keyOf(schema_))));
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
            old.isValid() ? say({u"%1 cannot take '%2': %3", u"אי אפשר להכניס ל-%1 את '%2': %3"},
                                field.name, shown(old), Phrase{happened(error)})
                          : say({u"%1 cannot be read: %2", u"אי אפשר לקרוא את %1: %2"}, field.name,
                                Phrase{happened(error)})));
        return false;
    }
    reportRounding(field, old, value);
    return true;
}

/// Checks that a text is not longer than its field. If truncation is enabled, truncates a text that
/// is too long. Otherwise reports the text and returns false.
bool TableIntake::fit(const dao::FieldInfo& field, QVariant& text)
{
    if (field.type != dao::dbText || text.typeId() != QMetaType::QString)
        return true;
    const QString whole = text.toString();
    if (whole.size() <= field.size)
        return true;
    if (!options_.cutTexts) {
        reports_.findings.add(found(say(textIsTooLong, field.name, whole.size(), field.size)));
        return false;
    }
    const bool halves = whole[field.size - 1].isHighSurrogate();
    text = whole.left(halves ? field.size - 1 : field.size);
    reports_.notes.add(
        found(say({u"%1 has %2 characters and is cut to %3", u"ב-%1 היו %2 תווים, והוא קוצר ל-%3"},
                  field.name, whole.size(), field.size)));
    return true;
}

void TableIntake::reportRounding(const dao::FieldInfo& field, const QVariant& from,
                                 const QVariant& to)
{
    if (field.type == dao::dbLong && from.typeId() == QMetaType::Double && from != to)
        reports_.notes.add(found(say({u"%1 is %2 and becomes %3", u"%1 הוא %2 ונעשה %3"},
                                     field.name, shown(from), shown(to))));
}

void TableIntake::finish() const
{
    if (rows_ != recordedRows_)
        reports_.notes.add(say({u"%1: has %2 rows, but its description says %3",
                                u"בטבלה %1 יש %2 רשומות, ובתיאור שלה כתוב %3"},
                               schema_.name, rows_, recordedRows_));
}

} // namespace storetools
