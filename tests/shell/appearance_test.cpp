#include "shell/appearance.h"

#include "shell/program_style.h"
#include "support/widgets.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <QRawFont>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOption>
#include <QTableView>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

class AppearanceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { shell::setUpAppearance(*qApp); }
    void style_isRightToLeftFusion();
    void font_hasAtLeast11Points();
    void namedFonts_haveHebrewGlyphs_data();
    void namedFonts_haveHebrewGlyphs();
    void toolkitTexts_areHebrew();
    void programIcon_hasAllSizes();
    void toolbarExtension_pointsToTheHiddenPart();
    void cachedPixmaps_useTheApplicationPalette();
    void selection_isReadableAndShowsTheFocus();
    void focusFrame_isDrawnHoweverTheFocusCame();
    void toolButtonWithAMenu_showsItsFocus();
    void emptyGrid_showsItsFocus();
    void gridLine_isOnePixelAt150Percent_data();
    void gridLine_isOnePixelAt150Percent();
    void disabledCombo_isWhite();
    void pathInACombo_readsInTheDirectionOfTheCombo();
    void buttonsOfDialogs_haveNoIcons();
    void frame_isOnePixelOnEachSideAt150Percent_data();
    void frame_isOnePixelOnEachSideAt150Percent();
    void disabledField_keepsItsBackground();
};

/// Records the palettes that are passed to the style for drawing.
/// Gives the buttons of dialogs icons, as the styles of some desktops do.
class StyleWithIcons : public QProxyStyle
{
public:
    StyleWithIcons() : QProxyStyle(u"fusion"_s) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, more);
    }
};

class NotingStyle : public QProxyStyle
{
public:
    explicit NotingStyle(QList<qint64>& palettes) : QProxyStyle(u"fusion"_s), palettes_(palettes) {}
    void drawControl(ControlElement, const QStyleOption* option, QPainter*,
                     const QWidget*) const override
    {
        palettes_.append(option->palette.cacheKey());
    }
    void drawComplexControl(ComplexControl, const QStyleOptionComplex* option, QPainter*,
                            const QWidget*) const override
    {
        palettes_.append(option->palette.cacheKey());
    }

private:
    QList<qint64>& palettes_;
};

void AppearanceTest::style_isRightToLeftFusion()
{
    const auto* style = qobject_cast<QProxyStyle*>(QApplication::style());
    QVERIFY(style != nullptr);
    QCOMPARE(style->baseStyle()->name(), u"fusion"_s);
    QCOMPARE(QApplication::layoutDirection(), Qt::RightToLeft);
    QCOMPARE(QApplication::palette().color(QPalette::Text), QColor(Qt::black));
    QCOMPARE(QApplication::palette().color(QPalette::Base), QColor(Qt::white));
}

void AppearanceTest::font_hasAtLeast11Points()
{
    QVERIFY(QApplication::font().pointSizeF() >= 11);
}

void AppearanceTest::namedFonts_haveHebrewGlyphs_data()
{
    QTest::addColumn<QString>("family");
    for (const QString& each : {u"David"_s, u"Arial"_s, u"MS Sans Serif"_s})
        QTest::newRow(qPrintable(each)) << each;
}

void AppearanceTest::namedFonts_haveHebrewGlyphs()
{
    QFETCH(QString, family);
    QTextLayout layout(u"אבגדהוזחטיכלמנסעפצקרשת"_s, QFont(family, 12));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    for (const QGlyphRun& run : layout.glyphRuns()) {
        for (const quint32 glyph : run.glyphIndexes())
            // Glyph 0 is the box that stands for a missing letter.
            QVERIFY(glyph != 0);
    }
}

void AppearanceTest::toolkitTexts_areHebrew()
{
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"ביטול"_s);
}

void AppearanceTest::programIcon_hasAllSizes()
{
    const QIcon icon = QApplication::windowIcon();
    for (const int side : {16, 32, 48})
        QCOMPARE(icon.actualSize(QSize(side, side)), QSize(side, side));
}

/// Returns the vertical distance, in pixels, of the icon's leftmost drawn pixel from its middle, or
/// -1 if nothing is drawn.
int heightOfLeftmost(const QIcon& icon)
{
    const QImage image = icon.pixmap(16, 16).toImage();
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(x, y).alpha() > 128)
                return std::abs(y - image.height() / 2);
        }
    }
    return -1;
}

void AppearanceTest::toolbarExtension_pointsToTheHiddenPart()
{
    QWidget reading;
    const auto extension = [&reading](Qt::LayoutDirection direction) {
        reading.setLayoutDirection(direction);
        return QApplication::style()->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton,
                                                   nullptr, &reading);
    };
    // An arrowhead that points right has its wide end leftmost; one that points left has its tip
    // leftmost.
    QVERIFY(heightOfLeftmost(extension(Qt::LeftToRight)) >= 3);
    const int tip = heightOfLeftmost(extension(Qt::RightToLeft));
    QVERIFY(tip >= 0 && tip < 3);
}

