#pragma once

#include <QList>
#include <QMap>
#include <QString>

namespace shell {

enum class HelpLanguage { Hebrew, English };

struct HelpChapter
{
    QString title;
    QString markdown; ///< The text without the title.
    /// The headings in this chapter that have an HTML anchor, by the name of the anchor.
    QMap<QString, QString> headings;
};

/// Returns the user manual that is embedded in the program.
QString manualText();

/// Returns the chapters of the manual in one language. The help window shows Markdown only, so the
/// few HTML elements of the manual are converted to Markdown and direction marks. The last chapter
/// is about the program itself and begins with the program's version.
QList<HelpChapter> helpChapters(const QString& manual, HelpLanguage language);

} // namespace shell
