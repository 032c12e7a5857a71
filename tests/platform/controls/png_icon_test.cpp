#include "platform/controls/png_icon.h"

#include "support/widgets.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class PngIconTest : public QObject
{
    Q_OBJECT

private slots:
    void icon_hasEachSize();
    void unreadableFile_isSkipped();

private:
    QString drawn(int side);

    QTemporaryDir folder_;
};

QString PngIconTest::drawn(int side)
{
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const QString path = folder_.filePath(u"%1.png"_s.arg(side));
    return picture.save(path, "PNG") ? path : QString();
}

void PngIconTest::icon_hasEachSize()
{
    const QIcon icon = controls::pngIcon({drawn(16), drawn(48)});
    QCOMPARE(icon.availableSizes(), (QList<QSize>{{16, 16}, {48, 48}}));
    QCOMPARE(icon.pixmap(16, 16).toImage().pixelColor(3, 3), QColor(Qt::red));
}

void PngIconTest::unreadableFile_isSkipped()
{
    QVERIFY(controls::pngIcon({folder_.filePath(u"missing.png"_s)}).isNull());
}

ZOMREL_QTEST_MAIN(PngIconTest)
#include "png_icon_test.moc"
