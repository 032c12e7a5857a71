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

/// Time limit of every wait for the program, in milliseconds. It is long enough for a busy machine.
inline constexpr int patience = 60000;

/// The contents of a message box of the program.
struct Box
{
    QString text;
    QString title;
    QStringList buttons;
    QString explanation;
};

/// The built program in a folder of its own, driven through its windows by key and mouse events.
/// Every query waits up to 60 s for the expected state and fails the journey with the actual state.
/// A control is named by its object name, or as "Form/Name" if several forms have a control with
/// that name.
class Program
{
public:
    /// Creates a folder with the program and, if `withStore` is true, the delivered store.
    explicit Program(bool withStore = true);
    /// Uses the program in a folder that other processes share.
    explicit Program(const QString& sharedFolder);
    ~Program();

    void start();
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    /// Kills the process.
    void kill();
    /// Waits until the process ends and returns its exit status.
    int exitStatus();

    QString folder() const { return folder_; }
    QString storePath() const;
    /// The name of the socket through which the started program is driven.
    QString socketName() const { return socketName_; }

    void clickTag(const QString& tag);
    void click(const QString& name);
    void clickCell(const QString& grid, int row, int column, bool twice = false);
    void type(const QString& text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Clicks the box, selects its contents and types the text.
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

    /// Queries the store directly, without the program.
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
    QTemporaryDir socketFolder_; ///< A killed program leaves its socket behind.
    QString socketName_;
    QLocalSocket socket_;
};

} // namespace journeys
