#pragma once

#include "tools/store/language.h"
#include "tools/store/words.h"

#include <QString>

#include <algorithm>

namespace storetooltest {

/// Messages that are made in this process are Hebrew as long as this object lives.
class InHebrew
{
public:
    InHebrew() { storetools::setLanguage(storetools::Language::Hebrew); }
    ~InHebrew() { storetools::setLanguage(storetools::Language::English); }
    InHebrew(const InHebrew&) = delete;
    InHebrew& operator=(const InHebrew&) = delete;
};

inline bool hasHebrew(const QString& text)
{
    return std::ranges::any_of(
        text, [](QChar each) { return storetools::isHebrewLetter(each.unicode()); });
}

/// Returns the Latin letters of a text that are not isolated. A message in English has all of its
/// letters here, one in Hebrew has none.
inline QString bareLatin(const QString& text)
{
    QString bare;
    int depth = 0;
    for (const QChar each : text) {
        if (each == QChar(u'\u2066'))
            ++depth;
        else if (each == QChar(u'\u2069'))
            --depth;
        else if (depth == 0 && each.unicode() < 128 && each.isLetter())
            bare += each;
    }
    return depth == 0 ? bare : QStringLiteral("unbalanced isolation");
}

} // namespace storetooltest
