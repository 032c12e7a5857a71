#pragma once

#include <QString>
#include <QVersionNumber>

namespace runtime {

/// Returns the program's four-part file version, as defined by the build.
inline QVersionNumber programVersion()
{
    return QVersionNumber::fromString(QStringLiteral(ZOMREL_VERSION));
}

} // namespace runtime
