#pragma once

#include "driver/window_driver.h"

#include <QGenericPlugin>

/// A Qt plugin that lets the journeys drive the unmodified program. Qt loads it into any program if
/// QT_QPA_GENERIC_PLUGINS names it. The plugin's argument is the local socket to listen on.
class DriverPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    QObject* create(const QString& name, const QString& socketName) override;
};
