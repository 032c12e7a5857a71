#include "shell/help_window.h"

#include "platform/controls/form.h"
#include "platform/controls/wheel_guard.h"
#include "platform/runtime/guard.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QTextBlock>
#include <QTextTable>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

// The following sizes are in device-independent pixels.
constexpr QSize usualSize(1000, 640);
constexpr int listWidth = 240;
constexpr int pictureMargin = 40;

/// Sets the reading direction of every paragraph and the borders and padding of tables, because
/// Markdown has no notation for them.
void setDirection(QTextDocument& document, Qt::LayoutDirection direction)
{
    QTextOption option = document.defaultTextOption();
    option.setTextDirection(direction);
    document.setDefaultTextOption(option);
    QTextBlockFormat paragraph;
    paragraph.setLayoutDirection(direction);
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(paragraph);
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr)
            continue;
        QTextTableFormat format = table->format();
        format.setBorderCollapse(true);
        format.setCellPadding(3);
        table->setFormat(format);
    }
}

/// Makes code blocks, which contain commands, read from left to right in both languages, and lets
/// their long lines wrap.
void setCodeLeftToRight(QTextDocument& document)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (!block.blockFormat().hasProperty(QTextFormat::BlockCodeFence))
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.setLayoutDirection(Qt::LeftToRight);
        format.setNonBreakableLines(false);
        QTextCursor(block).setBlockFormat(format);
    }
}

/// Makes headings the targets of links, because Markdown has no notation for link targets.
void setAnchors(QTextDocument& document, const QMap<QString, QString>& headings)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString anchor = headings.key(block.text());
        if (anchor.isEmpty() || block.blockFormat().headingLevel() == 0)
            continue;
        QTextCharFormat target;
        target.setAnchor(true);
        target.setAnchorNames({anchor});
        QTextCursor heading(block);
        heading.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        heading.mergeCharFormat(target);
    }
}

} // namespace

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent)
{
    setObjectName(u"TextHelp"_s);
    setOpenLinks(false);
}

void HelpBrowser::showChapter(const HelpChapter& chapter, Qt::LayoutDirection direction)
{
    setLayoutDirection(direction);
    document()->setBaseUrl(QUrl(u"qrc:/zomrel/help/"_s));
    setMarkdown(u"## %1\n%2"_s.arg(chapter.title, chapter.markdown));
    setDirection(*document(), direction);
    setCodeLeftToRight(*document());
    setAnchors(*document(), chapter.headings);
    moveCursor(QTextCursor::Start);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource)
        return resource;
    const QUrl absolute = document()->baseUrl().resolved(name);
    const QImage picture(u':' + absolute.path());
    const int room = std::max(viewport()->width() - pictureMargin, pictureMargin);
    if (picture.width() <= room)
        return picture;
    // The reduced picture has one pixel for each device pixel of the screen, but not more pixels
    // than the original picture.
    const double ratio = std::min(devicePixelRatioF(), double(picture.width()) / room);
    QImage reduced = picture.scaledToWidth(qRound(room * ratio), Qt::SmoothTransformation);
    reduced.setDevicePixelRatio(ratio);
    return reduced;
}

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent, Qt::Window), ComboLanguage(new QComboBox(this)),
      ListChapters(new QListWidget(this)), TextHelp(new HelpBrowser(this))
{
    setObjectName(u"HelpWindow"_s);
    setWindowTitle(u"עזרה · Help"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    layOut();
    controls::guardFromWheel(*ComboLanguage);
    ComboLanguage->addItems({u"עברית"_s, u"English"_s});
    runtime::on(ComboLanguage, &QComboBox::currentIndexChanged, this,
                [this](int index) { setLanguage(HelpLanguage(index)); });
    runtime::on(ListChapters, &QListWidget::currentRowChanged, this,
                [this](int row) { showChapter(row); });
    runtime::on(TextHelp, &QTextBrowser::anchorClicked, this,
                [this](const QUrl& link) { follow(link); });
    resize(usualSize.boundedTo(controls::roomOnScreen(*this)));
    setLanguage(HelpLanguage::Hebrew);
}

void HelpWindow::layOut()
{
    setLayoutDirection(Qt::RightToLeft);
    ComboLanguage->setObjectName(u"ComboLanguage"_s);
    ComboLanguage->setAccessibleName(u"שפה · Language"_s);
    ListChapters->setObjectName(u"ListChapters"_s);
    ListChapters->setAccessibleName(u"פרקים · Chapters"_s);
    ListChapters->setWordWrap(true);
    ListChapters->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    TextHelp->setAccessibleName(windowTitle());
    auto* side = new QVBoxLayout;
    side->addWidget(ComboLanguage);
    side->addWidget(ListChapters);
    ListChapters->setFixedWidth(listWidth);
    auto* whole = new QHBoxLayout(this);
    whole->addLayout(side);
    whole->addWidget(TextHelp, 1);
}

/// Shows the manual in the given language, at the chapter that was shown before in the other
/// language.
void HelpWindow::setLanguage(HelpLanguage language)
{
    const int former = std::max(ListChapters->currentRow(), 0);
    direction_ = language == HelpLanguage::Hebrew ? Qt::RightToLeft : Qt::LeftToRight;
    chapters_ = helpChapters(manualText(), language);
    ListChapters->clear();
    ListChapters->setLayoutDirection(direction_);
    for (const HelpChapter& each : chapters_)
        ListChapters->addItem(each.title);
    ListChapters->setCurrentRow(former);
}

void HelpWindow::showChapter(int index)
{
    if (index >= 0 && index < chapters_.size())
        TextHelp->showChapter(chapters_[index], direction_);
}

void HelpWindow::follow(const QUrl& link)
{
    const auto target =
        std::find_if(chapters_.begin(), chapters_.end(), [&](const HelpChapter& each) {
            return each.headings.contains(link.fragment());
        });
    if (target == chapters_.end())
        return;
    ListChapters->setCurrentRow(int(target - chapters_.begin()));
    TextHelp->scrollToAnchor(link.fragment());
}

} // namespace shell
