// A Qt plugin that measures the program. The environment variable
// QT_QPA_GENERIC_PLUGINS=zomrelprobe:TASK loads the plugin into the program. The task "paint" ends
// the process after the first paint of a main window. The task "order" waits for the first paint,
// opens the order form with the toolbar button, waits until the form's timers have run, prints the
// resident memory in kilobytes, and ends the process. The task "idle" works like "order" but does
// not open the order form.

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QGenericPlugin>
#include <QMainWindow>
#include <QTimer>
#include <QToolBar>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int settling = 1500; // Milliseconds; longer than every timer of the order form.

/// Returns the resident memory of this process in kilobytes, as Linux reports it, or 0 on other
/// systems.
long residentKilobytes()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).simplified().split(' ').first().toLong();
    }
    return 0;
}

void clickOrder()
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        for (QAction* action : each->findChildren<QAction*>()) {
            if (action->data().toString() == u"Order")
                return action->trigger();
        }
    }
    std::exit(2);
}

class Probe : public QObject
{
public:
    explicit Probe(QString task) : task_(std::move(task)) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<QMainWindow*>(watched) != nullptr)
            QTimer::singleShot(0, this, [this] { painted(); });
        return false;
    }

private:
    void painted()
    {
        qApp->removeEventFilter(this);
        if (task_ == u"paint")
            std::_Exit(0);
        if (task_ == u"order")
            clickOrder();
        QTimer::singleShot(settling, this, [] {
            std::printf("%ld\n", residentKilobytes());
            std::fflush(stdout);
            std::_Exit(0);
        });
    }

    QString task_;
};

} // namespace

class ProbePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "probe.json")

public:
    QObject* create(const QString&, const QString& task) override { return new Probe(task); }
};

#include "probe_plugin.moc"
