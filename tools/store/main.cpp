#include "platform/runtime/library_paths.h"
#include "tools/store/language.h"
#include "tools/store/program.h"
#include "tools/store/reporting.h"
#include "tools/store/standard_stream.h"
#include "tools/store/system.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    storetools::fillStandardStreams();
    storetools::useUtf8Console();
    storetools::setLanguage(storetools::usersLanguage());
    runtime::useTrustedLibraryPaths();
    const QCoreApplication application(argc, argv);
    storetools::StandardStream standardOutput(stdout);
    storetools::StandardStream standardError(stderr);
    QTextStream out(&standardOutput);
    QTextStream err(&standardError);
    const int status = storetools::run(QCoreApplication::arguments().mid(1), out, err);
    return storetools::finishOutput(storetools::storeProgram, out, err) ? status
                                                                        : storetools::Failure;
}
