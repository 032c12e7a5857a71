#include "planted/marker.h"

#include <QObject>

namespace {

const Marker marker;

} // namespace

/// Looks to Qt like a plugin of the kind PlatformTheme until it is loaded.
class PlantedPlatformTheme : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QPA.QPlatformThemeFactoryInterface.5.1" FILE
                          "theme.json")
};

#include "theme_plugin.moc"
