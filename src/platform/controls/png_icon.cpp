#include "platform/controls/png_icon.h"

#include <QGuiApplication>
#include <QImageReader>
#include <QPixmap>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace controls {

namespace {

constexpr int largestScale = 3;

QPixmap pngPixmap(const QString& file)
{
    QImageReader reader(file, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

} // namespace

QIcon pngIcon(const QStringList& files)
{
    QIcon icon;
    for (const QString& file : files)
        icon.addPixmap(pngPixmap(file));
    return icon;
}

QIcon sharpIcon(const QString& file)
{
    const int scale =
        std::clamp(static_cast<int>(std::ceil(qApp->devicePixelRatio())), 1, largestScale);
    QPixmap pixmap = pngPixmap(scale == 1 ? file : file.chopped(4) + u"@%1x.png"_s.arg(scale));
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace controls
