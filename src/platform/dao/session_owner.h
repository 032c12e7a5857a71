#pragma once

#include "platform/dao/engine/session.h"

namespace dao {

/// Holds the session of an open store. Recordsets and table definitions refer to a Database by this
/// base class, so that they need not include its header.
class SessionOwner
{
public:
    Q_DISABLE_COPY_MOVE(SessionOwner)

    /// Throws ObjectClosed (3420) after the session has been closed. For use inside the engine
    /// only.
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
