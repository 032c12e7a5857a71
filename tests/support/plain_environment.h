#pragma once

namespace testsupport {

/// Removes settings of the machine or the user from this process's environment, because they would
/// change the outcome of tests: regional settings (replaced by C.UTF-8), scaling, style and logging
/// of the toolkit, the defaults of libpq, the printers, the file mode mask, and a temporary folder
/// whose path is too long for a socket. Processes that a test starts inherit the result. Must be
/// called before the application object is created.
void setPlainEnvironment();

} // namespace testsupport
