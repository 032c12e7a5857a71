#include "platform/controls/png_icon.h"

#include <QImageReader>
#include <QPixmap>

namespace controls {

QIcon pngIcon(const QStringList& files)
{
    QIcon icon;
    for (const QString& file : files) {
        QImageReader reader(file, "png");
        reader.setAutoDetectImageFormat(false);
        icon.addPixmap(QPixmap::fromImageReader(&reader));
    }
    return icon;
}

} // namespace controls
