#include "platform/dao/table_def_p.h"

#include "platform/dao/engine/field_search.h"

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr int tableExists = 3010;
constexpr int noFieldDefined = 3264;
constexpr int defaultTextSize = 255;

/// Returns the element at a position. Throws ItemNotFound (3265) if the position does not exist.
template <typename Element>
const Element& at(const std::vector<Element>& all, int position)
{
    if (position < 0 || position >= static_cast<int>(all.size()))
        throw RunTimeError(runtime::ItemNotFound);
    return all[static_cast<std::size_t>(position)];
}

Session& sessionOf(const std::weak_ptr<const SessionOwner>& owner)
{
    const std::shared_ptr<const SessionOwner> held = owner.lock();
    if (!held)
        throw RunTimeError(runtime::ObjectClosed);
    return held->session();
}

/// Returns the state of a table definition (a TableDefState) for a table in the store. The fields
/// and indexes of the table are read later.
std::shared_ptr<TableDefState> stateOf(const TableInfo& table,
                                       const std::weak_ptr<const SessionOwner>& owner)
{
    auto state = std::make_shared<TableDefState>();
    state->name = table.name;
    state->updatable = table.updatable;
    state->appended = true;
    state->owner = owner;
    return state;
}

} // namespace

bool isOwnTable(const QString& name)
{
    return name.startsWith("zomrel_"_L1, Qt::CaseInsensitive);
}

Session& TableDefState::session() const
{
    return sessionOf(owner);
}

std::vector<FieldInfo>& TableDefState::knownFields()
{
    Session& engine = session();
    if (!fields) {
        std::optional<TableInfo> found = engine.table(name);
        if (!found)
            throw RunTimeError(runtime::ItemNotFound);
        fields = std::move(found->fields);
    }
    return *fields;
}

std::vector<IndexInfo>& TableDefState::knownIndexes()
{
    Session& engine = session();
    if (!indexes)
        indexes = engine.indexes(name);
    return *indexes;
}

void TableDefState::requireFields(const IndexInfo& index)
{
    for (const QString& each : index.fields)
        at(knownFields(), ordinalOf(knownFields(), each));
}

void TableDefState::createInStore()
{
    Session& engine = session();
    if (engine.table(name))
        throw RunTimeError(tableExists, u"Table '%1' already exists."_s.arg(name));
    for (const IndexInfo& each : *indexes)
        requireFields(each);
    Transaction transaction(engine);
    const auto [before, after] = engine.dialect().createTable({name, true, *fields}, *indexes);
    engine.runAll(before + after);
    transaction.commit();
}

int Indexes::Count() const
{
    return static_cast<int>(table_->knownIndexes().size());
}

Index Indexes::operator()(int position) const
{
    return Index(at(table_->knownIndexes(), position));
}

Index Indexes::operator()(const QString& name) const
{
    return operator()(ordinalOf(table_->knownIndexes(), name));
}

void Indexes::Append(const Index& index) const
{
    std::vector<IndexInfo>& known = table_->knownIndexes();
    if (table_->appended) {
        // A primary key can only be created together with its table. Appending one to an existing
        // table is therefore refused.
        if (index.Primary())
            throw RunTimeError(runtime::OperationNotSupported);
        table_->requireFields(index.info());
        Session& session = table_->session();
        session.run(session.dialect().createIndex(table_->name, index.info()));
    }
    if (index.Primary())
        known.insert(known.begin(), index.info());
    else
        known.push_back(index.info());
}

int FieldDefs::Count() const
{
    return static_cast<int>(table_->knownFields().size());
}

FieldDef FieldDefs::operator()(int position) const
{
    return FieldDef(at(table_->knownFields(), position));
}

FieldDef FieldDefs::operator()(const QString& name) const
{
    return operator()(ordinalOf(table_->knownFields(), name));
}

