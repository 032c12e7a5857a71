#pragma once

#include "support/throwaway_server.h"

#include <QJsonObject>
#include <QLocalSocket>
#include <QProcess>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QVariant>

#include <functional>
#include <memory>

namespace journeys {

/// How long a journey waits for the program, on a busy machine too.
inline constexpr int patience = 60000; // ms

/// What a message box of the program shows.
struct Box
{
    QString text;
    QString title;
    QStringList buttons;
};

/// The built program in a folder of its own, driven through its real windows by key and mouse.
/// Every look waits for what it expects, for a minute at most, and fails the journey with what it
/// saw instead. A control is named by its object name, or as "Form/Name" where several forms have
/// one of that name.
class Program
{
public:
    /// A folder with the program in it and, unless left out, the delivered store.
    explicit Program(bool withStore = true);
    /// The program in a folder that others work in too.
    explicit Program(const QString& sharedFolder);
    ~Program();

    void start();
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    /// Ends it as a power failure does.
    void kill();
    /// Waits for the program's own end.
    int exitStatus();

    QString folder() const { return folder_; }
    QString storePath() const;

    void clickTag(const QString& tag);
    void click(const QString& name);
    void clickCell(const QString& grid, int row, int column, bool twice = false);
    void type(const QString& text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Clicks the box, selects what it holds and types over it.
    void fill(const QString& name, const QString& text);

    QString text(const QString& name);
    bool isVisible(const QString& name);
    bool isEnabled(const QString& name);
    QString focusName();
    QVariant property(const QString& name, const QString& property);
    QStringList gridRow(const QString& grid, int row);
    int gridRowCount(const QString& grid);
    int gridCurrentRow(const QString& grid);

    bool waitForWindow(const QString& name);
    bool waitForText(const QString& name, const QString& expected);
    bool waitForRows(const QString& grid, int count);
    bool waitForGone(const QString& name);
    Box waitForBox();
    void answer(const QString& caption);
    void screenshot(const QString& file, const QString& name = {});

    /// Looks into the store past the program.
    QList<QVariantList> rows(const QString& sql);
    QVariant scalar(const QString& sql);
    void execute(const QString& sql);

private:
    void layStore();
    QJsonObject ask(const QJsonObject& request);
    bool waitFor(const std::function<bool()>& condition);

    std::unique_ptr<QTemporaryDir> ownFolder_;
    std::unique_ptr<testsupport::ThrowawayDatabase> database_; ///< Null for an embedded store.
    QString folder_;
    QProcess process_;
    QLocalSocket socket_;
};

} // namespace journeys
