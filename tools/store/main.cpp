#include "platform/runtime/library_paths.h"
#include "tools/store/program.h"
#include "tools/store/system.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    storetools::fillStandardStreams();
    storetools::useUtf8Console();
    runtime::useTrustedLibraryPaths();
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = storetools::run(QCoreApplication::arguments().mid(1), out, err);
    return storetools::finishOutput(out, err) ? status : storetools::Failure;
}
