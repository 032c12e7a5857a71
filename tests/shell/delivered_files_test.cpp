#include "shell/delivered_files.h"

#include "platform/report/font_substitutes.h"
#include "platform/runtime/library_paths.h"
#include "support/widgets.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QTranslator>

#include <memory>

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

void letOthersWriteTo(const QString& folder)
{
    QVERIFY(QFile::setPermissions(folder, QFile::permissions(folder) | QFile::WriteOther));
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
    void init();
    void folderWithAFont_loadsItAndNoOtherFile();
    void fontsThatOthersCanReplace_areNotLoaded();
    void damagedFontAndMissingFolder_loadNothing();
    void translationInTheFolder_isPreferred();
    void translationThatOthersCanReplace_isNotLoaded();
    void emptyFolderName_isNotTheCurrentFolder();
    void folderWithoutTranslation_takesThatOfQt();

private:
    std::unique_ptr<QTemporaryDir> folder_;
};

void DeliveredFilesTest::init()
{
    folder_ = std::make_unique<QTemporaryDir>();
    if (!runtime::isTrustedFolder(folder_->path()))
        QSKIP("this machine has no temporary folder that only this user can change");
}

void DeliveredFilesTest::folderWithAFont_loadsItAndNoOtherFile()
{
    const QString font = anInstalledFont();
    if (font.isEmpty())
        QSKIP("this machine has no font file");
    QVERIFY(QFile::copy(font, folder_->filePath(u"one.ttf"_s)));
    QVERIFY(QFile::copy(font, folder_->filePath(u"one.txt"_s)));
    QCOMPARE(report::loadFonts(folder_->path()), 1);
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void DeliveredFilesTest::damagedFontAndMissingFolder_loadNothing()
{
    QFile damaged(folder_->filePath(u"damaged.ttf"_s));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write("no font");
    damaged.close();
    QCOMPARE(report::loadFonts(folder_->path()), 0);
    QCOMPARE(report::loadFonts(folder_->filePath(u"missing"_s)), 0);
}

void DeliveredFilesTest::fontsThatOthersCanReplace_areNotLoaded()
{
    const QString font = anInstalledFont();
    if (font.isEmpty())
        QSKIP("this machine has no font file");
    QVERIFY(QFile::copy(font, folder_->filePath(u"one.ttf"_s)));
    letOthersWriteTo(folder_->path());
    QCOMPARE(report::loadFonts(folder_->path()), 0);
}

/// The folder contains the Arabic texts of Qt under the Hebrew name, so that the two differ.
void DeliveredFilesTest::translationInTheFolder_isPreferred()
{
    const QString arabic = pathOfQtsTexts(u"qtbase_ar.qm"_s);
    if (!QFile::exists(arabic))
        QSKIP("this machine has no other translation");
    QVERIFY(QFile::copy(arabic, folder_->filePath(u"qtbase_he.qm"_s)));
    QTranslator translator;
    QVERIFY(shell::loadToolkitTranslation(translator, folder_->path()));
    QCOMPARE(translator.language(), u"ar"_s);
}

void DeliveredFilesTest::translationThatOthersCanReplace_isNotLoaded()
{
    const QString arabic = pathOfQtsTexts(u"qtbase_ar.qm"_s);
    if (!QFile::exists(arabic))
        QSKIP("this machine has no other translation");
    QVERIFY(QFile::copy(arabic, folder_->filePath(u"qtbase_he.qm"_s)));
    letOthersWriteTo(folder_->path());
    QTranslator translator;
    shell::loadToolkitTranslation(translator, folder_->path());
    QVERIFY(translator.language() != u"ar"_s);
}

void DeliveredFilesTest::emptyFolderName_isNotTheCurrentFolder()
{
    const QString arabic = pathOfQtsTexts(u"qtbase_ar.qm"_s);
    if (!QFile::exists(arabic))
        QSKIP("this machine has no other translation");
    QVERIFY(QFile::copy(arabic, folder_->filePath(u"qtbase_he.qm"_s)));
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder_->path()));
    QTranslator translator;
    shell::loadToolkitTranslation(translator, QString());
    QVERIFY(QDir::setCurrent(former));
    QVERIFY(translator.language() != u"ar"_s);
}

void DeliveredFilesTest::folderWithoutTranslation_takesThatOfQt()
{
    if (!QFile::exists(pathOfQtsTexts(u"qtbase_he.qm"_s)))
        QSKIP("this machine has no Hebrew texts of Qt");
    QTranslator translator;
    QVERIFY(shell::loadToolkitTranslation(translator, folder_->path()));
    QCOMPARE(translator.translate("QPlatformTheme", "Cancel"), u"ביטול"_s);
}

ZOMREL_QTEST_MAIN(DeliveredFilesTest)
#include "delivered_files_test.moc"
