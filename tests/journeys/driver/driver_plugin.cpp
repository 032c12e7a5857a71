#include "driver/driver_plugin.h"

QObject* DriverPlugin::create(const QString& name, const QString& socketName)
{
    if (name.compare(QLatin1String("zomreldriver"), Qt::CaseInsensitive) != 0)
        return nullptr;
    return new WindowDriver(socketName);
}
