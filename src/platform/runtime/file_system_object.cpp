#include "platform/runtime/file_system_object.h"

#include <QFileInfo>

namespace runtime {

bool FileSystemObject::FileExists(const QString& path) const
{
    return QFileInfo(path).isFile();
}

} // namespace runtime
