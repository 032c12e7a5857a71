#pragma once

#include "platform/runtime/run_time_error.h"
#include "support/throwaway_server.h"

#include <QLineEdit>
#include <QList>
#include <QString>

constexpr int correct = 0;

struct TypedText
{
    const char* name;
    QString text;
    int error; ///< The error that reading the text as a measure throws.
    double value = 0;

    bool operator==(const TypedText& other) const { return text == other.text; }
};

/// Unusual texts for number boxes and, as texts, for text boxes.
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
        {"Hebrew digits", u"ט״ו"_s, mismatch},
        {"geresh", u"5׳"_s, mismatch},
        {"niqqud", u"5\u05b0"_s, mismatch},
        {"Persian digit", u"۵"_s, mismatch},
        {"fraction", u"½"_s, mismatch},
        {"plus alone", u"+"_s, mismatch},
        {"plus and minus", u"+-2"_s, mismatch},
        {"minus of typography", u"\u22125"_s, mismatch},
        {"dash", u"\u20135"_s, mismatch},
        {"thousand by exponent", u"1e3"_s, correct, 1000},
        {"exponent too large", u"1e400"_s, runtime::Overflow},
        {"vanishing", u"1e-400"_s, correct, 0},
        {"exponent cut off", u"1e"_s, mismatch},
        {"thousands", u"1,000"_s, mismatch},
        {"thousands and comma", u"1.234,5"_s, mismatch},
        {"thousands by quote", u"1'000"_s, mismatch},
        {"Arabic decimal sign", u"1\u066b5"_s, mismatch},
        {"two points", u"1.2.3"_s, mismatch},
        {"point alone", u"."_s, mismatch},
        {"right-to-left mark", u"\u200f5"_s, mismatch},
        {"Arabic letter mark", u"5\u061c"_s, mismatch},
        {"left-to-right embedding", u"\u202a5\u202c"_s, mismatch},
        {"right-to-left embedding", u"\u202b5\u202c"_s, mismatch},
        {"left-to-right override", u"\u202d5\u202c"_s, mismatch},
        {"right-to-left isolate", u"\u20675\u2069"_s, mismatch},
        {"first strong isolate", u"\u20685\u2069"_s, mismatch},
        {"byte order mark", u"5\ufeff"_s, mismatch},
        {"zero-width blank", u"5\u200b"_s, mismatch},
        {"non-breaking blank", u"\u00a05"_s, mismatch},
        {"non-breaking blank alone", u"\u00a0"_s, mismatch},
        {"thin blank", u"5\u2009"_s, mismatch},
        {"zero byte alone", QString(QChar(u'\0')), mismatch},
        {"emoji", u"😀"_s, mismatch},
        {"half an emoji", QString(QChar(0xd83d)), mismatch},
        {"half an emoji within", u'a' + QString(QChar(0xd83d)) + u"bc"_s, mismatch},
        {"backslash and signs", u"\\%_*?[#]"_s, mismatch},
    };
}

/// Returns the text as a field stores it: an unpaired surrogate becomes a question mark.
inline QString keptText(QString typed)
{
    const bool isHalf = typed.count(QChar(0xd83d)) > typed.count(QChar(0xde00));
    return isHalf ? typed.replace(QChar(0xd83d), u'?') : typed;
}

/// Returns the texts for a number box. On a server only texts that reach the store are tried;
/// letters represent all texts that are rejected earlier.
inline QList<TypedText> typedNumbers()
{
    QList<TypedText> all = typedTexts();
    if (testsupport::isOnServer())
        all.removeIf([](const TypedText& each) {
            return each.error == runtime::TypeMismatch && QByteArrayView(each.name) != "letters";
        });
    return all;
}

/// Returns the error of storing the text in a text field. A server rejects a zero byte.
inline int storingError(const TypedText& typed)
{
    const bool isRefused = testsupport::isOnServer() && typed.text.contains(QChar(u'\0'));
    return isRefused ? int{runtime::DataTypeConversion} : correct;
}

/// Sets a text that may exceed the box's maximum length, which code can do but a user cannot.
inline void setWhole(QLineEdit& box, const QString& text)
{
    if (text.size() > box.maxLength())
        box.setMaxLength(static_cast<int>(text.size()));
    box.setText(text);
}