void AppearanceTest::cachedPixmaps_useTheApplicationPalette()
{
    QList<qint64> palettes;
    shell::ProgramStyle style;
    style.setBaseStyle(new NotingStyle(palettes));
    QStyleOptionHeader header;
    QStyleOptionSlider bar;
    QStyleOptionComboBox list;
    for (QStyleOption* option : std::initializer_list<QStyleOption*>{&header, &bar, &list})
        option->palette.setColor(QPalette::Window, Qt::red);
    list.state = QStyle::State_Enabled;
    QPixmap paper(1, 1);
    QPainter painter(&paper);

    style.drawControl(QStyle::CE_HeaderSection, &header, &painter, nullptr);
    style.drawComplexControl(QStyle::CC_ScrollBar, &bar, &painter, nullptr);
    style.drawComplexControl(QStyle::CC_ComboBox, &list, &painter, nullptr);

    QCOMPARE(palettes, QList<qint64>(3, QApplication::palette().cacheKey()));
    // Disabled combo boxes have another palette, but always the same one.
    list.state = {};
    style.drawComplexControl(QStyle::CC_ComboBox, &list, &painter, nullptr);
    style.drawComplexControl(QStyle::CC_ComboBox, &list, &painter, nullptr);
    QCOMPARE(palettes[3], palettes[4]);
}

/// Returns the relative luminance of a colour as WCAG 2 defines it.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

void AppearanceTest::selection_isReadableAndShowsTheFocus()
{
    const QPalette palette = QApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        QVERIFY(contrast(palette.color(group, QPalette::Highlight),
                         palette.color(group, QPalette::HighlightedText)) >= 4.5);
    QVERIFY(contrast(palette.color(QPalette::Active, QPalette::Highlight),
                     palette.color(QPalette::Inactive, QPalette::Highlight)) >= 3);
}

