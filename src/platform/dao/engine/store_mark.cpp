#include "platform/dao/engine/store_mark.h"

#include <QDir>
#include <QUuid>

#include <map>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr int idLength = 36;

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

std::map<QString, StoreMark>& seenMarks()
{
    static std::map<QString, StoreMark> marks;
    return marks;
}

QString keyOf(const QString& path)
{
    return QDir::cleanPath(QDir().absoluteFilePath(path));
}

FieldInfo idField(const QString& name)
{
    FieldInfo field;
    field.name = name;
    field.size = idLength;
    field.required = true;
    return field;
}

} // namespace

StoreMark newStoreMark()
{
    return {newId(), newId()};
}

StoreMark markOfOlderStore()
{
    const QString id = newId();
    return {id, id};
}

StoreMark renewed(const StoreMark& mark)
{
    return {mark.identity.isEmpty() ? newId() : mark.identity, newId()};
}

TableInfo storeMarkTableInfo()
{
    TableInfo table;
    table.name = storeMarkTable;
    table.fields = {idField(u"identity"_s), idField(u"generation"_s)};
    return table;
}

std::vector<IndexInfo> storeMarkIndexes()
{
    return {{u"PrimaryKey"_s, {u"identity"_s}, true, true}};
}

StoreMark firstSeenMark(const QString& path, const StoreMark& mark)
{
    return seenMarks().try_emplace(keyOf(path), mark).first->second;
}

void expectMark(const QString& path, const StoreMark& mark)
{
    seenMarks()[keyOf(path)] = mark;
}

} // namespace dao
