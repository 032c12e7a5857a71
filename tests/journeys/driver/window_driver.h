#pragma once

#include <QJsonObject>
#include <QLocalServer>
#include <QObject>

class QLocalSocket;
class QWidget;

/// Answers one JSON request per line on a local socket: looks at the program's windows, and sends
/// real key and mouse events to them. Input is queued and answered before it runs, because a click
/// may open a modal window and not return for long.
class WindowDriver : public QObject
{
    Q_OBJECT

public:
    explicit WindowDriver(const QString& socketName);

private:
    void serve(QLocalSocket* socket);
    QJsonObject answer(const QJsonObject& request);

    QLocalServer server_;
};
