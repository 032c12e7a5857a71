#pragma once

#include "platform/dao/engine/types.h"

#include <memory>

namespace dao {

/// An index of a table definition.
class Index
{
public:
    explicit Index(IndexInfo info) : info_(std::move(info)) {}
    const QString& Name() const { return info_.name; }
    const QStringList& Fields() const { return info_.fields; }
    bool Primary() const { return info_.primary; }
    const IndexInfo& info() const { return info_; }

private:
    IndexInfo info_;
};

struct TableDefState;
struct TableList;

/// A field of a table definition. The field is either a field of a table in the store, or a new
/// field that TableDef::CreateField has created.
class FieldDef
{
public:
    explicit FieldDef(FieldInfo info) : info_(std::move(info)) {}
    const QString& Name() const { return info_.name; }
    DataType Type() const { return info_.type; }
    int Size() const { return info_.size; }
    const FieldInfo& info() const { return info_; }

private:
    FieldInfo info_;
};

/// The indexes of a table: first the primary key, then the others in the order of creation.
class Indexes
{
public:
    explicit Indexes(std::shared_ptr<TableDefState> table) : table_(std::move(table)) {}
    int Count() const;
    /// Returns the index at a position or with a name. Throws ItemNotFound (3265) if there is no
    /// such index.
    Index operator()(int position) const;
    Index operator()(const QString& name) const;
    /// Adds an index to the table. If the store already contains the table, the index is created in
    /// the store immediately, and otherwise together with the table. Creating the index throws
    /// ItemNotFound (3265) if the table lacks a field of the index.
    void Append(const Index& index) const;

private:
    std::shared_ptr<TableDefState> table_;
};

/// The fields of a table definition. A field is accessed by its position or its case-insensitive
/// name.
class FieldDefs
{
public:
    explicit FieldDefs(std::shared_ptr<TableDefState> table) : table_(std::move(table)) {}
    int Count() const;
    /// Returns the field at a position or with a name. Throws ItemNotFound (3265) if there is no
    /// such field.
    FieldDef operator()(int position) const;
    FieldDef operator()(const QString& name) const;
    /// Adds a field to the table. If the store already contains the table, the field is created in
    /// the store immediately. Existing rows get Null in the new field, or False in a Boolean field.
    /// Throws FieldDefinedTwice (3191) if a field of this name exists.
    void Append(const FieldDef& field) const;
    /// Removes the field from the table. If the field was the last one, the table is removed from
    /// the store. Afterwards the table exists only in this definition until a field is appended.
    void Delete(const QString& name) const;

private:
    std::shared_ptr<TableDefState> table_;
};

/// The definition of a table, created by Database::CreateTableDef or obtained from TableDefs. All
/// TableDef objects for the same table of the same Database share one state.
class TableDef
{
public:
    const QString& Name() const;
    /// Returns false if the definition cannot be changed, for example for a view.
    bool Updatable() const;
    FieldDefs Fields() const { return FieldDefs(state_); }
    dao::Indexes indexes() const { return dao::Indexes(state_); }
    /// Creates a field with this name, type and size, without adding it to the table. A text field
    /// of size 0 gets the default size 255.
    FieldDef CreateField(const QString& name, DataType type, int size = 0) const;
    /// Creates a counter field: a whole-number field to which the store assigns numbers, starting
    /// with 1. The store never assigns a number twice, even if the row with the highest number has
    /// been deleted.
    FieldDef CreateCounter(const QString& name) const;

    explicit TableDef(std::shared_ptr<TableDefState> state) : state_(std::move(state)) {}

private:
    friend class TableDefs;
    std::shared_ptr<TableDefState> state_;
};

/// The tables of a Database.
class TableDefs
{
public:
    explicit TableDefs(std::shared_ptr<TableList> list) : list_(std::move(list)) {}
    int Count() const;
    /// Returns a table by its position in the order of creation, or by its case-insensitive name.
    /// The program's internal tables have a name but no position. Throws ItemNotFound (3265) if
    /// there is no such table.
    TableDef operator()(int position) const;
    TableDef operator()(const QString& name) const;
    /// Creates the table in the store.
    void Append(const TableDef& table) const;

private:
    std::shared_ptr<TableList> list_;
};

} // namespace dao
