#include "platform/dao/recordset.h"

#include "platform/dao/engine/values.h"
#include "platform/dao/recordset_p.h"

namespace dao {

using runtime::RunTimeError;
using Position = Recordset::Private::Position;
using Pending = Recordset::Private::Pending;

Recordset::Recordset(std::unique_ptr<Private> d) : d_(std::move(d)) {}

Recordset::~Recordset() = default;

Recordset::Private& Recordset::live() const
{
    d_->session();
    return *d_;
}

Recordset::Private& Recordset::settled() const
{
    live().settle();
    return *d_;
}

RecordsetType Recordset::Type() const
{
    return d_->type();
}

const std::shared_ptr<Database>& Recordset::database() const
{
    return d_->database;
}

int Recordset::RecordCount()
{
    return live().recordCount();
}

bool Recordset::isBof() const
{
    const Position place = settled().place;
    return place == Position::Before || place == Position::Empty;
}

bool Recordset::isEof() const
{
    const Position place = settled().place;
    return place == Position::After || place == Position::Empty;
}

bool Recordset::hasCurrent() const
{
    const Private& d = settled();
    return d.place == Position::OnRow && d.rowExists;
}

namespace {

/// Makes another row current by calling the function `motion`, and notifies the observer before and
/// after the move.
template <typename Motion>
void moving(Recordset& recordset, Recordset::Private& d, Motion motion)
{
    // This shared pointer keeps the recordset alive until the function returns, because the
    // observer may release its own pointer to the recordset.
    const std::shared_ptr<Recordset> alive = recordset.shared_from_this();
    if (d.observer != nullptr)
        d.observer->currentAboutToChange();
    d.session(); // This call throws if the observer has closed the database.
    d.drop();
    motion();
    if (d.observer != nullptr)
        d.observer->currentChanged();
}

/// Runs the query of a recordset again by calling the member function `query`, and makes the first
/// row current.
void restart(Recordset::Private& d, void (Recordset::Private::*query)())
{
    d.drop();
    (d.*query)();
    d.goFirst();
    if (d.observer != nullptr)
        d.observer->currentChanged();
}

} // namespace

void Recordset::MoveFirst()
{
    Private& d = live();
    if (d.isEmpty())
        throw RunTimeError(runtime::NoCurrentRecord);
    moving(*this, d, [&d] { d.goFirst(); });
}

void Recordset::MoveLast()
{
    Private& d = live();
    if (d.isEmpty())
        throw RunTimeError(runtime::NoCurrentRecord);
    d.reachEnd();
    moving(*this, d, [&d] { d.goLast(); });
}

void Recordset::Move(int rows)
{
    Private& d = settled();
    if (d.place == Position::Nowhere || (rows >= 0 && isEof()) || (rows <= 0 && isBof()))
        throw RunTimeError(runtime::NoCurrentRecord);
    moving(*this, d, [&d, rows] {
        if (rows != 0)
            d.goBy(rows);
        else if (d.place == Position::OnRow)
            d.refetch();
    });
}

void Recordset::SetIndex(const QString& name)
{
    Private& d = live();
    d.setIndex(name);
    d.drop();
    d.standFirst();
    if (d.observer != nullptr)
        d.observer->currentChanged();
}

QString Recordset::Index() const
{
    return live().index();
}

void Recordset::Seek(const QString& comparison, const QVariant& key)
{
    Private& d = live();
    if (d.type() != dbOpenTable || comparison != u'=')
        throw RunTimeError(runtime::OperationNotSupported);
    if (d.index().isEmpty())
        throw RunTimeError(runtime::NoCurrentIndex);
    moving(*this, d, [&d, &key] { d.seek(key); });
}

bool Recordset::NoMatch() const
{
    return live().noMatch;
}

void Recordset::AddNew()
{
    Private& d = live();
    d.drop();
    d.pending = Pending::Addition;
}

void Recordset::Edit()
{
    Private& d = live();
    d.drop();
    d.requireReadable();
    d.refetch();
    d.requireReadable();
    d.pending = Pending::Change;
}

void Recordset::Update()
{
    Private& d = live();
    if (d.pending == Pending::Nothing)
        throw RunTimeError(runtime::UpdateWithoutEdit);
    if (d.pending == Pending::Addition) {
        d.settle(); // before the row is there that would be the first
        const RowNumber number = d.rows.insert(d.session(), d.additions());
        d.drop();
        const bool first = d.place == Position::Empty;
        d.rowAdded(number);
        if (first)
            d.goTo(number);
        if (d.observer != nullptr)
            d.observer->rowAdded(number);
        if (first && d.observer != nullptr)
            d.observer->currentChanged();
        return;
    }
    const std::vector<TableRows::Assignment> changes = d.changes();
    if (!changes.empty() && !d.rows.update(d.session(), d.row.number, changes))
        throw RunTimeError(runtime::RecordDeleted);
    for (const TableRows::Assignment& each : changes)
        d.row.values[static_cast<std::size_t>(each.ordinal)] = each.stored;
    d.drop();
    if (!changes.empty() && d.observer != nullptr)
        d.observer->rowUpdated(d.row.number);
}

void Recordset::CancelUpdate()
{
    Private& d = live();
    if (d.pending == Pending::Nothing)
        throw RunTimeError(runtime::UpdateWithoutEdit);
    d.drop();
}

void Recordset::Delete()
{
    Private& d = live();
    d.requireReadable();
    const std::shared_ptr<Recordset> alive = shared_from_this();
    if (d.observer != nullptr)
        d.observer->currentAboutToChange();
    d.drop();
    if (!d.rows.remove(d.session(), d.row.number))
        throw RunTimeError(runtime::RecordDeleted);
    d.place = Position::OnDeleted;
    d.rowRemoved();
    if (d.observer != nullptr)
        d.observer->rowDeleted(d.row.number);
}

const std::vector<FieldInfo>& Recordset::fieldInfos() const
{
    return live().rows.table().fields;
}

Field Recordset::Fields(const QString& name)
{
    return Fields(live().rows.table().ordinalOf(name));
}

Field Recordset::Fields(int ordinal)
{
    if (ordinal < 0 || ordinal >= FieldCount())
        throw RunTimeError(runtime::ItemNotFound);
    return Field(*this, ordinal);
}

void Recordset::Requery()
{
    restart(live(), &Private::requery);
}

void Recordset::requeryAsFarAsReached()
{
    restart(live(), &Private::requeryAsFarAsReached);
}

void Recordset::markReached(int count) noexcept
{
    d_->reach(count);
}

void Recordset::Close()
{
    Private& d = live();
    d.drop();
    d.closed = true;
    d.database.reset();
    d.owner.reset();
}

void Recordset::setObserver(RecordsetObserver* observer)
{
    d_->observer = observer;
}

RowKey Recordset::currentKey() const
{
    return hasCurrent() ? RowKey(d_->row.number) : RowKey();
}

bool Recordset::moveToKey(const RowKey& key)
{
    Private& d = live();
    const RowNumber number = key.toLongLong();
    if (!key.isValid() || !d.has(number))
        return false;
    moving(*this, d, [&d, number] { d.goTo(number); });
    return true;
}

std::unique_ptr<RecordsetPages> Recordset::pages()
{
    Private& d = live();
    return makePages(d.owner, d.rows, d.allRows());
}

const FieldInfo& Field::info() const
{
    return recordset_->fieldInfos()[static_cast<std::size_t>(ordinal_)];
}

QVariant Field::Value() const
{
    return recordset_->live().value(ordinal_);
}

void Field::SetValue(const QVariant& value)
{
    Recordset::Private& d = recordset_->live();
    if (d.pending == Pending::Nothing)
        throw RunTimeError(runtime::UpdateWithoutEdit);
    d.assigned[static_cast<std::size_t>(ordinal_)] = converted(d.field(ordinal_), value);
}

} // namespace dao
