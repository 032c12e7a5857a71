#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

#include <memory>

namespace testsupport {

class ServerConnection;

/// A plain SQL connection past the engine, as another station or a hand with a shell has one, to a
/// store of either engine. Statements are written in the embedded engine's words; those that a
/// server says in another way are translated. Throws a
/// std::runtime_error where a statement fails.
class PlainSql
{
public:
    /// Opens the store at the path: an embedded one, or the one that the link there leads to.
    explicit PlainSql(const QString& path);
    ~PlainSql();
    PlainSql(const PlainSql&) = delete;
    PlainSql& operator=(const PlainSql&) = delete;

    /// The rows that a statement gives: moments as their ISO text, truth as 1 and 0, Null as an
    /// invalid value, what is no number as "NaN", so that all can be compared.
    QList<QList<QVariant>> rows(const QString& sql, const QList<QVariant>& values = {});
    /// The first column of the first row; invalid where there is none.
    QVariant scalar(const QString& sql, const QList<QVariant>& values = {});

    /// The same for a statement in the words of the store's own engine, with parameters $1, $2 and
    /// so on.
    QList<QList<QVariant>> exactly(const QString& sql, const QList<QVariant>& values = {});

    /// Connects again to a server that has been started anew.
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
