#pragma once

#include "driver/window_driver.h"

#include <QGenericPlugin>

/// Lets the journeys drive the built program as it stands: the toolkit loads this plugin into any
/// program when QT_QPA_GENERIC_PLUGINS names it. What stands behind the name is the local socket to
/// listen on.
class DriverPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    QObject* create(const QString& name, const QString& socketName) override;
};
