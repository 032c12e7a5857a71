#pragma once

namespace testsupport {

/// Removes from this process's environment what a machine or a user may have set there and what
/// would change the outcome of a test: the regional settings (C.UTF-8 takes their place), scaling,
/// style and logging of the toolkit, the defaults of the server's client library, the printers, the
/// mask of new files, and a temporary folder whose path is so long that no socket can lie in it.
/// Processes that a test starts inherit the result. Has to come before the application is made.
void setPlainEnvironment();

} // namespace testsupport
