#include "tools/store/old_store/take_over.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/checker.h"
#include "tools/store/new_store.h"
#include "tools/store/old_store/reading.h"
#include "tools/store/place.h"
#include "tools/store/shared_texts.h"
#include "tools/store/store_copy.h"
#include "tools/store/told_error.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

/// Checks that the file at this path is an old store and is readable. Throws DatabaseFileNotFound
/// (3024), PermissionDenied (3051) or UnrecognizedFormat (3343) otherwise.
void requireOldStore(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile())
        throw ToldError(runtime::DatabaseFileNotFound,
                        say({u"Could not find file '%1'.", u"הקובץ '%1' לא נמצא."}, path));
    if (!file.open(QIODevice::ReadOnly))
        throw ToldError(runtime::PermissionDenied, say(couldNotRead, path, file.errorString()));
    constexpr qsizetype versionPlace = 20;
    constexpr char lastVersion = 1; // The version byte is 0 for Jet 3 and 1 for Jet 4.
    const QByteArray head = file.read(versionPlace + 1);
    const bool known = head.startsWith(QByteArray("\0\1\0\0Standard Jet DB\0", versionPlace));
    const bool newer = head.startsWith(QByteArray("\0\1\0\0Standard ACE DB\0", versionPlace));
    if (newer || (known && head.size() > versionPlace && head[versionPlace] > lastVersion))
        throw ToldError(
            runtime::UnrecognizedFormat,
            say({u"'%1' has a newer format than Jet 4.", u"התבנית של '%1' חדשה מ-{Jet 4}."}, path),
            say({u"Save it in the format of Jet 4, and import that file.",
                 u"שמור אותו בתבנית {Jet 4}, וייבא את הקובץ הזה."}));
    if (!known || head.size() <= versionPlace)
        throw ToldError(
            runtime::UnrecognizedFormat,
            say({u"'%1' is no Jet 3 or Jet 4 file.", u"'%1' אינו קובץ {Jet 3} או {Jet 4}."}, path),
            say({u"Check that you named an old file. A store of this format needs "
                 "no import.",
                 u"בדוק שבחרת בקובץ ישן. קובץ נתונים רגיל אין צורך לייבא."}));
}

/// Adds the imported rows to the tables of the new store.
class StoreSink : public RowSink
{
public:
    explicit StoreSink(dao::Database& database) : database_(database) {}

    void add(const store::TableSchema& table, const NewRow& row) override
    {
        if (table_ != &table) {
            recordset_ = database_.OpenRecordset(table.name, dao::dbOpenTable);
            table_ = &table;
        }
        recordset_->AddNew();
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (row[i].isValid())
                recordset_->Fields(static_cast<int>(i)).SetValue(row[i]);
        }
        recordset_->Update();
    }

private:
    dao::Database& database_;
    const store::TableSchema* table_ = nullptr;
    std::shared_ptr<dao::Recordset> recordset_;
};

/// A new store that is created in one transaction. The destructor discards the store unless keep()
/// has been called.
class Target
{
public:
    virtual ~Target() = default;
    /// Returns the database of the new store, with all its tables.
    virtual dao::Database& database() = 0;
    /// Ends the writing and returns the new store's database, so that its rows can be read back. No
    /// row may be added after this call.
    virtual dao::Database& finished() = 0;
    virtual bool isOnServer() const = 0;
    virtual void keep() = 0;
};

class FileTarget : public Target
{
public:
    explicit FileTarget(const QString& path) : store_(path) {}
    dao::Database& database() override { return store_.database(); }
    dao::Database& finished() override
    {
        store_.save();
        finished_ = dao::DBEngine::instance().OpenDatabase(store_.unfinishedPath());
        return *finished_;
    }
    bool isOnServer() const override { return false; }
    void keep() override
    {
        finished_.reset();
        store_.putInPlace();
    }

private:
    NewStore store_;
    std::shared_ptr<dao::Database> finished_;
};

class ServerTarget : public Target
{
public:
    explicit ServerTarget(const Place& place) : database_(place.open())
    {
        requireNoStore(*database_);
        database_->BeginTrans();
        dao::actAsOwnerOf(*database_, {});
        createTables(*database_);
        createOwnTables(*database_);
    }
    dao::Database& database() override { return *database_; }
    dao::Database& finished() override { return *database_; }
    bool isOnServer() const override { return true; }
    void keep() override { database_->CommitTrans(); }

private:
    std::shared_ptr<dao::Database> database_;
};

std::unique_ptr<Target> makeTarget(const Place& place)
{
    if (place.isOnServer())
        return std::make_unique<ServerTarget>(place);
    return std::make_unique<FileTarget>(place.name());
}

/// Reads the rows of the new store back. Throws InternalError (51) if they differ from the rows
/// that the import added.
void readBack(dao::Database& database, Intake& intake, const TakeOverProgress& progress)
{
    for (const store::TableSchema& table : store::schema()) {
        RowDigest found;
        const QString what = say(readingBack, table.name);
        dao::examineRows(database, table.name, [&](const dao::ExaminedRow& row) {
            found.add(row.values);
            if (progress)
                progress(what, found.rows());
        });
        if (!(found == intake.added(table)))
            throw ToldError(runtime::InternalError, say(differsWhenRead, table.name),
                            say(checkTheDisk));
    }
}

} // namespace

TakeOverOutcome takeOverStore(const QString& oldPath, const Place& place,
                              const TakeOverOptions& options, const TakeOverProgress& progress)
{
    requireOldStore(oldPath);
    const std::unique_ptr<Target> target = makeTarget(place);
    StoreSink sink(target->database());
    Intake intake(sink, options, progress);
    readOldStore(oldPath, intake);
    TakeOverOutcome outcome;
    outcome.notes = intake.reports().notes.lines();
    outcome.findings = intake.reports().findings.lines();
    if (!outcome.findings.isEmpty())
        return outcome;
    dao::Database& finished = target->finished();
    readBack(finished, intake, progress);
    outcome.findings = checkMaking(finished, target->isOnServer());
    if (!outcome.findings.isEmpty())
        return outcome;
    // Values that were already invalid in the old store are imported too. Each of them becomes a
    // note for the user.
    outcome.notes += checkContents(finished);
    target->keep();
    for (const store::TableSchema& table : store::schema())
        outcome.tables.push_back({table.name, intake.added(table).rows()});
    return outcome;
}

} // namespace storetools