void FieldDefs::Append(const FieldDef& field) const
{
    std::vector<FieldInfo>& known = table_->knownFields();
    if (ordinalOf(known, field.Name()) >= 0)
        throw RunTimeError(runtime::FieldDefinedTwice);
    if (table_->appended && !known.empty()) {
        // A counter field cannot be added to an existing table. A row gets its number when it is
        // added, so the existing rows would have no numbers.
        if (field.info().counter)
            throw RunTimeError(runtime::OperationNotSupported);
        Session& session = table_->session();
        Transaction transaction(session);
        session.runAll(session.dialect().addField(table_->name, field.info()));
        transaction.commit();
    }
    const bool bringsBack = table_->standsHereAlone();
    known.push_back(field.info());
    if (!bringsBack)
        return;
    try {
        table_->createInStore();
    } catch (const RunTimeError&) {
        known.pop_back();
        throw;
    }
}

void FieldDefs::Delete(const QString& name) const
{
    std::vector<FieldInfo>& known = table_->knownFields();
    const int position = ordinalOf(known, name);
    if (position < 0)
        throw RunTimeError(runtime::ItemNotFound);
    if (table_->appended) {
        Session& session = table_->session();
        const QString table = Dialect::quoted(table_->name);
        if (known.size() == 1) {
            session.run("DROP TABLE "_L1 + table);
            table_->knownIndexes().clear();
        } else {
            const QString& field = known[static_cast<std::size_t>(position)].name;
            session.run(u"ALTER TABLE %1 DROP COLUMN %2"_s.arg(table, Dialect::quoted(field)));
        }
    }
    known.erase(known.begin() + position);
}

const QString& TableDef::Name() const
{
    state_->session();
    return state_->name;
}

bool TableDef::Updatable() const
{
    state_->session();
    return state_->updatable;
}

FieldDef TableDef::CreateField(const QString& name, DataType type, int size) const
{
    const int textSize = size > 0 ? size : defaultTextSize;
    return FieldDef({.name = name, .type = type, .size = type == dbText ? textSize : 0});
}

FieldDef TableDef::CreateCounter(const QString& name) const
{
    return FieldDef({.name = name, .type = dbLong, .counter = true});
}

std::vector<std::shared_ptr<TableDefState>> TableList::listed()
{
    std::vector<std::shared_ptr<TableDefState>> all;
    for (const TableInfo& each : sessionOf(owner).tables()) {
        if (isOwnTable(each.name))
            continue;
        auto found = std::find_if(known.begin(), known.end(), [&](const auto& state) {
            return state->name.compare(each.name, Qt::CaseInsensitive) == 0;
        });
        if (found == known.end()) {
            found = known.insert(known.end(), stateOf(each, owner));
        }
        all.push_back(*found);
    }
    for (const auto& each : known) {
        if (each->fields && each->fields->empty() &&
            std::find(all.begin(), all.end(), each) == all.end())
            all.push_back(each);
    }
    return all;
}

int TableDefs::Count() const
{
    return static_cast<int>(list_->listed().size());
}

TableDef TableDefs::operator()(int position) const
{
    return TableDef(at(list_->listed(), position));
}

TableDef TableDefs::operator()(const QString& name) const
{
    for (const auto& each : list_->listed()) {
        if (each->name.compare(name, Qt::CaseInsensitive) == 0)
            return TableDef(each);
    }
    const std::optional<TableInfo> own =
        isOwnTable(name) ? sessionOf(list_->owner).table(name) : std::nullopt;
    if (!own)
        throw RunTimeError(runtime::ItemNotFound);
    return TableDef(stateOf(*own, list_->owner));
}

void TableDefs::Append(const TableDef& table) const
{
    const std::shared_ptr<TableDefState>& state = table.state_;
    if (state->knownFields().empty())
        throw RunTimeError(noFieldDefined, u"No field defined - cannot append TableDef."_s);
    state->createInStore();
    state->appended = true;
    list_->known.push_back(state);
}

} // namespace dao
