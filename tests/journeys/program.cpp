#include "journeys/program.h"

#include "support/plain_sql.h"
#include "support/temporary_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QUuid>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

using namespace Qt::StringLiterals;

namespace journeys {

namespace {

/// Copies a file into the folder and returns the path of the copy.
QString copiedInto(const QString& folder, const QFileInfo& file)
{
    const QString target = folder + u'/' + file.fileName();
    if (!QFile::copy(file.filePath(), target))
        qFatal("cannot copy %s to %s", qPrintable(file.filePath()), qPrintable(target));
    return target;
}

/// Copies the program into the folder and returns the path of the copy.
QString programIn(const QString& folder)
{
    const QFileInfo program(QStringLiteral(ZOMREL_PROGRAM));
#ifdef Q_OS_WIN // There the program loads this library from its own folder alone.
    copiedInto(folder, QFileInfo(program.dir(), u"libpq.dll"_s));
#endif
    return copiedInto(folder, program);
}

} // namespace

Program::Program(bool withStore)
    : ownFolder_(std::make_unique<QTemporaryDir>()), folder_(ownFolder_->path())
{
    process_.setProgram(programIn(folder()));
    if (withStore)
        layStore();
}

Program::Program(const QString& sharedFolder) : folder_(sharedFolder)
{
    process_.setProgram(programIn(folder()));
}

Program::~Program()
{
    if (isRunning())
        kill();
}

/// Creates the store: an embedded one with the store program, or one on the server of this test
/// run.
void Program::layStore()
{
    using testsupport::TemporaryStore;
    if (testsupport::isOnServer())
        database_ = TemporaryStore::write(TemporaryStore::Contents::Delivered, storePath());
    else if (QProcess::execute(QStringLiteral(ZOMREL_STORE_PROGRAM), {u"create"_s, storePath()}) !=
             0)
        qFatal("cannot make the store");
}

QString Program::storePath() const
{
    return folder() + u"/Aluminium.mdb"_s;
}

void Program::start()
{
    socketName_ = QUuid::createUuid().toString(QUuid::Id128);
#ifndef Q_OS_WIN // There the names of local sockets are not those of files.
    socketName_ = socketFolder_.filePath(socketName_);
#endif
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_PLUGIN_PATH"_s,
                       QDir(QStringLiteral(ZOMREL_DRIVER_PLUGINS)).canonicalPath());
    environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"zomreldriver:"_s + socketName_);
    process_.setProcessEnvironment(environment);
    // The program finds its store beside itself, so the working directory must not matter.
    process_.setWorkingDirectory(QDir::rootPath());
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
#ifdef Q_OS_LINUX
    // The kernel kills the program if the journey's process dies.
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
    process_.start();
    const bool reached = waitFor([&] {
        socket_.connectToServer(socketName_);
        return socket_.waitForConnected(100);
    });
    if (!reached)
        qFatal("the program did not start");
}

void Program::kill()
{
    process_.kill();
    process_.waitForFinished();
    socket_.abort();
}

int Program::exitStatus()
{
    if (!process_.waitForFinished(patience))
        qFatal("the program did not end");
    socket_.abort();
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

QJsonObject Program::ask(const QJsonObject& request)
{
    socket_.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    while (!socket_.canReadLine()) {
        if (!socket_.waitForReadyRead(patience))
            // The program has ended or hangs; the caller's check fails on the empty answer.
            return {};
    }
    return QJsonDocument::fromJson(socket_.readLine()).object();
}

bool Program::waitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, patience);
}

void Program::clickTag(const QString& tag)
{
    if (!waitFor([&] { return ask({{u"do"_s, u"tag"_s}, {u"tag"_s, tag}})[u"exists"_s].toBool(); }))
        qFatal("no command with the tag %s", qPrintable(tag));
}

void Program::click(const QString& name)
{
    if (!waitFor([&] { return isVisible(name) && isEnabled(name); }))
        qFatal("%s cannot be clicked", qPrintable(name));
    ask({{u"do"_s, u"click"_s}, {u"name"_s, name}});
}

void Program::clickCell(const QString& grid, int row, int column, bool twice)
{
    if (!waitFor([&] { return gridRowCount(grid) > row; }))
        qFatal("%s has no row %d", qPrintable(grid), row);
    ask({{u"do"_s, u"cell"_s},
         {u"name"_s, grid},
         {u"row"_s, row},
         {u"column"_s, column},
         {u"twice"_s, twice}});
}

void Program::type(const QString& text)
{
    ask({{u"do"_s, u"type"_s}, {u"text"_s, text}});
}

