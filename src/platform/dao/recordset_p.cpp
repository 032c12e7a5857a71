#include "platform/dao/recordset_p.h"

#include "platform/dao/engine/values.h"

namespace dao {

using runtime::RunTimeError;

Recordset::Private::Private(Opened opened, TableInfo table)
    : database(std::move(opened.database)), owner(std::move(opened.owner)),
      rows(owner->session(), std::move(table)), assigned(rows.table().fields.size())
{
}

void Recordset::Private::setIndex(const QString&)
{
    throw RunTimeError(runtime::OperationNotSupported);
}

QString Recordset::Private::index() const
{
    throw RunTimeError(runtime::OperationNotSupported);
}

void Recordset::Private::seek(const QVariant&)
{
    throw RunTimeError(runtime::OperationNotSupported);
}

Session& Recordset::Private::session() const
{
    if (closed)
        throw RunTimeError(runtime::ObjectClosed);
    return owner->session();
}

const FieldInfo& Recordset::Private::field(int ordinal) const
{
    return rows.table().fields[static_cast<std::size_t>(ordinal)];
}

void Recordset::Private::requireReadable()
{
    settle();
    if (place == Position::OnDeleted || (place == Position::OnRow && !rowExists))
        throw RunTimeError(runtime::RecordDeleted);
    if (place != Position::OnRow)
        throw RunTimeError(runtime::NoCurrentRecord);
}

void Recordset::Private::refetch()
{
    std::optional<StoredRow> found = rows.fetch(session(), row.number);
    rowExists = found.has_value();
    if (found)
        row = std::move(*found);
}

QVariant Recordset::Private::value(int ordinal)
{
    const auto index = static_cast<std::size_t>(ordinal);
    if (pending != Pending::Nothing && assigned[index])
        return *assigned[index];
    if (pending == Pending::Addition)
        return initialValue(field(ordinal));
    requireReadable();
    return fromStored(field(ordinal), row.values[index]);
}

void Recordset::Private::drop()
{
    pending = Pending::Nothing;
    assigned.assign(assigned.size(), {});
}

void Recordset::Private::standOn(std::optional<StoredRow> found, Position otherwise)
{
    if (!found) {
        place = isEmpty() ? Position::Empty : otherwise;
        return;
    }
    row = std::move(*found);
    rowExists = true;
    place = Position::OnRow;
}

std::vector<TableRows::Assignment> Recordset::Private::additions() const
{
    std::vector<TableRows::Assignment> all;
    for (std::size_t i = 0; i < assigned.size(); ++i) {
        const FieldInfo& each = rows.table().fields[i];
        const QVariant value = assigned[i] ? *assigned[i] : initialValue(each);
        if (value.isValid())
            all.push_back({static_cast<int>(i), toStored(each, value)});
    }
    return all;
}

std::vector<TableRows::Assignment> Recordset::Private::changes() const
{
    std::vector<TableRows::Assignment> all;
    for (std::size_t i = 0; i < assigned.size(); ++i) {
        if (!assigned[i])
            continue;
        const FieldInfo& each = rows.table().fields[i];
        bool same = false;
        try {
            same = fromStored(each, row.values[i]) == *assigned[i];
        } catch (const RunTimeError&) {
            same = false; // A stored value that does not fit the field is always replaced.
        }
        if (!same)
            all.push_back({static_cast<int>(i), toStored(each, *assigned[i])});
    }
    return all;
}

TableInfo expectUpdatable(Session& session, const QString& name)
{
    TableInfo table = session.expectTable(name);
    if (!table.updatable)
        throw RunTimeError(runtime::OperationNotSupported);
    return table;
}

RowOrder orderOf(const TableRows& rows, const SelectQuery& query)
{
    if (query.orderBy.isEmpty())
        return {};
    return {rows.expectField(query.orderBy)};
}

} // namespace dao
