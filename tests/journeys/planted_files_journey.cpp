#include "journeys/program.h"
#include "platform/runtime/library_paths.h"
#include "support/widgets.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QTest>

using namespace Qt::StringLiterals;
using journeys::Program;

namespace {

const QFile::Permissions onlyOurs =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;

/// Sets environment variables for the programs that a test starts.
class Variable
{
public:
    Variable(const char* name, const QString& value) : name_(name), before_(qgetenv(name))
    {
        qputenv(name, value.toUtf8());
    }
    ~Variable() { before_.isNull() ? qunsetenv(name_) : qputenv(name_, before_); }
    Q_DISABLE_COPY_MOVE(Variable)

private:
    const char* name_;
    QByteArray before_;
};

} // namespace

/// Somebody who may write to the program's folder lays files there that would run as other users.
class PlantedFilesJourney : public QObject
{
    Q_OBJECT

private slots:
    void plugins_areLoadedFromTheUsersOwnPath();
    void configurationBesideZomrel_isNotRead();
    void pluginBesideZomrel_isNotLoaded();
    void configurationBesideTheStoreProgram_isNotRead();
    void configurationBesideTheDemoProgram_isNotRead();
    void pluginsFolderThatOnlyTheUserCanChange_isUsed();
    void pluginsFolderThatOthersCanChange_isNotUsed();

private:
    static QString marker(const Program& program) { return program.folder() + u"/marker"_s; }
    static void layPlugins(const QString& folder);
    static void layConfiguration(const Program& program);
    static void startedBy(Program& program);
    static int runCopyOf(const QString& file, const Program& program, const QStringList& arguments);
};

/// Lays a plugin for the desktop's theme and one for the store's engine in the folder, beside the
/// toolkit's own plugins for screens, without which no window would open.
void PlantedFilesJourney::layPlugins(const QString& folder)
{
    const QString installed = QLibraryInfo::path(QLibraryInfo::PluginsPath);
    QVERIFY(QDir().mkpath(folder + u"/platformthemes"_s));
    QVERIFY(QDir().mkpath(folder + u"/sqldrivers"_s));
    QVERIFY(QDir().mkpath(folder + u"/platforms"_s));
    QVERIFY(QFile::copy(QStringLiteral(ZOMREL_PLANTED_THEME), folder + u"/platformthemes/t.so"_s));
    QVERIFY(QFile::copy(QStringLiteral(ZOMREL_PLANTED_DRIVER), folder + u"/sqldrivers/d.so"_s));
    for (const QString& each : QDir(installed + u"/platforms"_s).entryList(QDir::Files))
        QVERIFY(QFile::copy(installed + u"/platforms/"_s + each, folder + u"/platforms/"_s + each));
    for (const auto& each : {""_L1, "/platformthemes"_L1, "/sqldrivers"_L1, "/platforms"_L1}) {
        QVERIFY(QFile::setPermissions(folder + each, onlyOurs));
        for (const QFileInfo& file : QDir(folder + each).entryInfoList(QDir::Files))
            QVERIFY(QFile::setPermissions(file.filePath(), onlyOurs));
    }
}

void PlantedFilesJourney::layConfiguration(const Program& program)
{
    layPlugins(program.folder() + u"/planted"_s);
    for (const QString& name : {u"/qt.conf"_s, u"/qt6.conf"_s}) {
        QFile file(program.folder() + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Paths]\nPlugins=planted\n");
    }
}

/// The desktop of the user asks for a theme that is not installed.
void PlantedFilesJourney::startedBy(Program& program)
{
    const Variable theme("QT_QPA_PLATFORMTHEME", u"zomrelplanted"_s);
    const Variable markerFile("ZOMREL_MARKER", marker(program));
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
}

int PlantedFilesJourney::runCopyOf(const QString& file, const Program& program,
                                   const QStringList& arguments)
{
    const Variable markerFile("ZOMREL_MARKER", marker(program));
    const QString copy = program.folder() + u'/' + QFileInfo(file).fileName();
    return QFile::copy(file, copy) ? QProcess::execute(copy, arguments) : -1;
}

/// Shows that the planted plugins work, so that a missing marker means something.
void PlantedFilesJourney::plugins_areLoadedFromTheUsersOwnPath()
{
    Program program;
    layPlugins(program.folder() + u"/planted"_s);
    const Variable path("QT_PLUGIN_PATH", program.folder() + u"/planted"_s);
    runCopyOf(QStringLiteral(ZOMREL_STORE_PROGRAM), program, {u"check"_s, program.storePath()});
    QVERIFY(QFile::exists(marker(program)));
}

void PlantedFilesJourney::configurationBesideZomrel_isNotRead()
{
    Program program;
    layConfiguration(program);
    startedBy(program);
    QVERIFY(!QFile::exists(marker(program)));
}

void PlantedFilesJourney::pluginBesideZomrel_isNotLoaded()
{
    Program program;
    layPlugins(program.folder());
    QVERIFY(QFile::setPermissions(program.folder(), QFile::Permissions(QFlag(0x7777))));
    startedBy(program);
    QVERIFY(!QFile::exists(marker(program)));
}

void PlantedFilesJourney::configurationBesideTheStoreProgram_isNotRead()
{
    Program program;
    layConfiguration(program);
    QCOMPARE(
        runCopyOf(QStringLiteral(ZOMREL_STORE_PROGRAM), program, {u"check"_s, program.storePath()}),
        0);
    QVERIFY(!QFile::exists(marker(program)));
}

void PlantedFilesJourney::configurationBesideTheDemoProgram_isNotRead()
{
    Program program;
    layConfiguration(program);
    const Variable theme("QT_QPA_PLATFORMTHEME", u"zomrelplanted"_s);
    QCOMPARE(runCopyOf(QStringLiteral(ZOMREL_DEMO_PROGRAM), program, {u"--version"_s}), 0);
    QVERIFY(!QFile::exists(marker(program)));
}

void PlantedFilesJourney::pluginsFolderThatOnlyTheUserCanChange_isUsed()
{
    Program program;
    if (!runtime::isTrustedFolder(program.folder()))
        QSKIP("others can change the temporary folder of this machine");
    layPlugins(program.folder() + u"/plugins"_s);
    // The planted plugin has no working engine, so the program could not open its store with it.
    QVERIFY(QFile::remove(program.folder() + u"/plugins/sqldrivers/d.so"_s));
    startedBy(program);
    QVERIFY(QFile::exists(marker(program)));
}

void PlantedFilesJourney::pluginsFolderThatOthersCanChange_isNotUsed()
{
    Program program;
    layPlugins(program.folder() + u"/plugins"_s);
    QVERIFY(QFile::setPermissions(program.folder() + u"/plugins/platformthemes"_s,
                                  onlyOurs | QFile::WriteOther));
    startedBy(program);
    QVERIFY(!QFile::exists(marker(program)));
}

ZOMREL_GUILESS_QTEST_MAIN(PlantedFilesJourney)
#include "planted_files_journey.moc"
