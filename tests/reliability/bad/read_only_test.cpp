#include "catalogue/fr_color_kind.h"
#include "platform/dao/database.h"
#include "reliability/bad/writing_commands.h"
#include "reliability/figures.h"
#include "support/ordinary_user.h"
#include "tools/store/checker.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

/// A store that may be read and not written, by its own marks or its folder's: it is shown, and the
/// command that writes ends the program with the box that says so, or the grid says so; not a byte
/// of it changes.
class ReadOnlyTest : public QObject
{
    Q_OBJECT

private slots:
    void command_data();
    void command();
    void unreadable();
    void cleanupTestCase();

private:
    int tried_ = 0;
};

namespace {

constexpr QFile::Permissions readFile = QFile::ReadOwner;
constexpr QFile::Permissions writeFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions readFolder = QFile::ReadOwner | QFile::ExeOwner;
constexpr QFile::Permissions writeFolder = readFolder | QFile::WriteOwner;

/// The marks of a store and its folder, taken away at the end.
class Marks
{
public:
    Marks(const TemporaryStore& store, QFile::Permissions file, QFile::Permissions folder)
        : path_(store.path()), folder_(store.folder())
    {
        set(file, folder);
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

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void ReadOnlyTest::command_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<bool>("isFileReadOnly");
    QTest::addColumn<bool>("isFolderReadOnly");
    for (const auto& [name, number] : writingCommands) {
        QTest::addRow("%s, file", name) << int{number} << true << false;
        QTest::addRow("%s, folder", name) << int{number} << false << true;
        QTest::addRow("%s, both", name) << int{number} << true << true;
    }
}

void ReadOnlyTest::command()
{
    QFETCH(int, command);
    const auto what = static_cast<Command>(command);
    QFETCH(bool, isFileReadOnly);
    QFETCH(bool, isFolderReadOnly);
    TemporaryStore store;
    layStore(store, what);
    const QByteArray before = contentsOf(store.path());
    const testsupport::OrdinaryUser user;
    dao::DBEngine::instance().Idle();
    {
        const Marks marks(store, isFileReadOnly ? readFile : writeFile,
                          isFolderReadOnly ? readFolder : writeFolder);
        WorkingDay day;
        QVERIFY2(day.start(store.folder()), qPrintable(day.lastBox()));
        QVERIFY2(prepare(day, what), qPrintable(day.lastBox()));
        run(day, what);
        ++tried_;
        if (isInGrid(what)) {
            QVERIFY(day.goesOn() && day.child<catalogue::FrColorKind>()->isVisible());
            QVERIFY2(day.lastBox().contains(u"קובץ הנתונים פתוח לקריאה בלבד."_s),
                     qPrintable(day.lastBox()));
        } else {
            QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
            QVERIFY2(day.lastBox().startsWith(u"Run-time error '3027':"_s),
                     qPrintable(day.lastBox()));
        }
    }
    QCOMPARE(contentsOf(store.path()), before);
    QCOMPARE(QDir(store.folder()).entryList(QDir::Files), QStringList{u"Aluminium.mdb"_s});
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
}

void ReadOnlyTest::unreadable()
{
    TemporaryStore store;
    layStore(store, NewOrder);
    const QByteArray before = contentsOf(store.path());
    const testsupport::OrdinaryUser user;
    dao::DBEngine::instance().Idle();
    {
        const Marks marks(store, QFile::Permissions(), writeFolder);
        WorkingDay day;
        QVERIFY(!day.start(store.folder()));
        QVERIFY(day.endedWithABox());
        QVERIFY2(day.lastBox().startsWith(u"Run-time error '3051':"_s), qPrintable(day.lastBox()));
    }
    QCOMPARE(contentsOf(store.path()), before);
}

void ReadOnlyTest::cleanupTestCase()
{
    reliability::writeFigures(u"read_only"_s, {{u"commands on a store that may not be written"_s,
                                                QString::number(tried_)}});
}

ZOMREL_QTEST_MAIN(ReadOnlyTest)
#include "read_only_test.moc"
