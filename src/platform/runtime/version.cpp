#include "platform/runtime/version.h"

#include <QString>

namespace runtime {

QVersionNumber programVersion()
{
    return QVersionNumber::fromString(QStringLiteral(ZOMREL_VERSION));
}

} // namespace runtime
