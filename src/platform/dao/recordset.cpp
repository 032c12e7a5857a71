#include "platform/dao/recordset.h"

#include "platform/dao/engine/values.h"
#include "platform/dao/recordset_p.h"

namespace dao {

using runtime::RunTimeError;
using Position = Recordset::Private::Position;
using Pending = Recordset::Private::Pending;

Recordset::Recordset(std::unique_ptr<Private> d) : d_(std::move(d)) {}

Recordset::~Recordset() = default;

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
    d_->session();
    return d_->recordCount();
}

bool Recordset::isBof() const
{
    d_->session();
    d_->settle();
    return d_->place == Position::Before || d_->place == Position::Empty;
}

bool Recordset::isEof() const
{
    d_->session();
    d_->settle();
    return d_->place == Position::After || d_->place == Position::Empty;
}

bool Recordset::hasCurrent() const
{
    d_->session();
    d_->settle();
    return d_->place == Position::OnRow && d_->rowExists;
}

namespace {

/// Moves the current row and notifies the observer before and after it.
template <typename Motion>
void moving(Recordset& recordset, Recordset::Private& d, Motion motion)
{
    // Keeps the recordset alive if the observer releases it.
    const std::shared_ptr<Recordset> alive = recordset.shared_from_this();
    if (d.observer != nullptr)
        d.observer->currentAboutToChange();
    d.session(); // This call throws if the observer has closed the database.
    d.drop();
    motion();
    if (d.observer != nullptr)
        d.observer->currentChanged();
}

} // namespace

void Recordset::MoveFirst()
{
    d_->session();
    if (d_->isEmpty())
        throw RunTimeError(runtime::NoCurrentRecord);
    moving(*this, *d_, [this] { d_->goFirst(); });
}

void Recordset::MoveLast()
{
    d_->session();
    if (d_->isEmpty())
        throw RunTimeError(runtime::NoCurrentRecord);
    d_->reachEnd();
    moving(*this, *d_, [this] { d_->goLast(); });
}

void Recordset::MoveNext()
{
    Move(1);
}

void Recordset::MovePrevious()
{
    Move(-1);
}

void Recordset::Move(int rows)
{
    d_->session();
    d_->settle();
    if (d_->place == Position::Nowhere || (rows >= 0 && isEof()) || (rows <= 0 && isBof()))
        throw RunTimeError(runtime::NoCurrentRecord);
    moving(*this, *d_, [this, rows] {
        if (rows != 0)
            d_->goBy(rows);
        else if (d_->place == Position::OnRow)
            d_->refetch();
    });
}

void Recordset::SetIndex(const QString& name)
{
    d_->session();
    d_->setIndex(name);
    d_->drop();
    d_->standFirst();
    if (d_->observer != nullptr)
        d_->observer->currentChanged();
}

QString Recordset::Index() const
{
    d_->session();
    return d_->index();
}

void Recordset::Seek(const QString& comparison, const QVariant& key)
{
    d_->session();
    if (d_->type() != dbOpenTable || comparison != u'=')
        throw RunTimeError(runtime::OperationNotSupported);
    if (d_->index().isEmpty())
        throw RunTimeError(runtime::NoCurrentIndex);
    moving(*this, *d_, [this, &key] { d_->seek(key); });
}

bool Recordset::NoMatch() const
{
    d_->session();
    return d_->noMatch;
}

void Recordset::AddNew()
{
    d_->session();
    d_->drop();
    d_->pending = Pending::Addition;
}

void Recordset::Edit()
{
    d_->session();
    d_->drop();
    d_->requireReadable();
    d_->refetch();
    d_->requireReadable();
    d_->pending = Pending::Change;
}

