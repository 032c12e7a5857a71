#include "planted/marker.h"

#include <QObject>

namespace {

const Marker marker;

} // namespace

/// Looks to Qt like a plugin of the kind SqlDriver until it is loaded.
class PlantedSqlDriver : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QSqlDriverFactoryInterface" FILE "driver.json")
};

#include "driver_plugin.moc"
