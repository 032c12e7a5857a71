#include "support/plain_environment.h"

#include <QProcessEnvironment>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

/// Returns true for a variable of libpq, whose name starts with PG. The tests state the server's
/// address themselves.
bool isOfClientLibrary(const QString& name)
{
    return name.startsWith("PG"_L1);
}

/// Returns true for a variable that changes texts or the toolkit's behaviour. QT_QPA_PLATFORM is
/// not included, because it selects the kind of screen on which the tests run.
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

/// Maximum length in bytes of the temporary folder's path. The system allows 107 bytes for the path
/// of a socket, and the tests append up to 45.
constexpr qsizetype longestTemporaryFolder = 60;

} // namespace

void setPlainEnvironment()
{
    for (const QString& name : QProcessEnvironment::systemEnvironment().keys()) {
        if (isOfClientLibrary(name) || isOfLanguageOrToolkit(name))
            qunsetenv(qPrintable(name));
    }
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("CUPS_SERVER", "localhost:1"); // No server listens there, so no printer exists.
    // The process that reads an old store for an import may not write files, so a coverage build
    // loses its counters. GCC's library would report that among the messages that the tests
    // compare.
    qputenv("GCOV_ERROR_FILE", "/dev/null");
    // CTest limits the time of a test. Qt Test's own limit would end a long test on a busy machine.
    if (!qEnvironmentVariableIsSet("QTEST_FUNCTION_TIMEOUT"))
        qputenv("QTEST_FUNCTION_TIMEOUT", "7200000");
    if (qgetenv("TMPDIR").size() > longestTemporaryFolder)
        qunsetenv("TMPDIR");
#ifdef Q_OS_UNIX
    ::umask(S_IWGRP | S_IWOTH);
#endif
}

} // namespace testsupport