void Recordset::Update()
{
    Session& session = d_->session();
    if (d_->pending == Pending::Nothing)
        throw RunTimeError(runtime::UpdateWithoutEdit);
    if (d_->pending == Pending::Addition) {
        d_->settle(); // before the row is there that would be the first
        const RowNumber number = d_->rows.insert(session, d_->additions());
        d_->drop();
        const bool first = d_->place == Position::Empty;
        d_->rowAdded(number);
        if (first)
            d_->goTo(number);
        if (d_->observer != nullptr)
            d_->observer->rowAdded(number);
        if (first && d_->observer != nullptr)
            d_->observer->currentChanged();
        return;
    }
    const std::vector<TableRows::Assignment> changes = d_->changes();
    if (!changes.empty() && !d_->rows.update(session, d_->row.number, changes))
        throw RunTimeError(runtime::RecordDeleted);
    for (const TableRows::Assignment& each : changes)
        d_->row.values[static_cast<std::size_t>(each.ordinal)] = each.stored;
    d_->drop();
    if (!changes.empty() && d_->observer != nullptr)
        d_->observer->rowUpdated(d_->row.number);
}

void Recordset::CancelUpdate()
{
    d_->session();
    if (d_->pending == Pending::Nothing)
        throw RunTimeError(runtime::UpdateWithoutEdit);
    d_->drop();
}

void Recordset::Delete()
{
    d_->session();
    d_->requireReadable();
    const std::shared_ptr<Recordset> alive = shared_from_this();
    if (d_->observer != nullptr)
        d_->observer->currentAboutToChange();
    d_->drop();
    if (!d_->rows.remove(d_->session(), d_->row.number))
        throw RunTimeError(runtime::RecordDeleted);
    d_->place = Position::OnDeleted;
    d_->rowRemoved();
    if (d_->observer != nullptr)
        d_->observer->rowDeleted(d_->row.number);
}

int Recordset::FieldCount() const
{
    return static_cast<int>(fieldInfos().size());
}

const std::vector<FieldInfo>& Recordset::fieldInfos() const
{
    d_->session();
    return d_->rows.table().fields;
}

Field Recordset::Fields(const QString& name)
{
    d_->session();
    return Fields(d_->rows.table().ordinalOf(name));
}

Field Recordset::Fields(int ordinal)
{
    if (ordinal < 0 || ordinal >= FieldCount())
        throw RunTimeError(runtime::ItemNotFound);
    return Field(*this, ordinal);
}

void Recordset::Requery()
{
    d_->session();
    d_->drop();
    d_->requery();
    d_->goFirst();
    if (d_->observer != nullptr)
        d_->observer->currentChanged();
}

void Recordset::requeryAsFarAsReached()
{
    d_->session();
    d_->drop();
    d_->requeryAsFarAsReached();
    d_->goFirst();
    if (d_->observer != nullptr)
        d_->observer->currentChanged();
}

void Recordset::markReached(int count) noexcept
{
    d_->reach(count);
}

void Recordset::Close()
{
    d_->session();
    d_->drop();
    d_->closed = true;
    d_->database.reset();
    d_->owner.reset();
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
    d_->session();
    const RowNumber number = key.toLongLong();
    if (!key.isValid() || !d_->has(number))
        return false;
    moving(*this, *d_, [this, number] { d_->goTo(number); });
    return true;
}

std::unique_ptr<RecordsetPages> Recordset::pages()
{
    d_->session();
    return makePages(d_->owner, d_->rows, d_->allRows());
}

const QString& Field::Name() const
{
    return recordset_->fieldInfos()[static_cast<std::size_t>(ordinal_)].name;
}

DataType Field::Type() const
{
    return recordset_->fieldInfos()[static_cast<std::size_t>(ordinal_)].type;
}

int Field::Size() const
{
    return recordset_->fieldInfos()[static_cast<std::size_t>(ordinal_)].size;
}

QVariant Field::Value() const
{
    recordset_->d_->session();
    return recordset_->d_->value(ordinal_);
}

void Field::SetValue(const QVariant& value)
{
    Recordset::Private& d = *recordset_->d_;
    d.session();
    if (d.pending == Pending::Nothing)
        throw RunTimeError(runtime::UpdateWithoutEdit);
    d.assigned[static_cast<std::size_t>(ordinal_)] = converted(d.field(ordinal_), value);
}

} // namespace dao
