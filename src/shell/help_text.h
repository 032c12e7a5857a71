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
    /// The names under which links lead to this chapter, and the headings to which they lead.
    QMap<QString, QString> headings;
};

/// Returns the user manual that is embedded in the program.
QString manualText();

/// Returns the chapters of the manual in one language. The help window shows Markdown only, so the
/// few HTML elements of the manual become Markdown and direction marks. The last chapter is about
/// the program itself and begins with the version.
QList<HelpChapter> helpChapters(const QString& manual, HelpLanguage language);

} // namespace shell