/// Draws a control with and without the focus that came by the mouse. Returns true if the pictures
/// differ.
template <typename Draw>
bool showsFocus(Draw draw)
{
    QList<QImage> pictures;
    for (const bool focused : {false, true}) {
        QImage picture(120, 60, QImage::Format_ARGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        draw(painter,
             QStyle::State_Enabled | (focused ? QStyle::State_HasFocus : QStyle::State_None));
        painter.end();
        pictures.append(picture);
    }
    return pictures[0] != pictures[1];
}

void AppearanceTest::focusFrame_isDrawnHoweverTheFocusCame()
{
    QVERIFY(showsFocus([](QPainter& painter, QStyle::State state) {
        QStyleOptionButton button;
        button.rect = QRect(5, 5, 100, 40);
        button.state = state | QStyle::State_Raised;
        button.text = u"x"_s;
        QApplication::style()->drawControl(QStyle::CE_PushButton, &button, &painter);
    }));
}

void AppearanceTest::toolButtonWithAMenu_showsItsFocus()
{
    QVERIFY(showsFocus([](QPainter& painter, QStyle::State state) {
        QStyleOptionToolButton button;
        button.rect = QRect(5, 5, 100, 50);
        button.state = state | QStyle::State_AutoRaise;
        button.features = QStyleOptionToolButton::MenuButtonPopup | QStyleOptionToolButton::HasMenu;
        button.subControls = QStyle::SC_ToolButton | QStyle::SC_ToolButtonMenu;
        button.text = u"x"_s;
        QApplication::style()->drawComplexControl(QStyle::CC_ToolButton, &button, &painter);
    }));
}

void AppearanceTest::emptyGrid_showsItsFocus()
{
    QWidget window;
    auto* grid = new QTableView(&window);
    grid->setGeometry(10, 10, 200, 100);
    auto* box = new QLineEdit(&window);
    box->setGeometry(10, 120, 200, 30);
    QVERIFY(testsupport::showActive(window));
    const auto edge = [grid](const QPoint& place) {
        return grid->grab().toImage().pixelColor(place);
    };
    const QColor highlight = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
    for (const QPoint& place : {QPoint(0, 50), QPoint(199, 50), QPoint(100, 0), QPoint(100, 99)}) {
        box->setFocus();
        QVERIFY(edge(place) != highlight);
        grid->setFocus();
        QCOMPARE(edge(place), highlight);
    }
}

void AppearanceTest::gridLine_isOnePixelAt150Percent_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

/// Columns of 21 units, 31.5 pixels, begin on a pixel and between two pixels in turn.
void AppearanceTest::gridLine_isOnePixelAt150Percent()
{
    QFETCH(Qt::LayoutDirection, direction);
    QStandardItemModel model(3, 8);
    QTableView grid;
    grid.setLayoutDirection(direction);
    grid.setModel(&model);
    grid.horizontalHeader()->hide();
    grid.verticalHeader()->hide();
    grid.horizontalHeader()->setMinimumSectionSize(1);
    grid.verticalHeader()->setMinimumSectionSize(1);
    for (int i = 0; i < 8; ++i)
        grid.setColumnWidth(i, 21);
    for (int i = 0; i < 3; ++i)
        grid.setRowHeight(i, 21);
    grid.resize(400, 200);
    grid.ensurePolished();
    QImage picture(grid.viewport()->size() * 1.5, QImage::Format_RGB32);
    picture.setDevicePixelRatio(1.5);
    picture.fill(Qt::white);
    grid.viewport()->render(&picture);
    const auto lines = [&picture](int length, auto pixelAt) {
        QList<int> widths;
        bool wasLine = false;
        for (int i = 0; i < length; ++i) {
            const bool isLine = picture.pixel(pixelAt(i)) != qRgb(255, 255, 255);
            if (isLine && wasLine)
                ++widths.last();
            else if (isLine)
                widths.append(1);
            wasLine = isLine;
        }
        return widths;
    };
    QCOMPARE(lines(picture.width(), [](int i) { return QPoint(i, 15); }), QList<int>(8, 1));
    const int inColumn = qRound((grid.columnViewportPosition(0) + 10) * 1.5);
    QCOMPARE(lines(picture.height(), [&](int i) { return QPoint(inColumn, i); }), QList<int>(3, 1));
}

void AppearanceTest::disabledCombo_isWhite()
{
    QComboBox list;
    list.setEnabled(false);
    list.resize(100, 30);
    // Fusion shades the box a little. An enabled one is clearly darker.
    QVERIFY(list.grab().toImage().pixelColor(50, 15).lightness() > 250);
}

/// The slash in front of a path would otherwise move to its other end.
void AppearanceTest::pathInACombo_readsInTheDirectionOfTheCombo()
{
    QComboBox folders;
    folders.setLayoutDirection(Qt::LeftToRight);
    folders.addItem(u"/srv/orders"_s);
    folders.resize(200, 30);
    const QImage shown = folders.grab().toImage();
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    const QImage expected = folders.grab().toImage();
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(shown, expected);
}

void AppearanceTest::buttonsOfDialogs_haveNoIcons()
{
    shell::ProgramStyle style;
    style.setBaseStyle(new StyleWithIcons);
    QCOMPARE(
        style.styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons, nullptr, nullptr, nullptr), 0);
}

void AppearanceTest::frame_isOnePixelOnEachSideAt150Percent_data()
{
    QTest::addColumn<int>("corner");
    QTest::addColumn<QList<int>>("lines");
    // By hand: 20 units are 30 pixels. From 2 they cover the pixels 3 to 32. From 3 they begin and
    // end in the middle of a pixel, at 4.5 and 34.5, and the whole pixels are 5 to 33.
    QTest::newRow("edges on pixels") << 2 << QList<int>{3, 32};
    QTest::newRow("edges between pixels") << 3 << QList<int>{5, 33};
}

void AppearanceTest::frame_isOnePixelOnEachSideAt150Percent()
{
    QFETCH(int, corner);
    QFETCH(QList<int>, lines);
    QImage picture(40, 40, QImage::Format_RGB32);
    picture.setDevicePixelRatio(1.5);
    picture.fill(Qt::white);
    QStyleOptionFrame frame;
    frame.rect = QRect(corner, corner, 20, 20);
    frame.palette = QApplication::palette();
    QPainter painter(&picture);
    QApplication::style()->drawPrimitive(QStyle::PE_Frame, &frame, &painter);
    painter.end();
    QList<int> across;
    QList<int> down;
    for (int i = 0; i < 40; ++i) {
        if (picture.pixel(i, 18) != qRgb(255, 255, 255))
            across.append(i);
        if (picture.pixel(18, i) != qRgb(255, 255, 255))
            down.append(i);
    }
    QCOMPARE(across, lines);
    QCOMPARE(down, lines);
}

/// The boxes of the measures are white also if they are disabled, and the others look the same.
void AppearanceTest::disabledField_keepsItsBackground()
{
    const QPalette palette = QApplication::palette();
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::Base), QColor(Qt::white));
    QVERIFY(palette.color(QPalette::Disabled, QPalette::Text) !=
            palette.color(QPalette::Active, QPalette::Text));
}

ZOMREL_QTEST_MAIN(AppearanceTest)
#include "appearance_test.moc"
