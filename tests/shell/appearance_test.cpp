#include "shell/appearance.h"

#include "support/widgets.h"

#include <QFontMetrics>
#include <QRawFont>
#include <QStyle>
#include <QTextLayout>

using namespace Qt::StringLiterals;

class AppearanceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { shell::setUpAppearance(*qApp); }
    void styleAndDirection();
    void fontIsReadable();
    void namedFontsShowHebrew_data();
    void namedFontsShowHebrew();
    void toolkitSpeaksHebrew();
};

void AppearanceTest::styleAndDirection()
{
    QCOMPARE(QApplication::style()->name().toLower(), u"fusion"_s);
    QCOMPARE(QApplication::layoutDirection(), Qt::RightToLeft);
    QCOMPARE(QApplication::palette().color(QPalette::Text), QColor(Qt::black));
    QCOMPARE(QApplication::palette().color(QPalette::Base), QColor(Qt::white));
}

void AppearanceTest::fontIsReadable()
{
    QVERIFY(QApplication::font().pointSizeF() >= 11);
}

void AppearanceTest::namedFontsShowHebrew_data()
{
    QTest::addColumn<QString>("family");
    for (const QString& each : {u"David"_s, u"Arial"_s, u"MS Sans Serif"_s})
        QTest::newRow(qPrintable(each)) << each;
}

void AppearanceTest::namedFontsShowHebrew()
{
    QFETCH(QString, family);
    QTextLayout layout(u"אבגדהוזחטיכלמנסעפצקרשת"_s, QFont(family, 12));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    for (const QGlyphRun& run : layout.glyphRuns()) {
        for (const quint32 glyph : run.glyphIndexes())
            QVERIFY(glyph != 0); // 0 is the box of a missing letter
    }
}

void AppearanceTest::toolkitSpeaksHebrew()
{
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"ביטול"_s);
}

ZOMREL_QTEST_MAIN(AppearanceTest)
#include "appearance_test.moc"