void Program::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    ask({{u"do"_s, u"key"_s},
         {u"key"_s, key},
         {u"modifiers"_s, static_cast<int>(modifiers.toInt())}});
}

void Program::fill(const QString& name, const QString& text)
{
    click(name);
    if (!waitFor([&] { return focusName() == name.section(u'/', -1); }))
        qFatal("%s does not get the focus", qPrintable(name));
    press(Qt::Key_A, Qt::ControlModifier);
    type(text);
    if (!waitForText(name, text))
        qFatal("%s did not accept the text %s", qPrintable(name), qPrintable(text));
}

QString Program::text(const QString& name)
{
    return ask({{u"do"_s, u"describe"_s}, {u"name"_s, name}})[u"text"_s].toString();
}

bool Program::isVisible(const QString& name)
{
    return ask({{u"do"_s, u"describe"_s}, {u"name"_s, name}})[u"visible"_s].toBool();
}

bool Program::isEnabled(const QString& name)
{
    return ask({{u"do"_s, u"describe"_s}, {u"name"_s, name}})[u"enabled"_s].toBool();
}

QString Program::focusName()
{
    return ask({{u"do"_s, u"focus"_s}})[u"name"_s].toString();
}

QVariant Program::property(const QString& name, const QString& property)
{
    return ask({{u"do"_s, u"property"_s}, {u"name"_s, name}, {u"property"_s, property}})[u"value"_s]
        .toVariant();
}

QStringList Program::gridRow(const QString& grid, int row)
{
    QStringList cells;
    const QJsonArray rows = ask({{u"do"_s, u"grid"_s}, {u"name"_s, grid}})[u"rows"_s].toArray();
    for (const QJsonValue& cell : rows.at(row).toArray())
        cells.append(cell.toString());
    return cells;
}

int Program::gridRowCount(const QString& grid)
{
    return ask({{u"do"_s, u"grid"_s}, {u"name"_s, grid}})[u"rowCount"_s].toInt(-1);
}

int Program::gridCurrentRow(const QString& grid)
{
    return ask({{u"do"_s, u"grid"_s}, {u"name"_s, grid}})[u"current"_s].toInt(-1);
}

bool Program::waitForWindow(const QString& name)
{
    return waitFor([&] { return isVisible(name); });
}

bool Program::waitForText(const QString& name, const QString& expected)
{
    const bool reached = waitFor([&] { return text(name) == expected; });
    if (!reached)
        qWarning("%s reads \"%s\"", qPrintable(name), qPrintable(text(name)));
    return reached;
}

bool Program::waitForRows(const QString& grid, int count)
{
    const bool reached = waitFor([&] { return gridRowCount(grid) == count; });
    if (!reached)
        qWarning("%s has %d rows", qPrintable(grid), gridRowCount(grid));
    return reached;
}

bool Program::waitForGone(const QString& name)
{
    return waitFor([&] { return !isVisible(name); });
}

Box Program::waitForBox()
{
    QJsonObject seen;
    if (!waitFor([&] {
            seen = ask({{u"do"_s, u"box"_s}});
            return seen[u"exists"_s].toBool();
        }))
        qFatal("no message box was shown");
    Box box{seen[u"text"_s].toString(),
            seen[u"title"_s].toString(),
            {},
            seen[u"explanation"_s].toString()};
    for (const QJsonValue& each : seen[u"buttons"_s].toArray())
        box.buttons.append(each.toString());
    return box;
}

void Program::answer(const QString& caption)
{
    if (!waitFor([&] {
            return ask({{u"do"_s, u"answer"_s}, {u"caption"_s, caption}})[u"exists"_s].toBool();
        }))
        qFatal("no button %s", qPrintable(caption));
    // Waits until the box has closed or another one is open. A program that has ended has no box.
    waitFor([&] { return !isRunning() || !ask({{u"do"_s, u"box"_s}})[u"exists"_s].toBool(); });
}

void Program::screenshot(const QString& file, const QString& name)
{
    ask({{u"do"_s, u"screenshot"_s}, {u"file"_s, file}, {u"name"_s, name}});
}

QList<QVariantList> Program::rows(const QString& sql)
{
    testsupport::PlainSql store(storePath());
    if (!store.isOnServer())
        store.rows(u"PRAGMA busy_timeout = 5000"_s);
    return store.rows(sql);
}

QVariant Program::scalar(const QString& sql)
{
    const QList<QVariantList> all = rows(sql);
    return all.isEmpty() ? QVariant() : all.first().value(0);
}

void Program::execute(const QString& sql)
{
    rows(sql);
}

} // namespace journeys
