#include "driver/driver_plugin.h"

#include <QCoreApplication>

QObject* DriverPlugin::create(const QString& name, const QString& socketName)
{
    if (name.compare(QLatin1String("zomreldriver"), Qt::CaseInsensitive) != 0)
        return nullptr;
    // The program starts itself once more to show a notice.
    const bool isNotice = QCoreApplication::arguments().value(1) == u"--zomrel-stall-notice";
    return new WindowDriver(isNotice ? socketName + QLatin1String("-notice") : socketName);
}
