#include "tools/store/move.h"

#include "platform/dao/database.h"

namespace storetools {

namespace {

StoreContents moveIntoFile(const StillStore& source, const QString& path,
                           const RowsOfTable& progress)
{
    MadeStore made = makeStoreOf(source, path, Identity::New, runtime::Readers::AsUsual, progress);
    made.store->putInPlace();
    return std::move(made.contents);
}

StoreContents moveIntoDatabase(const StillStore& source, dao::Database& target,
                               const RowsOfTable& progress)
{
    target.BeginTrans();
    dao::actAsOwnerOf(target, {});
    StoreContents contents = source.copyTo(target, Identity::New, progress);
    readBack(target, contents, progress);
    createOwnTables(target);
    target.CommitTrans();
    return contents;
}

/// Checks that the target of a move contains no store. Returns the opened database if the target is
/// on a server. Returns nullptr if the target is a file, because the file is created later.
std::shared_ptr<dao::Database> emptyTarget(const Place& to)
{
    if (!to.isOnServer()) {
        requireFree(to.name());
        return nullptr;
    }
    std::shared_ptr<dao::Database> database = to.open();
    requireNoStore(*database);
    return database;
}

} // namespace

MoveOutcome moveStore(const Place& from, const Place& to, const RowsOfTable& progress)
{
    const std::shared_ptr<dao::Database> target = emptyTarget(to);
    const StillStore source(from);
    MoveOutcome outcome{.notes = source.notes(), .findings = source.findings(), .contents = {}};
    if (!outcome.findings.isEmpty())
        return outcome;
    outcome.contents = target ? moveIntoDatabase(source, *target, progress)
                              : moveIntoFile(source, to.name(), progress);
    return outcome;
}

MadeStore makeStoreOf(const StillStore& source, const QString& path, Identity identity,
                      runtime::Readers readers, const RowsOfTable& progress)
{
    MadeStore made;
    made.store = std::make_unique<NewStore>(path, NewStore::Tables::None, readers);
    made.contents = source.copyTo(made.store->database(), identity, progress);
    made.store->save();
    const auto finished = dao::DBEngine::instance().OpenDatabase(made.store->unfinishedPath());
    readBack(*finished, made.contents, progress);
    return made;
}

} // namespace storetools
