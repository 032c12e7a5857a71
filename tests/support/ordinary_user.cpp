#include "support/ordinary_user.h"

#include <QtGlobal>

#include <linux/capability.h>
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace testsupport {

namespace {

/// The capabilities with which root ignores file permissions.
constexpr unsigned passingOver = (1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH);

/// Restricts the effective capabilities to those in `keep`, adds those in `give`, and returns the
/// previous ones.
unsigned change(unsigned keep, unsigned give)
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3]{};
    if (syscall(SYS_capget, &header, data) != 0)
        qFatal("cannot read the capabilities of the process");
    const unsigned former = data[0].effective;
    data[0].effective = (former & keep) | give;
    if (syscall(SYS_capset, &header, data) != 0)
        qFatal("cannot change the capabilities of the process");
    return former;
}

void setBits(int bits)
{
    if (geteuid() == 0 && prctl(PR_SET_SECUREBITS, bits) != 0)
        qFatal("cannot set the secure bits of the process");
}

} // namespace

OrdinaryUser::OrdinaryUser()
    : former_(change(~passingOver, 0) & passingOver), formerBits_(prctl(PR_GET_SECUREBITS))
{
    setBits(formerBits_ | SECBIT_NOROOT);
}

OrdinaryUser::~OrdinaryUser()
{
    setBits(formerBits_);
    change(~0U, former_);
}

} // namespace testsupport
