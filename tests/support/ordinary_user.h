#pragma once

namespace testsupport {

/// Enforces file and folder permissions for the current thread and the processes that it starts,
/// even if the tests run as root. The effect ends with the object.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    unsigned former_; ///< Capabilities to restore.
    int formerBits_;  ///< Secure bits to restore; they determine whether a process started as root
                      ///< gets all capabilities.
};

} // namespace testsupport
