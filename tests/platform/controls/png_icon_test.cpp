#include "platform/controls/png_icon.h"

#include "support/widgets.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class PngIconTest : public QObject
{
    Q_OBJECT

private slots:
    void icon_hasEachSize();
    void unreadableFile_isSkipped();
    void everyIcon_isDrawnForDenseScreens();

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

/// The files of a scale have that many times the size.
void PngIconTest::everyIcon_isDrawnForDenseScreens()
{
    int icons = 0;
    for (const QString& file : QDir(u":/zomrel/icons"_s).entryList({u"*@2x.png"_s})) {
        const QString name = u":/zomrel/icons/"_s + file.chopped(7);
        const QSize usual = QImage(name + u".png"_s).size();
        QVERIFY(usual.isValid());
        QCOMPARE(QImage(name + u"@2x.png"_s).size(), 2 * usual);
        QCOMPARE(QImage(name + u"@3x.png"_s).size(), 3 * usual);
        // The test runs on a screen of scale 1.
        QCOMPARE(controls::sharpIcon(name + u".png"_s).availableSizes(), QList<QSize>{usual});
        ++icons;
    }
    QCOMPARE(icons, 7);
}

ZOMREL_QTEST_MAIN(PngIconTest)
#include "png_icon_test.moc"
