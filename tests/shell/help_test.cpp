#include "shell/help_key.h"
#include "shell/help_text.h"
#include "shell/help_window.h"

#include "platform/runtime/version.h"
#include "support/widgets.h"

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>

#include <optional>

using namespace Qt::StringLiterals;
using shell::HelpChapter;
using shell::helpChapters;
using shell::HelpLanguage;
using shell::HelpWindow;
using shell::manualText;
using testsupport::child;

class HelpTest : public QObject
{
    Q_OBJECT

private slots:
    void bothLanguages_haveTheSameChapters();
    void chapters_containNoHtml();
    void everyLink_leadsToAChapter();
    void lastChapter_tellsTheVersionAndTheLicences();
    void window_showsPicturesThatFit();
    void hebrewTables_readFromRightToLeft();
    void link_changesTheChapter();
    void clickOnALink_scrollsToItsHeading();
    void linkWithinTheChapter_scrollsToItsHeading();
    void everyAnchor_isAtAHeadingOfItsChapter();
    void language_keepsTheChapter();
    void f1_opensTheHelpAboveAModalForm();
    void escape_closesTheHelp();
};

namespace {

const QList<HelpLanguage> languages{HelpLanguage::Hebrew, HelpLanguage::English};

HelpWindow* openHelp()
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        auto* help = qobject_cast<HelpWindow*>(each);
        if (help != nullptr && help->isVisible())
            return help;
    }
    return nullptr;
}

/// Returns the place of the first link to the target, after the text has scrolled to it.
QPoint placeOfLink(QTextBrowser& text, const QString& target)
{
    for (QTextBlock block = text.document()->begin(); block.isValid(); block = block.next()) {
        for (auto each = block.begin(); !each.atEnd(); ++each) {
            if (each.fragment().charFormat().anchorHref() != target)
                continue;
            QTextCursor cursor(text.document());
            cursor.setPosition(each.fragment().position() + 1);
            text.setTextCursor(cursor);
            text.ensureCursorVisible();
            const QPoint before = text.cursorRect().center();
            cursor.movePosition(QTextCursor::NextCharacter);
            return (before + text.cursorRect(cursor).center()) / 2;
        }
    }
    return {};
}

/// Returns the distance of a heading from the upper edge of the view.
std::optional<int> topOfHeading(const QTextBrowser& text, const QString& beginning)
{
    for (QTextBlock block = text.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && block.text().contains(beginning))
            return text.cursorRect(QTextCursor(block)).top();
    }
    return {};
}

constexpr int nearTheTop = 60; // Device-independent pixels; less than three lines.

bool isAtTheTop(const QTextBrowser& text, const QString& heading)
{
    return std::abs(topOfHeading(text, heading).value_or(nearTheTop)) < nearTheTop;
}

} // namespace

void HelpTest::bothLanguages_haveTheSameChapters()
{
    const auto hebrew = helpChapters(manualText(), HelpLanguage::Hebrew);
    const auto english = helpChapters(manualText(), HelpLanguage::English);
    QCOMPARE(hebrew.size(), 12);
    QCOMPARE(english.size(), 12);
    for (qsizetype i = 0; i < hebrew.size(); ++i) {
        QVERIFY(hebrew[i].title.startsWith(u"%1. "_s.arg(i + 1)));
        QVERIFY(english[i].title.startsWith(u"%1. "_s.arg(i + 1)));
    }
}

void HelpTest::chapters_containNoHtml()
{
    static const QRegularExpression element(u"</?(span|div|pre|a)\\b"_s);
    for (const HelpLanguage language : languages) {
        for (const HelpChapter& each : helpChapters(manualText(), language))
            QVERIFY2(!each.markdown.contains(element), qPrintable(each.title));
    }
}

void HelpTest::everyLink_leadsToAChapter()
{
    static const QRegularExpression link(u"\\]\\(#([^)]+)\\)"_s);
    for (const HelpLanguage language : languages) {
        const auto chapters = helpChapters(manualText(), language);
        QStringList anchors;
        for (const HelpChapter& each : chapters)
            anchors += each.headings.keys();
        int links = 0;
        for (const HelpChapter& each : chapters) {
            for (auto match = link.globalMatch(each.markdown); match.hasNext(); ++links) {
                const QString target = match.next().captured(1);
                QVERIFY2(anchors.contains(target), qPrintable(target));
            }
        }
        QVERIFY(links > 5);
    }
}

void HelpTest::lastChapter_tellsTheVersionAndTheLicences()
{
    for (const HelpLanguage language : languages) {
        const QString about = helpChapters(manualText(), language).last().markdown;
        QVERIFY(about.contains(runtime::programVersion().toString()));
        for (const QString& part : {u"Qt 6"_s, u"SQLite"_s, u"LGPL-3"_s, u"OFL"_s})
            QVERIFY2(about.contains(part), qPrintable(part));
    }
}

void HelpTest::window_showsPicturesThatFit()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    help.show();
    auto* text = child<shell::HelpBrowser>(help, u"TextHelp"_s);
    const QImage picture =
        text->loadResource(QTextDocument::ImageResource, QUrl(u"order-form.png"_s)).value<QImage>();
    QVERIFY(!picture.isNull());
    QVERIFY(picture.width() <= text->viewport()->width());
    QTRY_VERIFY(text->document()->size().width() <= text->viewport()->width());
}

