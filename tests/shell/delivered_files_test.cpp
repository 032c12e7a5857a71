#include "shell/delivered_files.h"

#include "platform/report/font_substitutes.h"
#include "support/widgets.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

/// Returns the path of an installed font file that Qt loads, or an empty text if the machine has
/// none.
QString anInstalledFont()
{
    QDirIterator files(u"/usr/share/fonts"_s, {u"*.ttf"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const int font = QFontDatabase::addApplicationFont(path);
        if (font >= 0 && QFontDatabase::removeApplicationFont(font))
            return path;
    }
    return {};
}

QString pathOfQtsTexts(const QString& name)
{
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath) + u'/' + name;
}

} // namespace

class DeliveredFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void folderWithAFont_loadsItAndNoOtherFile();
    void damagedFontAndMissingFolder_loadNothing();
    void translationInTheFolder_isPreferred();
    void emptyFolderName_isNotTheCurrentFolder();
    void folderWithoutTranslation_takesThatOfQt();
};

void DeliveredFilesTest::folderWithAFont_loadsItAndNoOtherFile()
{
    const QString font = anInstalledFont();
    if (font.isEmpty())
        QSKIP("this machine has no font file");
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(font, folder.filePath(u"one.ttf"_s)));
    QVERIFY(QFile::copy(font, folder.filePath(u"one.txt"_s)));
    QCOMPARE(report::loadFonts(folder.path()), 1);
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void DeliveredFilesTest::damagedFontAndMissingFolder_loadNothing()
{
    const QTemporaryDir folder;
    QFile damaged(folder.filePath(u"damaged.ttf"_s));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write("no font");
    damaged.close();
    QCOMPARE(report::loadFonts(folder.path()), 0);
    QCOMPARE(report::loadFonts(folder.filePath(u"missing"_s)), 0);
}

/// The folder contains the Arabic texts of Qt under the Hebrew name, so that the two differ.
void DeliveredFilesTest::translationInTheFolder_isPreferred()
{
    const QString arabic = pathOfQtsTexts(u"qtbase_ar.qm"_s);
    if (!QFile::exists(arabic))
        QSKIP("this machine has no other translation");
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(arabic, folder.filePath(u"qtbase_he.qm"_s)));
    QTranslator translator;
    QVERIFY(shell::loadToolkitTranslation(translator, folder.path()));
    QCOMPARE(translator.language(), u"ar"_s);
}

void DeliveredFilesTest::emptyFolderName_isNotTheCurrentFolder()
{
    const QString arabic = pathOfQtsTexts(u"qtbase_ar.qm"_s);
    if (!QFile::exists(arabic))
        QSKIP("this machine has no other translation");
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(arabic, folder.filePath(u"qtbase_he.qm"_s)));
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    QTranslator translator;
    shell::loadToolkitTranslation(translator, QString());
    QVERIFY(QDir::setCurrent(former));
    QVERIFY(translator.language() != u"ar"_s);
}

void DeliveredFilesTest::folderWithoutTranslation_takesThatOfQt()
{
    if (!QFile::exists(pathOfQtsTexts(u"qtbase_he.qm"_s)))
        QSKIP("this machine has no Hebrew texts of Qt");
    const QTemporaryDir folder;
    QTranslator translator;
    QVERIFY(shell::loadToolkitTranslation(translator, folder.path()));
    QCOMPARE(translator.translate("QPlatformTheme", "Cancel"), u"ביטול"_s);
}

ZOMREL_QTEST_MAIN(DeliveredFilesTest)
#include "delivered_files_test.moc"
