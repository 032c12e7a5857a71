// zomrel-demo reads openings from a file and enters them into a new order through the forms of the
// desktop program.

#include "demo/cuts_table.h"
#include "demo/openings.h"
#include "demo/order_road.h"

#include "base/module1.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/library_paths.h"
#include "platform/runtime/version.h"
#include "shell/appearance.h"
#include "tools/store/builder.h"
#include "tools/store/link_store.h"
#include "tools/store/place.h"
#include "tools/store/system.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int usageError = 2;

struct Arguments
{
    QString openings;
    QString store;
    QString out;
};

void setUpParser(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        u"Enters the openings of a file into a new order through the program's forms."_s);
    parser.addPositionalArgument(u"OPENINGS.csv"_s,
                                 u"file of openings; its first line names the columns: "_s +
                                     demo::columns().join(u','));
    parser.addOption({u"store"_s, u"the store; created if it does not exist"_s, u"FILE"_s});
    parser.addOption({u"out"_s, u"output folder for the pictures and the report"_s, u"FOLDER"_s});
    parser.addHelpOption();
    parser.addVersionOption();
}

Arguments argumentsOf(const QCoreApplication& application)
{
    QCommandLineParser parser;
    setUpParser(parser);
    parser.process(application);
    if (parser.positionalArguments().size() != 1 || !parser.isSet(u"store"_s) ||
        !parser.isSet(u"out"_s)) {
        std::fprintf(stderr, "%s", qUtf8Printable(parser.helpText()));
        std::exit(usageError);
    }
    return {parser.positionalArguments().first(), parser.value(u"store"_s), parser.value(u"out"_s)};
}

[[noreturn]] void fail(const QString& reason)
{
    std::fprintf(stderr, "zomrel-demo: %s\n", qUtf8Printable(reason));
    std::exit(1);
}

demo::Openings openingsOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(u"cannot read "_s + path);
    return demo::readOpenings(file);
}

void tell(const QString& path, int lineNumber, const QString& reason)
{
    std::fprintf(stderr, "%s:%d: %s\n", qUtf8Printable(path), lineNumber, qUtf8Printable(reason));
}

/// Adds all valid openings to the order. Returns the number of rows of the openings file that were
/// not added.
int addOpenings(demo::OrderRoad& road, const demo::Openings& openings, const QString& path)
{
    int refused = 0;
    for (const demo::BadRow& bad : openings.bad) {
        tell(path, bad.lineNumber, bad.reason);
        ++refused;
    }
    for (const demo::Opening& opening : openings.rows) {
        try {
            road.addOpening(opening);
        } catch (const demo::Refused& refusal) {
            tell(path, opening.lineNumber, refusal.reason);
            ++refused;
        }
    }
    return refused;
}

/// Puts the store and the logo into a temporary folder, under the names that they have in the
/// folder of an installed program. Where the system permits it, they are links and not copies.
void layProgramFolder(const QTemporaryDir& folder, const QString& store)
{
    const QString logo = QCoreApplication::applicationDirPath() + u"/Logo.jpg"_s;
    const QString name = folder.filePath(u"Aluminium.mdb"_s);
    const QString path = QFileInfo(store).absoluteFilePath();
#ifdef Q_OS_WIN
    // Ordinary users of Windows have no right to create symbolic links. Therefore the temporary
    // folder gets a copy of the logo and, instead of the store, a small text file that names the
    // store.
    const storetools::Place place(path);
    if (place.isOnServer())
        QFile::copy(path, name);
    else
        storetools::linkStore(name, dao::Link::toFile(place.name()), storetools::Hazards::Accepted);
    QFile::copy(logo, folder.filePath(u"Logo.jpg"_s));
#else
    QFile::link(path, name);
    if (QFile::exists(logo))
        QFile::link(logo, folder.filePath(u"Logo.jpg"_s));
#endif
}

int run(const Arguments& arguments)
{
    const demo::Openings openings = openingsOf(arguments.openings);
    if (!QDir().mkpath(arguments.out))
        fail(u"cannot make the folder "_s + arguments.out);
    if (!QFile::exists(arguments.store))
        storetools::createStore(arguments.store);
    QTemporaryDir folder;
    layProgramFolder(folder, arguments.store);

    demo::OrderRoad road(folder.path(), arguments.out);
    road.openOrder();
    const int refused = addOpenings(road, openings, arguments.openings);
    road.viewLine();
    road.print();
    std::printf("%s", qUtf8Printable(demo::cutsTable(arguments.store, Module1::CurrentOrderNum)));
    return refused == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    storetools::useUtf8Console();
#ifndef Q_OS_WIN // Windows always has a display.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    runtime::useTrustedLibraryPaths();
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"zomrel-demo"_s);
    QApplication::setApplicationVersion(runtime::programVersion().toString());
    // The arguments are parsed before the call of setUpAppearance(), because the option --help ends
    // the program. setUpAppearance() starts a thread that reads the fonts, and the program must not
    // end before that thread has finished.
    const Arguments arguments = argumentsOf(application);
    shell::setUpAppearance(application);
    int exitStatus = 1;
    runtime::guarded([&] { exitStatus = run(arguments); });
    return exitStatus;
}