/// A table is always laid out from the left, so the first column of the manual is the last one.
void HelpTest::hebrewTables_readFromRightToLeft()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    child<QListWidget>(help, u"ListChapters"_s)->setCurrentRow(11);
    const auto* text = child<shell::HelpBrowser>(help, u"TextHelp"_s);
    QTextTable* table = nullptr;
    for (QTextFrame* frame : text->document()->rootFrame()->childFrames())
        table = table != nullptr ? table : qobject_cast<QTextTable*>(frame);
    QVERIFY(table != nullptr);
    QCOMPARE(table->columns(), 3);
    QCOMPARE(table->cellAt(1, 2).firstCursorPosition().block().text(), u"Qt 6"_s);
}

void HelpTest::link_changesTheChapter()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    auto* text = child<shell::HelpBrowser>(help, u"TextHelp"_s);
    emit text->anchorClicked(QUrl(u"#paper-he"_s));
    QCOMPARE(child<QListWidget>(help, u"ListChapters"_s)->currentRow(), 5);
    QVERIFY(text->toPlainText().startsWith(u"6. "_s));
}

void HelpTest::clickOnALink_scrollsToItsHeading()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    help.show();
    QVERIFY(QTest::qWaitForWindowActive(&help));
    auto* chapters = child<QListWidget>(help, u"ListChapters"_s);
    chapters->setCurrentRow(4);
    auto* text = child<shell::HelpBrowser>(help, u"TextHelp"_s);
    const QPoint place = placeOfLink(*text, u"#runtime-he"_s);
    QVERIFY(!place.isNull());
    QTest::mouseClick(text->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(chapters->currentRow(), 8);
    QVERIFY(isAtTheTop(*text, u"Run-time error"_s));
    QVERIFY(text->verticalScrollBar()->value() > text->viewport()->height());
}

void HelpTest::linkWithinTheChapter_scrollsToItsHeading()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    help.show();
    QVERIFY(QTest::qWaitForWindowActive(&help));
    child<QComboBox>(help, u"ComboLanguage"_s)->setCurrentIndex(1);
    child<QListWidget>(help, u"ListChapters"_s)->setCurrentRow(8);
    auto* text = child<shell::HelpBrowser>(help, u"TextHelp"_s);
    emit text->anchorClicked(QUrl(u"#runtime-en"_s));
    QVERIFY(isAtTheTop(*text, u"Run-time error"_s));
    QVERIFY(text->verticalScrollBar()->value() > text->viewport()->height());
    emit text->anchorClicked(QUrl(u"#messages-en"_s));
    QVERIFY(text->verticalScrollBar()->value() < nearTheTop);
}

void HelpTest::everyAnchor_isAtAHeadingOfItsChapter()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    const auto* text = child<shell::HelpBrowser>(help, u"TextHelp"_s);
    for (const HelpLanguage language : languages) {
        child<QComboBox>(help, u"ComboLanguage"_s)->setCurrentIndex(int(language));
        const auto chapters = helpChapters(manualText(), language);
        for (qsizetype i = 0; i < chapters.size(); ++i) {
            child<QListWidget>(help, u"ListChapters"_s)->setCurrentRow(int(i));
            QVERIFY2(!chapters[i].headings.isEmpty(), qPrintable(chapters[i].title));
            for (const QString& heading : chapters[i].headings)
                QVERIFY2(topOfHeading(*text, heading), qPrintable(heading));
        }
    }
}

void HelpTest::language_keepsTheChapter()
{
    HelpWindow help;
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    child<QListWidget>(help, u"ListChapters"_s)->setCurrentRow(7);
    child<QComboBox>(help, u"ComboLanguage"_s)->setCurrentIndex(1);
    QVERIFY(child<shell::HelpBrowser>(help, u"TextHelp"_s)
                ->toPlainText()
                .startsWith(u"8. Backup and restore"_s));
}

void HelpTest::f1_opensTheHelpAboveAModalForm()
{
    shell::HelpKey key;
    QApplication::instance()->installEventFilter(&key);
    QDialog form;
    form.setModal(true);
    form.show();
    QTest::keyClick(&form, Qt::Key_F1);
    QTRY_VERIFY(openHelp() != nullptr);
    QCOMPARE(openHelp()->parentWidget(), &form);
    QTest::keyClick(&form, Qt::Key_F1);
    QCOMPARE(form.findChildren<HelpWindow*>().size(), 1);
}

void HelpTest::escape_closesTheHelp()
{
    shell::HelpKey key;
    QApplication::instance()->installEventFilter(&key);
    QWidget window;
    window.show();
    QTest::keyClick(&window, Qt::Key_F1);
    QTRY_VERIFY(openHelp() != nullptr);
    QTest::keyClick(openHelp(), Qt::Key_Escape);
    QTRY_VERIFY(openHelp() == nullptr);
}

ZOMREL_QTEST_MAIN(HelpTest)
#include "help_test.moc"
