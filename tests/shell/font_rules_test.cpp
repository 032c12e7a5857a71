#include "shell/font_rules.h"

#include "support/widgets.h"

#include <QDirIterator>
#include <QFontDatabase>
#include <QRawFont>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

/// Returns those of the families that have a font file on this machine.
QSet<QString> installed(const QSet<QString>& families)
{
    constexpr qreal anySize = 12;
    QSet<QString> found;
    QDirIterator files(u"/usr/share/fonts"_s, {u"*.ttf"_s, u"*.otf"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString family = QRawFont(files.next(), anySize).familyName();
        if (families.contains(family))
            found.insert(family);
    }
    return found;
}

} // namespace

class FontRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void rulesOfTheEnvironment_areKept_data();
    void rulesOfTheEnvironment_areKept();
    void installedFonts_canBeUsed();
};

void FontRulesTest::rulesOfTheEnvironment_areKept_data()
{
    QTest::addColumn<QByteArray>("variable");
    for (const char* each : {"FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT"})
        QTest::newRow(each) << QByteArray(each);
}

void FontRulesTest::rulesOfTheEnvironment_areKept()
{
    QFETCH(QByteArray, variable);
    const QByteArray former = qgetenv(variable);
    qputenv(variable, "/etc/fonts");
    QVERIFY(!shell::useFontRules());
    if (former.isNull())
        qunsetenv(variable);
    else
        qputenv(variable, former);
}

void FontRulesTest::installedFonts_canBeUsed()
{
    for (const char* each : {"FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT"})
        qunsetenv(each);
    QVERIFY(shell::useFontRules());
    const QStringList families = QFontDatabase::families();
    for (const QString& each :
         installed({u"David CLM"_s, u"Nachlieli CLM"_s, u"DejaVu Sans"_s, u"Liberation Sans"_s}))
        QVERIFY2(families.contains(each), qPrintable(each));
}

ZOMREL_QTEST_MAIN(FontRulesTest)
#include "font_rules_test.moc"
