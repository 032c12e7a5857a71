#include "platform/dao/engine/store_mark.h"

#include <QDir>
#include <QUuid>

#include <map>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

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

} // namespace

StoreMark markOfOlderStore()
{
    const QString id = newId();
    return {id, id};
}

StoreMark renewed(const StoreMark& mark)
{
    return {mark.identity.isEmpty() ? newId() : mark.identity, newId()};
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
