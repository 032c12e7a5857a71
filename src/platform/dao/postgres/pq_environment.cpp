#include "platform/dao/postgres/pq_environment.h"

#include <QProcessEnvironment>
#include <QStringList>

#include <algorithm>
#include <array>

namespace dao::postgres {

namespace {

constexpr auto passwordVariable = "PGPASSWORD";

constexpr std::array keptVariables = {
    QLatin1StringView("PGPASSFILE"),    QLatin1StringView("PGSSLROOTCERT"),
    QLatin1StringView("PGSSLCERT"),     QLatin1StringView("PGSSLKEY"),
    QLatin1StringView("PGSSLCRL"),      QLatin1StringView("PGSSLCRLDIR"),
    QLatin1StringView("PGREQUIREPEER"),
};

QByteArray& rememberedPassword()
{
    static QByteArray password;
    return password;
}

} // namespace

void clearClientEnvironment()
{
    if (qEnvironmentVariableIsSet(passwordVariable))
        rememberedPassword() = qgetenv(passwordVariable);
    const QStringList names = QProcessEnvironment::systemEnvironment().keys();
    for (const QString& each : names) {
        const bool isKept =
            std::find(keptVariables.begin(), keptVariables.end(), each) != keptVariables.end();
        if (each.startsWith(QLatin1StringView("PG")) && !isKept)
            qunsetenv(each.toLocal8Bit().constData());
    }
}

const QByteArray& environmentPassword()
{
    return rememberedPassword();
}

} // namespace dao::postgres
