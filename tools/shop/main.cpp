#include "platform/report/font_substitutes.h"
#include "platform/runtime/library_paths.h"
#include "tools/shop/program.h"
#include "tools/store/system.h"

#include <QGuiApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Suppresses Qt's debug, information and warning messages, for example about missing folders of
/// the desktop, because the error stream is for the program's own messages.
void dropRemarks(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

} // namespace

int main(int argc, char** argv)
{
    storetools::fillStandardStreams();
    storetools::useUtf8Console();
    qInstallMessageHandler(dropRemarks);
    runtime::useTrustedLibraryPaths();
    // Loading fonts requires a QGuiApplication. The program opens no window, so the platform
    // "offscreen" lets it work without a display.
#ifndef Q_OS_WIN // Only the default platform knows the fonts of Windows.
    qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    const QGuiApplication application(argc, argv);
    report::loadDeliveredFonts();
    report::substituteFonts();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = shoptools::run(QCoreApplication::arguments().mid(1), out, err);
    return storetools::finishOutput(u"zomrel-shop"_s, out, err) ? status : storetools::Failure;
}
