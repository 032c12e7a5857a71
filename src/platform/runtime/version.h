#pragma once

#include <QString>
#include <QVersionNumber>

namespace runtime {

/// The program's file version, four parts, as the build states it.
inline QVersionNumber programVersion()
{
    return QVersionNumber::fromString(QStringLiteral(ZOMREL_VERSION));
}

} // namespace runtime
