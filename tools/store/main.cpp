#include "tools/store/program.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return storetools::run(QCoreApplication::arguments().mid(1), out, err);
}
