#include "platform/dao/postgres/pq_authentication.h"

#include "platform/dao/postgres/sockets.h"

#include <QtEndian>

#include <array>

namespace dao::postgres {

namespace {

constexpr char authenticationType = 'R';
/// The types of authentication requests with which a server asks for the password in clear text or
/// as an MD5 hash.
constexpr quint32 clearText = 3;
constexpr quint32 md5 = 5;
/// Sizes in bytes. The head of a message is its type and its length. The head of an authentication
/// request also contains the type of the request.
constexpr qsizetype messageHeadLength = 1 + 4;
constexpr qsizetype requestLength = messageHeadLength + 4;

} // namespace

PasswordRequest passwordRequestIn(QByteArrayView messages)
{
    while (!messages.isEmpty()) {
        const bool isRequest = messages.front() == authenticationType;
        if (isRequest && messages.size() < requestLength)
            return PasswordRequest::Incomplete;
        if (messages.size() < messageHeadLength)
            break;
        const auto asked =
            isRequest ? qFromBigEndian<quint32>(messages.data() + messageHeadLength) : quint32(0);
        if (asked == clearText || asked == md5)
            return PasswordRequest::Readable;
        const qint64 length = 1 + qint64(qFromBigEndian<quint32>(messages.data() + 1));
        if (length < messageHeadLength || length > messages.size())
            break; // a wrong length, or a message that is not complete yet
        messages = messages.sliced(length);
    }
    return PasswordRequest::None;
}

PasswordRequest pendingPasswordRequest(const PGconn* connection)
{
    std::array<char, 16384> bytes{};
    const auto count = ::recv(static_cast<Socket>(PQ(socket)(connection)), bytes.data(),
                              static_cast<int>(bytes.size()), MSG_PEEK);
    if (count <= 0)
        return PasswordRequest::None; // the client library reports the end or the error
    return passwordRequestIn(QByteArrayView(bytes.data(), static_cast<qsizetype>(count)));
}

} // namespace dao::postgres
