#include "journeys/program.h"
#include "support/plain_sql.h"
#include "support/widgets.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using journeys::Program;

namespace {

constexpr int fiveSeconds = 5000; // ms

/// A share that can stop answering. Reads of the store block while it does not answer.
class Share
{
public:
    explicit Share(const Program& program) : pipe_(program.folder() + u"/pipe"_s)
    {
        qputenv("LD_PRELOAD", ZOMREL_STALL_READS);
        qputenv("ASAN_OPTIONS", sanitizer_ + ":verify_asan_link_order=0");
        qputenv("ZOMREL_STALL_PIPE", QFile::encodeName(pipe_));
        qputenv("ZOMREL_STALL_FILE",
                QFile::encodeName(QFileInfo(program.storePath()).canonicalFilePath()));
    }
    ~Share()
    {
        for (const char* each : {"LD_PRELOAD", "ZOMREL_STALL_PIPE", "ZOMREL_STALL_FILE"})
            qunsetenv(each);
        qputenv("ASAN_OPTIONS", sanitizer_);
    }
    Q_DISABLE_COPY_MOVE(Share)

    void goAway() { QCOMPARE(::mkfifo(QFile::encodeName(pipe_).constData(), 0600), 0); }
    /// Waits until a read is blocked and lets all go on.
    void comeBack()
    {
        const int gate = ::open(QFile::encodeName(pipe_).constData(), O_WRONLY);
        QVERIFY(gate >= 0);
        QVERIFY(QFile::remove(pipe_));
        ::close(gate);
    }

private:
    QString pipe_;
    QByteArray sanitizer_ = qgetenv("ASAN_OPTIONS");
};

/// The process that shows the notice.
class Notice
{
public:
    explicit Notice(const Program& program) : name_(program.socketName() + u"-notice"_s) {}

    /// Waits until the notice's process runs.
    bool comes()
    {
        return QTest::qWaitFor(
            [this] {
                socket_.connectToServer(name_);
                return socket_.waitForConnected(100);
            },
            journeys::patience);
    }
    bool goes()
    {
        return QTest::qWaitFor([this] { return socket_.state() != QLocalSocket::ConnectedState; },
                               journeys::patience);
    }
    bool isShown()
    {
        return ask({{u"do"_s, u"describe"_s}, {u"name"_s, u"StallWindow"_s}})[u"visible"_s]
            .toBool();
    }
    QString text(const QString& name)
    {
        return ask({{u"do"_s, u"describe"_s}, {u"name"_s, name}})[u"text"_s].toString();
    }
    void click(const QString& name) { ask({{u"do"_s, u"click"_s}, {u"name"_s, name}}); }
    /// Clicks a button of the notice's message box. Returns false if no box comes, or if it stays.
    bool answers(const QString& caption)
    {
        const auto exists = [this](const QJsonObject& request) {
            return ask(request)[u"exists"_s].toBool();
        };
        const auto isClicked = [&] {
            return exists({{u"do"_s, u"answer"_s}, {u"caption"_s, caption}});
        };
        const auto isGone = [&] { return !exists({{u"do"_s, u"box"_s}}); };
        return QTest::qWaitFor(isClicked, journeys::patience) &&
               QTest::qWaitFor(isGone, journeys::patience);
    }
    void photograph(const QString& file)
    {
        ask({{u"do"_s, u"screenshot"_s}, {u"name"_s, u"StallWindow"_s}, {u"file"_s, file}});
    }

private:
    QJsonObject ask(const QJsonObject& request)
    {
        socket_.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
        while (!socket_.canReadLine()) {
            if (!socket_.waitForReadyRead(journeys::patience))
                return {};
        }
        return QJsonDocument::fromJson(socket_.readLine()).object();
    }

    QString name_;
    QLocalSocket socket_;
};

} // namespace

/// The store lies on a share that does not answer for some time.
class StalledShareJourney : public QObject
{
    Q_OBJECT

private slots:
    void stalledRead_isNoticedAndGoesOn();
    void endButton_endsTheProgram();
    void killedProgram_takesItsNoticeAlong();
};

void StalledShareJourney::stalledRead_isNoticedAndGoesOn()
{
    Program program;
    Share share(program);
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    share.goAway();
    QElapsedTimer time;
    time.start();
    program.clickTag(u"Serials"_s);
    Notice notice(program);
    QVERIFY(notice.comes());
    QVERIFY2(time.elapsed() >= fiveSeconds, qPrintable(QString::number(time.elapsed())));
    QTRY_VERIFY_WITH_TIMEOUT(notice.isShown(), journeys::patience);
    QCOMPARE(notice.text(u"LabelWhat"_s).remove(QChar(0x200b)), program.storePath());
    QVERIFY(notice.text(u"LabelWaiting"_s).startsWith(u"התוכנית ממתינה כבר "_s));
    if (qEnvironmentVariableIsSet("ZOMREL_NOTICE_PICTURE"))
        notice.photograph(qEnvironmentVariable("ZOMREL_NOTICE_PICTURE"));
    share.comeBack();
    QVERIFY(notice.goes());
    QVERIFY(program.waitForWindow(u"FrSerials"_s));
    QVERIFY(program.isRunning());
}

void StalledShareJourney::endButton_endsTheProgram()
{
    Program program;
    Share share(program);
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    share.goAway();
    program.clickTag(u"Serials"_s);
    Notice notice(program);
    QVERIFY(notice.comes());
    QTRY_VERIFY_WITH_TIMEOUT(notice.isShown(), journeys::patience);
    notice.click(u"CmdEnd"_s);
    QVERIFY(notice.answers(u"לא"_s));
    QVERIFY(program.isRunning());
    notice.click(u"CmdEnd"_s);
    QVERIFY(notice.answers(u"כן"_s));
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(notice.goes());
}

void StalledShareJourney::killedProgram_takesItsNoticeAlong()
{
    Program program;
    Share share(program);
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    share.goAway();
    program.clickTag(u"Serials"_s);
    Notice notice(program);
    QVERIFY(notice.comes());
    program.kill();
    QVERIFY(notice.goes());
}

ZOMREL_GUILESS_QTEST_MAIN(StalledShareJourney)
#include "stalled_share_journey.moc"
