#include "platform/dao/postgres/pq_login.h"

#include "platform/dao/postgres/pq_authentication.h"
#include "platform/dao/postgres/sockets.h"

#include <QByteArrayList>
#include <QProcessEnvironment>
#include <QStringList>

#include <algorithm>
#include <array>
#include <future>
#include <thread>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// Time limit of a log-in. If the connection was lost without notice, the opening of a store waits
/// three seconds for an answer over the old connection. It then waits at most this time for the new
/// log-in. Together this is less than ten seconds.
constexpr std::chrono::seconds logInPatience(5);
/// Timeout for connecting to one address of a server that has several addresses. It is shorter than
/// the timeout of the log-in, so that there is time to try the next address.
constexpr std::chrono::milliseconds addressPatience(4000);
constexpr std::chrono::seconds idleInTransaction(60);

const QString remedy = QStringLiteral("set its authentication method to scram-sha-256");

constexpr auto passwordVariable = "PGPASSWORD";

constexpr std::array keptVariables = {
    "PGPASSFILE"_L1, "PGSSLROOTCERT"_L1, "PGSSLCERT"_L1,     "PGSSLKEY"_L1,
    "PGSSLCRL"_L1,   "PGSSLCRLDIR"_L1,   "PGREQUIREPEER"_L1,
};

#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity inNames = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity inNames = Qt::CaseSensitive;
#endif

/// Returns the value that the environment variable PGPASSWORD had before clearClientEnvironment
/// removed it.
QByteArray& environmentPassword()
{
    static QByteArray password;
    return password;
}

/// Removes the environment variables that change how or where the client library connects, such as
/// PGHOSTADDR, PGSERVICE, PGSSLMODE and PGOPTIONS. Only the link determines the connection. Keeps
/// the variables that name files of credentials. Keeps PGREQUIREPEER, because it can only make the
/// library refuse a server.
void clearClientEnvironment()
{
    if (qEnvironmentVariableIsSet(passwordVariable))
        environmentPassword() = qgetenv(passwordVariable);
    const QStringList names = QProcessEnvironment::systemEnvironment().keys();
    for (const QString& each : names) {
        const bool isKept = std::any_of(
            keptVariables.begin(), keptVariables.end(),
            [&each](QLatin1StringView kept) { return each.compare(kept, inNames) == 0; });
        if (each.startsWith("PG"_L1, inNames) && !isKept)
            qunsetenv(each.toLocal8Bit().constData());
    }
}

struct LookUp
{
    int error = 0;
    QByteArrayList addresses;
};

LookUp lookUp(const QByteArray& host, int flags)
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    addrinfo* found = nullptr;
    LookUp result;
    result.error = ::getaddrinfo(host.constData(), nullptr, &hints, &found);
    if (result.error != 0)
        return result;
    for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
        std::array<char, NI_MAXHOST> text{};
        if (::getnameinfo(each->ai_addr, static_cast<socklen_t>(each->ai_addrlen), text.data(),
                          text.size(), nullptr, 0, NI_NUMERICHOST) == 0)
            result.addresses.append(text.data());
    }
    ::freeaddrinfo(found);
    return result;
}

QString reasonOf(int lookUpError)
{
#ifdef _WIN32
    return qt_error_string(lookUpError);
#else
    return QString::fromLocal8Bit(::gai_strerror(lookUpError));
#endif
}

/// Returns the numeric addresses of the server, or one empty address for a local socket. The system
/// function that looks up a name has no deadline, so it runs in a detached thread.
QByteArrayList addressesOf(const Link& link, const Deadline& deadline)
{
    const QByteArray host = link.server.toUtf8();
    if (host.startsWith('/') || host.startsWith('@'))
        return {QByteArray()};
#ifdef _WIN32
    WSADATA data;
    ::WSAStartup(MAKEWORD(2, 2), &data);
#endif
    if (const LookUp numeric = lookUp(host, AI_NUMERICHOST); numeric.error == 0)
        return numeric.addresses;
    std::packaged_task<LookUp()> task([host] { return lookUp(host, 0); });
    std::future<LookUp> found = task.get_future();
    std::thread(std::move(task)).detach();
    if (found.wait_until(deadline.end()) != std::future_status::ready)
        throw logInError(link, deadline.message());
    const LookUp result = found.get();
    if (result.error != 0)
        throw logInError(link, u"could not translate host name \"%1\" to address: %2"_s.arg(
                                   link.server, reasonOf(result.error)));
    return result.addresses;
}

