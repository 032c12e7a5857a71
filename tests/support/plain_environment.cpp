#include "support/plain_environment.h"

#include <QProcessEnvironment>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

/// Every variable of libpq begins with PG. The tests say themselves how a server is reached.
bool isOfClientLibrary(const QString& name)
{
    return name.startsWith("PG"_L1);
}

/// QT_QPA_PLATFORM is not among them: it says on which kind of screen the tests run.
bool isOfLanguageOrToolkit(const QString& name)
{
    static const QStringList names{u"LANGUAGE"_s,
                                   u"QT_AUTO_SCREEN_SCALE_FACTOR"_s,
                                   u"QT_ENABLE_HIGHDPI_SCALING"_s,
                                   u"QT_FATAL_WARNINGS"_s,
                                   u"QT_FONT_DPI"_s,
                                   u"QT_IM_MODULE"_s,
                                   u"QT_LOGGING_CONF"_s,
                                   u"QT_LOGGING_RULES"_s,
                                   u"QT_MESSAGE_PATTERN"_s,
                                   u"QT_QPA_PLATFORMTHEME"_s,
                                   u"QT_SCALE_FACTOR"_s,
                                   u"QT_SCREEN_SCALE_FACTORS"_s,
                                   u"QT_STYLE_OVERRIDE"_s,
                                   u"QT_USE_PHYSICAL_DPI"_s};
    return names.contains(name);
}

/// The system allows 107 bytes for the path of a socket; the names of ours take up to 45.
constexpr qsizetype longestTemporaryFolder = 60;

} // namespace

void setPlainEnvironment()
{
    for (const QString& name : QProcessEnvironment::systemEnvironment().keys()) {
        if (isOfClientLibrary(name) || isOfLanguageOrToolkit(name))
            qunsetenv(qPrintable(name));
    }
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("CUPS_SERVER", "localhost:1"); // nothing answers there, and so there is no printer
    // How long a test may take is CTest's to say; Qt Test's own limit ends a long one on a busy
    // machine.
    if (!qEnvironmentVariableIsSet("QTEST_FUNCTION_TIMEOUT"))
        qputenv("QTEST_FUNCTION_TIMEOUT", "7200000");
    if (qgetenv("TMPDIR").size() > longestTemporaryFolder)
        qunsetenv("TMPDIR");
    ::umask(S_IWGRP | S_IWOTH);
}

} // namespace testsupport
