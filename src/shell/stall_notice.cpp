#include "shell/stall_notice.h"

#include "platform/runtime/guard.h"
#include "platform/runtime/own_program.h"
#include "shell/enter_clicks.h"
#include "shell/stall_window.h"

#include <QApplication>
#include <QDir>
#include <QProcess>

#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

const QString hiddenOption = u"--zomrel-stall-notice"_s;
/// When the user has chosen to end the program, the process that shows the notice writes this line
/// to its standard output.
constexpr auto endLine = "zomrel: end the program";

/// The second process of the program, which shows the notice about a call that takes too long. It
/// ends when its standard input is closed. It is started from the copy of the program in memory,
/// because the program's folder may not respond. That start fails if the system forbids it, or if
/// the program's libraries are in the program's folder. The process is then started from the
/// program's file.
class NoticeProcess final : public runtime::StallNotice
{
public:
    NoticeProcess(const QString& program, const Stall& stall)
    {
        // The cause of the wait may be that the current folder, such as a network folder, does not
        // respond. The process that shows the notice therefore starts in the root folder.
        process_.setWorkingDirectory(QDir::rootPath());
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_PLUGIN_PATH"_s,
                           QCoreApplication::libraryPaths().join(QDir::listSeparator()));
        process_.setProcessEnvironment(environment);
        process_.setArguments({hiddenOption, QString::number(stall.seconds), stall.what});
        process_.setProgram(program);
        process_.start();
    }
    ~NoticeProcess() override
    {
        process_.closeWriteChannel();
        constexpr int patience = 1000; // ms
        if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(patience)) {
            process_.kill();
            process_.waitForFinished(patience);
        }
    }
    NoticeProcess(const NoticeProcess&) = delete;
    NoticeProcess& operator=(const NoticeProcess&) = delete;

    bool wantsEnd() override
    {
        process_.waitForReadyRead(0);
        said_ += process_.readAllStandardOutput();
        if (said_.split('\n').contains(endLine))
            return true;
        const QString file = QCoreApplication::applicationFilePath();
        if (process_.state() == QProcess::NotRunning && process_.program() != file) {
            process_.setProgram(file);
            process_.start();
        }
        return false;
    }

private:
    QProcess process_;
    QByteArray said_;
};

/// Shows each notice by starting a second process of the program. The program's file is copied to
/// memory when the program starts, because its folder may not respond later. Another thread makes
/// the copy, so that the start is not delayed.
class NoticeMaker
{
public:
    std::unique_ptr<runtime::StallNotice> operator()(const QString& what,
                                                     std::chrono::milliseconds lasted) const
    {
        using std::chrono::duration_cast;
        const auto seconds = duration_cast<std::chrono::seconds>(lasted).count();
        return std::make_unique<NoticeProcess>(program_.get()->path(),
                                               Stall{what, static_cast<int>(seconds)});
    }

private:
    using Program = std::shared_ptr<runtime::OwnProgram>;
    std::shared_future<Program> program_ =
        std::async(std::launch::async, [] { return std::make_shared<runtime::OwnProgram>(); });
};

} // namespace

std::unique_ptr<runtime::CallWatch> watchForStalls()
{
    // Ends the process without running destructors, because only the blocked thread could run them.
    // No stored data is lost, because the store remains intact even if the process is killed.
    return std::make_unique<runtime::CallWatch>(NoticeMaker(), [] { std::_Exit(1); });
}

std::optional<Stall> stallToShow(const QStringList& arguments)
{
    if (arguments.size() != 4 || arguments[1] != hiddenOption)
        return {};
    return Stall{arguments[3], arguments[2].toInt()};
}

int showStall(const Stall& stall)
{
    std::thread([] {
        while (std::fgetc(stdin) != EOF) {
        }
        std::_Exit(0);
    }).detach();
    EnterClicks enterClicks;
    QApplication::instance()->installEventFilter(&enterClicks);
    StallWindow window(stall.what, stall.seconds);
    runtime::on(&window, &StallWindow::endChosen, &window, [] {
        std::puts(endLine);
        std::fflush(stdout);
    });
    window.show();
    return QApplication::exec();
}

} // namespace shell
