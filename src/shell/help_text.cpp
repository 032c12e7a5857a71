#include "shell/help_text.h"

#include "platform/runtime/version.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

const QRegularExpression& anchorPattern()
{
    static const QRegularExpression pattern(u"<a id=\"([^\"]+)\"></a>"_s);
    return pattern;
}

/// Converts the HTML elements in a text of the manual: elements that set a reading direction become
/// direction marks, and preformatted elements become code blocks.
QString withoutHtml(QString text)
{
    constexpr auto acrossLines = QRegularExpression::DotMatchesEverythingOption;
    static const QRegularExpression leftToRight(u"<span dir=\"ltr\">(.*?)</span>"_s, acrossLines);
    static const QRegularExpression rightToLeft(u"<span dir=\"rtl\"[^>]*>(.*?)</span>"_s,
                                                acrossLines);
    static const QRegularExpression preformatted(u"<pre[^>]*>(.*?)</pre>"_s, acrossLines);
    static const QRegularExpression division(u"</?div[^>]*>"_s);
    text.replace(leftToRight, u"\u200e\\1\u200e"_s);
    text.replace(rightToLeft, u"\u200f\\1\u200f"_s);
    text.replace(preformatted, u"```\n\\1\n```"_s);
    text.remove(division);
    text.remove(anchorPattern());
    return text.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s).replace(u"&amp;"_s, u"&"_s);
}

/// Reverses the order of the cells in all table rows. Qt does not lay out tables from right to
/// left, so the first column of a Hebrew table must come last in order to appear at the right.
QString withMirroredTables(const QString& markdown)
{
    QStringList lines = markdown.split(u'\n');
    for (QString& line : lines) {
        if (!line.startsWith(u"| "_s) && !line.startsWith(u"|-"_s))
            continue;
        QStringList cells = line.mid(1).chopped(1).split(u'|');
        std::reverse(cells.begin(), cells.end());
        line = u'|' + cells.join(u'|') + u'|';
    }
    return lines.join(u'\n');
}

/// Returns the headings in a chapter's text that have an HTML anchor, as a map from anchor names to
/// headings. The first line of the text is the chapter's title.
QMap<QString, QString> headingsIn(const QString& text)
{
    static const QRegularExpression heading(u"^(?:#+ )?"_s + anchorPattern().pattern() + u"(.*)$"_s,
                                            QRegularExpression::MultilineOption);
    QMap<QString, QString> headings;
    for (auto match = heading.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        headings.insert(found.captured(1), withoutHtml(found.captured(2)).trimmed());
    }
    return headings;
}

QString versionLine(HelpLanguage language)
{
    const QString version = runtime::programVersion().toString();
    return (language == HelpLanguage::Hebrew ? u"**זומרל, גרסה \u2066%1\u2069**\n\n"_s
                                             : u"**Zomrel, version %1**\n\n"_s)
        .arg(version);
}

} // namespace

QString manualText()
{
    QFile file(u":/zomrel/help/manual.md"_s);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QList<HelpChapter> helpChapters(const QString& manual, HelpLanguage language)
{
    // The Hebrew chapters come first in the manual. The English half begins with the anchor
    // "contents-en".
    QString half = manual.section(u"<a id=\"contents-en\"></a>"_s, int(language), int(language));
    QStringList parts = half.split(u"\n## "_s);
    parts.removeFirst(); // What stands before the first chapter is the list of chapters.
    QList<HelpChapter> chapters;
    for (const QString& part : parts) {
        HelpChapter chapter;
        chapter.headings = headingsIn(part);
        const QString plain = withoutHtml(part);
        chapter.title = plain.section(u'\n', 0, 0).trimmed();
        chapter.markdown = plain.section(u'\n', 1);
        if (language == HelpLanguage::Hebrew)
            chapter.markdown = withMirroredTables(chapter.markdown);
        chapters.append(chapter);
    }
    if (!chapters.isEmpty())
        chapters.last().markdown.prepend(versionLine(language));
    return chapters;
}

} // namespace shell
