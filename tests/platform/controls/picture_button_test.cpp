#include "platform/controls/picture_button.h"

#include "support/widgets.h"

#include <QImage>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using controls::PictureButton;

namespace {

constexpr int pictureSize = 16;
const QSize buttonSize(100, 33);

QIcon redPicture()
{
    QPixmap picture(pictureSize, pictureSize);
    picture.fill(Qt::red);
    return QIcon(picture);
}

/// Returns the first and the last pixel column that contains a pixel of the given kind.
template <typename Kind>
std::pair<int, int> columnsOf(const QImage& image, Kind kind)
{
    std::pair columns{-1, -1};
    for (int x = 2; x < image.width() - 2; ++x) {
        for (int y = 4; y < image.height() - 4; ++y) {
            if (kind(image.pixelColor(x, y)))
                columns = {columns.first < 0 ? x : columns.first, x};
        }
    }
    return columns;
}

bool isRed(const QColor& colour)
{
    return colour.red() > 200 && colour.green() < 80;
}

bool isInk(const QColor& colour)
{
    return colour.lightness() < 90 && colour.red() < 120;
}

} // namespace

class PictureButtonTest : public QObject
{
    Q_OBJECT

private slots:
    void picture_precedesTheCaption_data();
    void picture_precedesTheCaption();
    void click_pressesTheButton();
};

void PictureButtonTest::picture_precedesTheCaption_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("caption");
    QTest::newRow("right to left") << Qt::RightToLeft << u"הדפס"_s;
    QTest::newRow("left to right") << Qt::LeftToRight << u"Print"_s;
    QTest::newRow("Hebrew, left to right") << Qt::LeftToRight << u"הדפס"_s;
}

void PictureButtonTest::picture_precedesTheCaption()
{
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, caption);
    PictureButton button(u"CmdPrint"_s, caption, redPicture());
    button.setLayoutDirection(direction);
    button.setIconSize({pictureSize, pictureSize});
    button.resize(buttonSize);
    const QImage image = button.grab().toImage();

    const auto [pictureLeft, pictureRight] = columnsOf(image, isRed);
    const auto [captionLeft, captionRight] = columnsOf(image, isInk);
    QVERIFY(pictureLeft > 0 && captionLeft > 0);
    QCOMPARE(pictureRight - pictureLeft + 1, pictureSize);
    const int between =
        direction == Qt::RightToLeft ? pictureLeft - captionRight : captionLeft - pictureRight;
    QVERIFY2(between > 0 && between <= 10, qPrintable(QString::number(between)));
    const int leftMargin = qMin(pictureLeft, captionLeft);
    const int rightMargin = buttonSize.width() - 1 - qMax(pictureRight, captionRight);
    QVERIFY2(qAbs(leftMargin - rightMargin) <= 4,
             qPrintable(u"%1 and %2"_s.arg(leftMargin).arg(rightMargin)));
}

void PictureButtonTest::click_pressesTheButton()
{
    PictureButton button(u"CmdPrint"_s, u"הדפס"_s, redPicture());
    QCOMPARE(button.objectName(), u"CmdPrint"_s);
    QCOMPARE(button.text(), u"הדפס"_s);
    QVERIFY(!button.icon().isNull());
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
}

ZOMREL_QTEST_MAIN(PictureButtonTest)
#include "picture_button_test.moc"