/// Returns the server settings that are sent together with the log-in. Sending them later would
/// cost a round trip.
QByteArray sessionOptions(const Timeouts& timeouts)
{
    return u"-c lock_timeout=%1 -c idle_in_transaction_session_timeout=%2 -c extra_float_digits=1 "
           "-c standard_conforming_strings=on -c client_min_messages=warning -c datestyle=ISO"_s
               .arg(timeouts.lock.count())
               .arg(std::chrono::milliseconds(idleInTransaction).count())
               .toUtf8();
}

/// Specifies whether and how a log-in may use the user's password.
enum class PasswordUse {
    None,
    /// The log-in may use the password over an encrypted connection with SCRAM-SHA-256-PLUS, which
    /// is bound to the certificate of this connection. The client library refuses all other kinds
    /// of log-in.
    Bound,
    /// The log-in may use the password over an unencrypted connection with SCRAM-SHA-256. The
    /// program examines the requests of the server, because the client library would answer any
    /// request for the password.
    Examined,
};

/// The path that is passed to the client library as the password file. There is never a file at
/// this path, so that the library finds no password.
#ifdef _WIN32
constexpr auto noPasswordFile = "<none>"; // No file name contains these signs.
#else
constexpr auto noPasswordFile = "/dev/null/none";
#endif

QByteArray tlsModeFor(const Link& link, PasswordUse use)
{
    if (use == PasswordUse::Examined)
        return "disable";
    const bool mayBePlain =
        link.tls == "disable"_L1 || link.tls == "allow"_L1 || link.tls == "prefer"_L1;
    return use == PasswordUse::Bound && mayBePlain ? QByteArray("require") : link.tls.toUtf8();
}

ConnectionHandle started(const Link& link, const Timeouts& timeouts, const QByteArray& address,
                         PasswordUse use)
{
    const bool mayUsePassword = use != PasswordUse::None;
    // If a setting in this list has an empty value, the client library uses its default for the
    // setting.
    const std::array<std::pair<const char*, QByteArray>, 17> settings = {{
        {"host", link.server.toUtf8()},
        {"hostaddr", address},
        {"port", QByteArray::number(link.port)},
        {"dbname", link.database.toUtf8()},
        {"user", link.user.toUtf8()},
        {"sslmode", tlsModeFor(link, use)},
        {"channel_binding", use == PasswordUse::Bound ? "require" : "disable"},
        {"passfile", mayUsePassword ? "" : noPasswordFile},
        {"password", mayUsePassword ? environmentPassword() : QByteArray()},
        // GSSAPI encryption is disabled, because it would take precedence over TLS and the
        // verification of the server by TLS.
        {"gssencmode", "disable"},
        {"client_encoding", "UTF8"},
        {"application_name", "Zomrel"},
        {"options", sessionOptions(timeouts)},
        {"tcp_user_timeout", QByteArray::number(qint64(timeouts.answer.count()))},
        {"keepalives_idle", "5"},
        {"keepalives_interval", "2"},
        {"keepalives_count", "2"},
    }};
    std::array<const char*, settings.size() + 1> keywords{};
    std::array<const char*, settings.size() + 1> values{};
    for (std::size_t i = 0; i < settings.size(); ++i) {
        keywords[i] = settings[i].first;
        values[i] = settings[i].second.constData();
    }
    constexpr int plainDatabaseName = 0;
    return ConnectionHandle(
        PQ(connectStartParams)(keywords.data(), values.data(), plainDatabaseName));
}

struct Attempt
{
    ConnectionHandle connection; ///< Null if the attempt has failed.
    QString reason;
    bool reachedServer = false;
    bool asksForPassword = false;
    bool isEncrypted = false;
};

/// Pause before the program looks again for the rest of an incomplete message. The pause is short,
/// because a server sends an authentication request in one piece.
constexpr std::chrono::milliseconds restPause(1);

