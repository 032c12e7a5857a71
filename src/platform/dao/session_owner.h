#pragma once

#include "platform/dao/engine/session.h"

namespace dao {

/// The base class of Database, which holds the session of an open store. Recordsets and table
/// definitions refer to a Database by this base class, so that they need not include the header of
/// Database.
class SessionOwner
{
public:
    Q_DISABLE_COPY_MOVE(SessionOwner)

    /// Returns the session. Throws ObjectClosed (3420) after the session has been closed. The
    /// function is not for code outside of the dao library.
    Session& session() const
    {
        if (!session_)
            throw runtime::RunTimeError(runtime::ObjectClosed);
        return *session_;
    }

protected:
    explicit SessionOwner(std::unique_ptr<Session> session) : session_(std::move(session)) {}
    ~SessionOwner() = default;

    bool hasSession() const { return session_ != nullptr; }
    void closeSession() { session_.reset(); }

private:
    std::unique_ptr<Session> session_;
};

} // namespace dao
