// The tests start servers with Unix means. On Windows they use the server that the script of the
// tests has started; see throwaway_database.cpp.

#include "support/throwaway_server.h"

namespace testsupport {

dao::Link ownServer()
{
    qFatal("ZOMREL_TEST_SERVER names no server, and the tests start none on Windows.");
}

} // namespace testsupport
