#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

#include <memory>

namespace testsupport {

class ServerConnection;

/// A direct SQL connection to a store that bypasses the engine, like another program on the same
/// store. It works for embedded stores and for stores on a server. Statements use SQLite's dialect
/// and are translated for a server. Throws std::runtime_error if a statement fails.
class PlainSql
{
public:
    /// Opens the embedded store at the path, or the store that the link file at the path refers to.
    explicit PlainSql(const QString& path);
    ~PlainSql();
    PlainSql(const PlainSql&) = delete;
    PlainSql& operator=(const PlainSql&) = delete;

    /// Returns the rows of a statement in a form that can be compared: date and time as ISO text,
    /// Boolean values as 1 and 0, Null as an invalid value, and not-a-number as "NaN".
    QList<QList<QVariant>> rows(const QString& sql, const QList<QVariant>& values = {});
    /// Returns the first column of the first row, or an invalid value if there is no row.
    QVariant scalar(const QString& sql, const QList<QVariant>& values = {});

    /// Returns the rows of a statement in the dialect of the store's own engine.
    QList<QList<QVariant>> exactly(const QString& sql, const QList<QVariant>& values = {});

    /// Connects again after the server has been restarted.
    void reconnect();

    bool isOnServer() const { return server_ != nullptr; }
    /// The connection to an embedded store.
    QSqlDatabase database() const { return QSqlDatabase::database(name_); }

private:
    QString translated(const QString& sql) const;

    QString name_;
    std::unique_ptr<ServerConnection> server_; ///< Null for an embedded store.
};

} // namespace testsupport
