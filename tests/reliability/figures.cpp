#include "reliability/figures.h"

#include "support/throwaway_server.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace reliability {

Engine currentEngine()
{
    return testsupport::isOnServer() ? Engine::Server : Engine::Embedded;
}

void writeFigures(const QString& topic, const QList<Figure>& figures, Engine engine)
{
    const QDir folder(QStringLiteral(ZOMREL_FIGURES) +
                      (engine == Engine::Server ? u"/server"_s : u"/embedded"_s));
    QFile file(folder.filePath(topic + u".part"_s));
    if (!folder.mkpath(u"."_s) || !file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
    QTextStream text(&file);
    for (const auto& [name, value] : figures)
        text << name << u'\t' << value << u'\n';
}

int setting(const char* variable, int otherwise)
{
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? value : otherwise;
}

} // namespace reliability
