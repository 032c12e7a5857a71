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

/// Splits the manual into the chapters of one language. The few HTML elements of the manual become
/// Markdown and direction marks, because the help window shows Markdown only. The last chapter, on
/// the program itself, begins with the version.
QList<HelpChapter> helpChapters(const QString& manual, HelpLanguage language);

} // namespace shell
