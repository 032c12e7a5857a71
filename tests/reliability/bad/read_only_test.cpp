#include "catalogue/fr_color_kind.h"
#include "platform/dao/database.h"
#include "platform/dao/engine/link.h"
#include "platform/runtime/run_time_error.h"
#include "reliability/bad/writing_commands.h"
#include "reliability/figures.h"
#include "support/ordinary_user.h"
#include "support/plain_sql.h"
#include "support/throwaway_server.h"
#include "tools/store/checker.h"

#include <QDir>
#include <QFile>

#include <optional>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

/// Tests of a store that can be read but not written, because of file permissions, folder
/// permissions or server rights. It is shown. A writing command ends the program with an error box,
/// or the grid shows a message. The store stays unchanged byte for byte.
class ReadOnlyTest : public QObject
{
    Q_OBJECT

private slots:
    void readOnlyStore_refusesAndStaysUnchanged_data();
    void readOnlyStore_refusesAndStaysUnchanged();
    void unreadableStore_endsTheProgram();
    void cleanupTestCase();

private:
    int tried_ = 0;
};

namespace {

constexpr QFile::Permissions readFile = QFile::ReadOwner;
constexpr QFile::Permissions writeFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions readFolder = QFile::ReadOwner | QFile::ExeOwner;
constexpr QFile::Permissions writeFolder = readFolder | QFile::WriteOwner;

/// The access restriction under test.
enum Rule {
    ReadFile,
    ReadFolder,
    ReadBoth,
    NoFile,
    ReadDatabase, ///< The server makes the database read-only for everybody.
    ReadRole,     ///< The server lets this role only read.
    NoRole,
};

QList<std::pair<const char*, Rule>> rulesForReading()
{
    if (testsupport::isOnServer())
        return {{"database", ReadDatabase}, {"user", ReadRole}};
    return {{"file", ReadFile}, {"folder", ReadFolder}, {"both", ReadBoth}};
}

/// Sets the permissions of a store and its folder, and restores them in the destructor.
class Marks
{
public:
    Marks(const TemporaryStore& store, Rule rule) : path_(store.path()), folder_(store.folder())
    {
        const bool readsFile = rule == ReadFile || rule == ReadBoth;
        const bool readsFolder = rule == ReadFolder || rule == ReadBoth;
        set(rule == NoFile ? QFile::Permissions()
            : readsFile    ? readFile
                           : writeFile,
            readsFolder ? readFolder : writeFolder);
    }
    ~Marks() { set(writeFile, writeFolder); }
    Marks(const Marks&) = delete;
    Marks& operator=(const Marks&) = delete;

private:
    void set(QFile::Permissions file, QFile::Permissions folder) const
    {
        QFile::setPermissions(path_, file);
        QFile::setPermissions(folder_, folder);
    }

    QString path_;
    QString folder_;
};

/// Revokes this station's rights on the server, and grants them again in the destructor.
class Rights
{
public:
    Rights(const TemporaryStore& store, Rule rule) : path_(store.path()), link_(*dao::linkAt(path_))
    {
        testsupport::PlainSql sql(path_);
        if (rule == ReadDatabase) {
            sql.exactly(u"ALTER DATABASE \"%1\" SET default_transaction_read_only = on"_s.arg(
                link_.database));
            return;
        }
        sql.exactly(u"DO $$ BEGIN CREATE ROLE zomrel_reader LOGIN; "
                    "EXCEPTION WHEN duplicate_object OR unique_violation THEN NULL; END $$"_s);
        if (rule == ReadRole)
            sql.exactly(u"GRANT SELECT ON ALL TABLES IN SCHEMA public TO zomrel_reader"_s);
        dao::Link readers = link_;
        readers.user = u"zomrel_reader"_s;
        write(readers);
    }
    ~Rights() { write(link_); }
    Rights(const Rights&) = delete;
    Rights& operator=(const Rights&) = delete;

private:
    void write(const dao::Link& link) const
    {
        QFile file(path_);
        file.open(QIODevice::WriteOnly);
        file.write(dao::linkText(link));
    }

    QString path_;
    dao::Link link_;
};

/// Applies the access restriction while it exists.
class Ruled
{
public:
    Ruled(const TemporaryStore& store, Rule rule)
    {
        if (testsupport::isOnServer())
            rights_.emplace(store, rule);
        else
            marks_.emplace(store, rule);
    }

private:
    std::optional<Marks> marks_;
    std::optional<Rights> rights_;
};

} // namespace

void ReadOnlyTest::readOnlyStore_refusesAndStaysUnchanged_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("rule");
    for (const auto& [name, number] : writingCommands) {
        for (const auto& [whose, rule] : rulesForReading())
            QTest::addRow("%s, %s", name, whose) << int{number} << int{rule};
    }
}

void ReadOnlyTest::readOnlyStore_refusesAndStaysUnchanged()
{
    QFETCH(int, command);
    const auto what = static_cast<Command>(command);
    QFETCH(int, rule);
    TemporaryStore store;
    layStore(store, what);
    const QByteArray before = store.contents();
    const testsupport::OrdinaryUser user;
    dao::DBEngine::instance().Idle();
    {
        const Ruled ruled(store, static_cast<Rule>(rule));
        WorkingDay day;
        QVERIFY2(day.start(store.folder()), qPrintable(day.lastBox()));
        QVERIFY2(prepare(day, what), qPrintable(day.lastBox()));
        run(day, what);
        ++tried_;
        if (isInGrid(what)) {
            QVERIFY(day.goesOn() && day.child<catalogue::FrColorKind>()->isVisible());
            QCOMPARE(day.boxes.takeUnexpected().size(), 1);
            QVERIFY2(day.lastBox().contains(u"קובץ הנתונים פתוח לקריאה בלבד."_s),
                     qPrintable(day.lastBox()));
        } else {
            QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
            const int error = rule == ReadRole ? runtime::PermissionDenied : runtime::ReadOnly;
            QVERIFY2(day.lastBox().startsWith(u"Run-time error '%1':"_s.arg(error)),
                     qPrintable(day.lastBox()));
        }
    }
    QCOMPARE(store.contents(), before);
    QCOMPARE(QDir(store.folder()).entryList(QDir::Files), QStringList{u"Aluminium.mdb"_s});
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
}

/// A server without read rights still lists the tables, so the start succeeds and the first read
/// fails.
void ReadOnlyTest::unreadableStore_endsTheProgram()
{
    TemporaryStore store;
    layStore(store, NewOrder);
    const QByteArray before = store.contents();
    const testsupport::OrdinaryUser user;
    dao::DBEngine::instance().Idle();
    {
        const Ruled ruled(store, testsupport::isOnServer() ? NoRole : NoFile);
        WorkingDay day;
        QCOMPARE(day.start(store.folder()), testsupport::isOnServer());
        QVERIFY(!day.goesOn() || !day.openOrder());
        QVERIFY(day.endedWithABox());
        QVERIFY2(day.lastBox().startsWith(u"Run-time error '3051':"_s), qPrintable(day.lastBox()));
    }
    QCOMPARE(store.contents(), before);
}

void ReadOnlyTest::cleanupTestCase()
{
    reliability::writeFigures(u"read_only"_s,
                              {{u"commands on a read-only store"_s, QString::number(tried_)}});
}

ZOMREL_QTEST_MAIN(ReadOnlyTest)
#include "read_only_test.moc"
