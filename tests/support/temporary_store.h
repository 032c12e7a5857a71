#pragma once

#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QList>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>

namespace testsupport {

/// A store in its own temporary folder, with an SQL connection that bypasses the engine to read and
/// insert rows. If the tests run on a server, the store is a database there and the folder contains
/// the link file. Module1::StorePath and LogoPath refer to the store for its lifetime.
class TemporaryStore
{
public:
    enum class Contents {
        Delivered, ///< A store as created by `zomrel-store create`, with the catalogue.
        Empty,     ///< A store with all eleven tables and their indexes but without rows.
    };

    explicit TemporaryStore(Contents contents = Contents::Empty);
    ~TemporaryStore();
    TemporaryStore(const TemporaryStore&) = delete;
    TemporaryStore& operator=(const TemporaryStore&) = delete;

    QString path() const;
    QString folder() const;

    /// Runs one SQL statement with bound values, bypassing the engine. Throws std::runtime_error
    /// with the engine's message if the statement fails.
    void execute(const QString& sql, const QList<QVariant>& values = {});
    QList<QList<QVariant>> rows(const QString& sql, const QList<QVariant>& values = {});
    /// Returns the first column of the first row, or an invalid value if there is no row.
    QVariant scalar(const QString& sql, const QList<QVariant>& values = {});

    /// Returns the complete contents for comparison: the bytes of the file, or the tables, columns
    /// and rows of the database on a server.
    QByteArray contents();

    /// Opens a new connection after the server has been restarted.
    void reconnect() { sql_->reconnect(); }

    /// Waits until no other connection uses the store. A server continues to execute the statement
    /// of a killed station.
    void waitUntilLeft();

    /// Adds a series and returns its AutoNum. The deductions are in the table's column order: width
    /// and height of frame, sash, glass and mesh.
    int addSeries(const QString& name, const QList<double>& deductions, int kanafNum, int nativNum,
                  const QVariant& sign = {});
    void addOrder(int number, bool closed = false,
                  const QString& isoDate = QStringLiteral("2026-01-02"));
    /// Adds a normal line with this number to the order: an opening of 120 by 100 with two sashes,
    /// dated 2026-01-02, with a value in every field.
    void addLine(int orderNumber, int lineNumber, const QString& name = QStringLiteral("סדרה"));

    /// Creates a separate store at the path. On a server, the path gets the link file and the
    /// returned object owns the database.
    static std::unique_ptr<ThrowawayDatabase> write(Contents contents, const QString& path);

private:
    QTemporaryDir folder_;
    std::unique_ptr<ThrowawayDatabase> database_; ///< Null for an embedded store.
    std::unique_ptr<PlainSql> sql_;
    QString formerStorePath_;
    QString formerLogoPath_;
};

} // namespace testsupport
