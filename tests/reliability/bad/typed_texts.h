#pragma once

#include "platform/runtime/run_time_error.h"

#include <QLineEdit>
#include <QList>
#include <QString>

constexpr int correct = 0;

struct TypedText
{
    const char* name;
    QString text;
    int error; ///< What reading it as a measure raises.
    double value = 0;
};

/// Texts that no one means to type in a box for a number, one that is none in a box for a text.
inline QList<TypedText> typedTexts()
{
    using namespace Qt::StringLiterals;
    const int mismatch = runtime::TypeMismatch;
    return {
        {"empty", QString(), mismatch},
        {"blank", u"   "_s, mismatch},
        {"letters", u"abc"_s, mismatch},
        {"digit and letter", u"1a"_s, mismatch},
        {"Hebrew", u"אבג"_s, mismatch},
        {"Arabic-Indic digits", u"١٢"_s, mismatch},
        {"full-width digit", u"５"_s, mismatch},
        {"plus", u"+5"_s, correct, 5},
        {"minus", u"-5"_s, correct, -5},
        {"sign alone", u"-"_s, mismatch},
        {"sign behind", u"5-"_s, mismatch},
        {"two signs", u"--5"_s, mismatch},
        {"blanks around", u" 7 "_s, correct, 7},
        {"blank within", u"1 2"_s, mismatch},
        {"point", u"2.5"_s, correct, 2.5},
        {"exponent", u"1e2"_s, correct, 100},
        {"exponent alone", u"e5"_s, mismatch},
        {"too large", u"9e999"_s, runtime::Overflow},
        {"comma", u"1,5"_s, mismatch},
        {"left-to-right mark", u"\u200e5"_s, mismatch},
        {"right-to-left override", u"\u202e12"_s, mismatch},
        {"isolate", u"\u20665\u2069"_s, mismatch},
        {"quote", u"'"_s, mismatch},
        {"SQL", u"1';DROP TABLE Cuts--"_s, mismatch},
        {"infinity", u"inf"_s, mismatch},
        {"no number", u"nan"_s, mismatch},
        {"zero byte", u"5"_s + QChar(u'\0'), mismatch},
        {"line end", u"5\n"_s, mismatch},
    };
}

/// Past the box's own length, which a program may set and a user may not type.
inline void setWhole(QLineEdit& box, const QString& text)
{
    if (text.size() > box.maxLength())
        box.setMaxLength(static_cast<int>(text.size()));
    box.setText(text);
}