/// Returns true if the server requests the password in clear text or as an MD5 hash. If the request
/// is incomplete, waits for the rest of it. Also returns true if the request is still incomplete at
/// the deadline.
bool asksForReadablePassword(const PGconn* connection, const Deadline& deadline)
{
    PasswordRequest request = pendingPasswordRequest(connection);
    while (request == PasswordRequest::Incomplete && deadline.left() > restPause) {
        std::this_thread::sleep_for(restPause);
        request = pendingPasswordRequest(connection);
    }
    return request != PasswordRequest::None;
}

Attempt attemptOnce(const Link& link, const Timeouts& timeouts, const QByteArray& address,
                    const Deadline& deadline, PasswordUse use)
{
    ConnectionHandle connection = started(link, timeouts, address, use);
    if (!connection)
        throw RunTimeError(runtime::OutOfMemory);
    Attempt result;
    auto next = PQ(status)(connection.get()) == CONNECTION_BAD ? PGRES_POLLING_FAILED
                                                               : PGRES_POLLING_WRITING;
    while (next != PGRES_POLLING_OK && next != PGRES_POLLING_FAILED) {
        const auto readiness =
            next == PGRES_POLLING_READING ? Readiness::ToRead : Readiness::ToWrite;
        if (!waitFor(connection.get(), readiness, deadline))
            return {nullptr, deadline.message()};
        const ConnStatusType status = PQ(status)(connection.get());
        result.reachedServer = status != CONNECTION_STARTED;
        result.isEncrypted = PQ(sslInUse)(connection.get()) != 0;
        if (use == PasswordUse::Examined && status == CONNECTION_AWAITING_RESPONSE &&
            asksForReadablePassword(connection.get(), deadline)) {
            result.reason =
                u"the server asks for the password in clear text or as MD5; "_s + remedy;
            return result;
        }
        next = PQ(connectPoll)(connection.get());
    }
    if (next == PGRES_POLLING_FAILED) {
        result.asksForPassword = PQ(connectionNeedsPassword)(connection.get()) != 0;
        result.reason = QString::fromUtf8(PQ(errorMessage)(connection.get()));
        if (result.reason.contains("channel binding"_L1))
            result.reason += u" ("_s + remedy + u')';
        return result;
    }
    result.connection = std::move(connection);
    return result;
}

/// Logs in without a password. If the server asks for a password, a second attempt uses it. The
/// second attempt is encrypted if and only if the first one was. A server that requests the
/// password in a readable form does not get the password.
Attempt attempt(const Link& link, const Timeouts& timeouts, const QByteArray& address,
                std::chrono::milliseconds patience)
{
    const Deadline deadline(patience);
    Attempt first = attemptOnce(link, timeouts, address, deadline, PasswordUse::None);
    if (first.connection || !first.asksForPassword)
        return first;
    return attemptOnce(link, timeouts, address, deadline,
                       first.isEncrypted ? PasswordUse::Bound : PasswordUse::Examined);
}

} // namespace

RunTimeError logInError(const Link& link, const QString& reason)
{
    return RunTimeError(runtime::ConnectionFailed,
                        u"Connection to %1 as user '%2' failed: %3"_s.arg(link.place(), link.user,
                                                                          reason.simplified()));
}

ConnectionHandle logIn(const Link& link, const Timeouts& timeouts)
{
    if (!loadClientLibrary())
        throw logInError(link, u"PostgreSQL's client library is not installed"_s);
    clearClientEnvironment();
    const Deadline deadline(logInPatience);
    const QByteArrayList addresses = addressesOf(link, deadline);
    QStringList reasons;
    for (const QByteArray& address : addresses) {
        const bool isLast = reasons.size() + 1 == addresses.size();
        const auto left = deadline.left();
        Attempt result =
            attempt(link, timeouts, address, isLast ? left : std::min(left, addressPatience));
        if (result.connection) {
            PQ(setnonblocking)(result.connection.get(), 1);
            // The server's notices, which are warnings and other messages but never errors, are
            // ignored, because the server logs them.
            constexpr auto ignore = [](void*, const char*) {};
            PQ(setNoticeProcessor)(result.connection.get(), ignore, nullptr);
            return std::move(result.connection);
        }
        reasons.append(result.reason);
        if (result.reachedServer)
            break; // Another address of the same server would refuse for the same reason.
    }
    throw logInError(link, reasons.join(u' '));
}

} // namespace dao::postgres
