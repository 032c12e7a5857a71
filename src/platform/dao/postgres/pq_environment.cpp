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

#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity inNames = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity inNames = Qt::CaseSensitive;
#endif

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
        const bool isKept = std::any_of(
            keptVariables.begin(), keptVariables.end(),
            [&each](QLatin1StringView kept) { return each.compare(kept, inNames) == 0; });
        if (each.startsWith(QLatin1StringView("PG"), inNames) && !isKept)
            qunsetenv(each.toLocal8Bit().constData());
    }
}

const QByteArray& environmentPassword()
{
    return rememberedPassword();
}

} // namespace dao::postgres
