#pragma once

#include "tools/store/words.h"

/// Texts that several files use.
namespace storetools {

inline constexpr Text alreadyExists{u"Database '%1' already exists.",
                                    u"כבר יש קובץ או מסד בשם '%1'."};
inline constexpr Text couldNotRead{u"Could not read '%1': %2", u"אי אפשר לקרוא את '%1': %2"};
inline constexpr Text couldNotWrite{u"Could not write '%1': %2", u"אי אפשר לכתוב את '%1': %2"};
inline constexpr Text differsWhenRead{u"%1 does not read back as it was written.",
                                      u"הטבלה %1 נקראת אחרת ממה שנכתב."};
inline constexpr Text readingBack{u"reading back %1", u"בדיקה של %1"};
inline constexpr Text ofField{u"%1: %2", u"השדה %1: %2"};
inline constexpr Text fieldIsMissing{u"%1: the field is missing", u"השדה %1 חסר"};
inline constexpr Text tableIsMissing{u"%1: the table is missing", u"הטבלה %1 חסרה"};
inline constexpr Text hasNoKey{u"has no %1", u"חסר %1"};
inline constexpr Text cannotBeRead{u"%1 cannot be read", u"אי אפשר לקרוא את %1"};
inline constexpr Text textIsTooLong{u"%1 has %2 characters and takes %3",
                                    u"ב-%1 יש %2 תווים, והמקום הוא ל-%3"};
inline constexpr Text hasToLieBetween{u"%1 has to lie between %2 and %3",
                                      u"%1 צריך להיות בין %2 ל-%3"};
inline constexpr Text backedUp{u"backed up %1 to %2", u"%1 גובה אל %2"};
inline constexpr Text takes{u"%1 takes %2", u"אחרי %1 כותבים %2"};
inline constexpr Text acceptUnsafeServer{u"accept a server that may lose stored rows",
                                         u"להסכים לשרת שעלול לאבד שורות"};
inline constexpr Text checkTheDisk{u"Check the disk and run the command again.",
                                   u"בדוק את הדיסק והרץ את הפקודה שוב."};

/// Returns the name of a field as findings show it: the name of the table, a dot and the name of
/// the field.
inline QString fieldOf(const QString& table, const QString& field)
{
    return table + u'.' + field;
}

/// Returns the text of a finding about the whole file of a store, or about the whole database if
/// the store is on a server.
inline QString ofWhole(bool isOnServer, const QString& finding)
{
    return isOnServer ? say({u"server: %1", u"שרת: %1"}, Phrase{finding})
                      : say({u"file: %1", u"קובץ: %1"}, Phrase{finding});
}

/// Returns the text of a finding about one row of a table. The text contains the row's key, or the
/// row's position if the key is empty.
inline QString ofRow(const QString& table, const QString& key, qint64 position,
                     const QString& finding)
{
    if (!key.isEmpty())
        return say({u"%1: %2", u"ברשומה %1: %2"}, QString(table + QStringLiteral(", ") + key),
                   Phrase{finding});
    return say({u"%1, row %2: %3", u"%1, רשומה מספר %2: %3"}, table, position, Phrase{finding});
}

} // namespace storetools
