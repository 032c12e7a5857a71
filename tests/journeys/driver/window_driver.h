#pragma once

#include <QJsonObject>
#include <QLocalServer>
#include <QObject>

class QLocalSocket;
class QWidget;

/// Answers JSON requests, one per line, on a local socket. Requests query the program's windows or
/// send key and mouse events to them. Input is queued and acknowledged before it runs, because a
/// click may open a modal window and block.
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
