#pragma once

namespace testsupport {

/// For as long as it lives, the marks of files and folders hold for this thread and the processes
/// that it starts as they do for an ordinary user, although the tests may run as root.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    unsigned former_; ///< The powers that are given back.
    int formerBits_;  ///< Whether a process started as root gets all powers.
};

} // namespace testsupport
