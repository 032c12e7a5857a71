#include "platform/report/font_substitutes.h"
#include "platform/runtime/library_paths.h"
#include "tools/shop/program.h"
#include "tools/store/system.h"

#include <QGuiApplication>

#include <csignal>
#include <cstdio>

namespace {

std::atomic<bool> cancelled = false;
// A signal handler may only use lock-free objects.
static_assert(std::atomic<bool>::is_always_lock_free);

/// The first interruption ends the planning, the second one the program.
extern "C" void cancel(int signal)
{
    cancelled = true;
    std::signal(signal, SIG_DFL);
}

/// Drops the toolkit's remarks, for example about missing folders of a session, because the error
/// stream belongs to the program's own messages.
void dropRemarks(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

} // namespace

int main(int argc, char** argv)
{
    storetools::fillStandardStreams();
    qInstallMessageHandler(dropRemarks);
    runtime::useTrustedLibraryPaths();
    // Fonts need a QGuiApplication, but the program opens no window and works without a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    report::substituteFonts();
    std::signal(SIGINT, cancel);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = shoptools::run(QCoreApplication::arguments().mid(1), out, err, cancelled);
    return storetools::finishOutput(out, err) ? status : storetools::Failure;
}
