#include "tools/store/engine_words.h"

#include "tools/store/language.h"
#include "tools/store/words.h"

#include <QRegularExpression>

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// An English text of a database engine and its Hebrew translation. In the English text, the
/// placeholders appear in the order %1, %2 and so on.
struct EngineText
{
    Text text;
    /// True if the text ends with a placeholder for a reason. The reason may be another English
    /// text of the engine; it is then translated as well.
    bool endsWithReason = false;
};

constexpr std::array findingTexts{
    EngineText{{u"index '%1' is not valid", u"האינדקס %1 אינו תקין"}},
    EngineText{{u"table '%1' has no column %2", u"בטבלה %1 חסרה העמודה %2"}},
    EngineText{{u"the view '%1' is not the program's", u"התצוגה %1 אינה של התוכנית"}},
    EngineText{{u"the trigger '%1' of %2 is not as the program makes it",
                u"הטריגר %1 של %2 אינו כפי שהתוכנית יוצרת אותו"}},
    EngineText{{u"the rule '%1' of %2 is not as the program makes it",
                u"הכלל %1 של %2 אינו כפי שהתוכנית יוצרת אותו"}},
    EngineText{{u"the view '%1' is not as the program makes it", u"התצוגה %1 אינה של התוכנית"}},
    EngineText{{u"the constraint '%1' of %2 is not as the program makes it",
                u"האילוץ %1 של %2 אינו כפי שהתוכנית יוצרת אותו"}},
    EngineText{{u"the policy '%1' of %2 is not as the program makes it",
                u"הגבלת הגישה %1 של %2 אינה של התוכנית"}},
    EngineText{{u"the index '%1' of %2 is not as the program makes it",
                u"האינדקס %1 של %2 אינו כפי שהתוכנית יוצרת אותו"}},
    EngineText{{u"the table %1 has a clause that the program does not make",
                u"בהגדרה של הטבלה %1 יש תנאי שהתוכנית אינה כותבת"}},
    EngineText{
        {u"%1, Code %2: %3 has no valid value", u"בטבלה %1, רשומה %2: הערך של %3 אינו תקין"}},
    EngineText{{u"table '%1': %2", u"בטבלה %1: %2"}, true},
};

/// The findings of SQLite's integrity check, in SQLite's own wording.
constexpr std::array integrityTexts{
    EngineText{{u"NULL value in %1", u"%1 ריק, ואסור שיהיה ריק"}},
    EngineText{{u"NUMERIC value in %1", u"ב-%1 שמור מספר במקום טקסט"}},
    EngineText{{u"TEXT value in %1", u"ב-%1 שמור טקסט במקום מספר"}},
    EngineText{{u"non-%1 value in %2", u"הסוג של הערך ב-%2 אינו %1"}},
    EngineText{{u"CHECK constraint failed in %1", u"רשומה בטבלה %1 אינה מקיימת את התנאי שלה"}},
    EngineText{{u"row %1 missing from index %2", u"רשומה מספר %1 חסרה באינדקס %2"}},
    EngineText{{u"wrong # of entries in index %1", u"מספר הרשומות באינדקס %1 שגוי"}},
    EngineText{{u"non-unique entry in index %1", u"באינדקס %1 יש ערך כפול"}},
};

constexpr std::array hazardTexts{
    EngineText{{u"fsync is off, so a power cut can lose stored rows",
                u"ההגדרה {fsync} כבויה, והפסקת חשמל עלולה לאבד שורות"}},
    EngineText{{u"full_page_writes is off, so a power cut can damage rows",
                u"ההגדרה {full_page_writes} כבויה, והפסקת חשמל עלולה לפגום בשורות"}},
    EngineText{{u"table '%1' is unlogged, so a crash empties it",
                u"הטבלה %1 היא {unlogged}, ונפילה של השרת מרוקנת אותה"}},
    EngineText{{u"data checksums are off, so damage on the disk is not noticed",
                u"סיכומי הביקורת ({data checksums}) כבויים, ולכן נזק בדיסק לא יתגלה"}},
};

constexpr std::array placeTexts{
    EngineText{{u"database '%1' on server '%2'", u"המסד '%1' בשרת '%2'"}},
    EngineText{{u"file '%1'", u"הקובץ '%1'"}},
};

constexpr std::array stationTexts{
    EngineText{{u"process %1 (%2) on this computer", u"תהליך %1 (%2) במחשב הזה"}},
    EngineText{
        {u"a program on another computer or of another user", u"תוכנית במחשב אחר או של משתמש אחר"}},
    EngineText{{u"a program on this or another computer", u"תוכנית במחשב הזה או במחשב אחר"}},
    EngineText{{u"role %1, address unknown or local", u"משתמש %1, כתובת לא ידועה או מקומית"}},
    EngineText{{u"role %1, address %2", u"משתמש %1, כתובת %2"}},
};

constexpr std::array errorsOfFiles{
    EngineText{{u"Could not find file '%1'.", u"הקובץ '%1' לא נמצא."}},
    EngineText{{u"Database '%1' already exists.", u"כבר יש קובץ או מסד בשם '%1'."}},
    EngineText{{u"Unrecognized database format 'database '%1' on server '%2''.",
                u"במסד '%1' בשרת '%2' אין נתונים של זומרל."}},
    EngineText{{u"Unrecognized database format '%1'.", u"'%1' אינו קובץ נתונים של זומרל."}},
    EngineText{{u"Could not write '%1': %2", u"אי אפשר לכתוב את '%1': %2"}, true},
    EngineText{{u"The store '%1' cannot be used: SQLite has set synchronous to %2, not to EXTRA "
                "(%3).",
                u"אי אפשר לעבוד עם '%1': ההגדרה {synchronous} של {SQLite} היא %2 ולא {EXTRA} "
                "(%3)."}},
    EngineText{{u"Table '%1' in file '%2' was not made as a store's table: it has no column %3.",
                u"הטבלה '%1' בקובץ '%2' לא נוצרה בידי זומרל: חסרה העמודה %3."}},
    EngineText{{u"%1, row %2: %3 cannot be read", u"בטבלה %1, רשומה מספר %2: אי אפשר לקרוא את %3"}},
    EngineText{{u"%1, %2: %3 cannot be read", u"בטבלה %1, %2: אי אפשר לקרוא את %3"}},
    EngineText{{u"%1, %2: %3 has %4 characters and takes %5",
                u"בטבלה %1, %2: ב-%3 יש %4 תווים, והמקום הוא ל-%5"}},
    EngineText{{u"has %1 characters and takes %2", u"%1 תווים, והמקום הוא ל-%2"}},
    EngineText{{u"The store was replaced or restored while the program was working with it. "
                "Nothing was written. Start the program again. (%1)",
                u"קובץ הנתונים הוחלף או שוחזר בזמן העבודה. לא נכתב דבר. הרץ את הפקודה שוב. "
                "(%1)"}},
};

constexpr std::array errorsOfServers{
    EngineText{{u"Connection to database '%1' on server '%2' as user '%3' failed: %4",
                u"אין קשר למסד '%1' בשרת '%2' עם המשתמש '%3': %4"}},
    EngineText{{u"Connection to database '%1' on server '%2' failed: it was lost at once",
                u"הקשר למסד '%1' בשרת '%2' נותק מיד"}},
    EngineText{{u"The connection to database '%1' on server '%2' was lost: %3",
                u"הקשר למסד '%1' בשרת '%2' נותק: %3"}},
    EngineText{{u"The encoding of database '%1' on server '%2' is %3; a store needs UTF8.",
                u"הקידוד של המסד '%1' בשרת '%2' הוא %3. צור מסד בקידוד {UTF8}."}},
    EngineText{{u"Table '%1' in database '%2' on server '%3' was not made as a store's table: it "
                "has no column %4.",
                u"הטבלה '%1' במסד '%2' בשרת '%3' לא נוצרה בידי זומרל: חסרה העמודה %4."}},
    EngineText{{u"There is no log of changes in database '%1' on server '%2'; zomrel-store "
                "server-setup prints the SQL that creates it.",
                u"במסד '%1' בשרת '%2' אין יומן שינויים. הפקודה {zomrel-store server-setup} מדפיסה "
                "את ה-{SQL} שיוצר אותו."}},
    EngineText{{u"Only a store on a server has a log of changes.",
                u"יומן שינויים יש רק לנתונים שנמצאים בשרת."}},
    EngineText{{u"A statement of the transaction has failed; nothing of it is kept.",
                u"אחת הפעולות נכשלה, ולא נשמר דבר."}},
};

constexpr std::array damagesOfLinks{
    EngineText{{u"The store link '%1' is damaged: %2.", u"הקישור '%1' פגום: %2."}, true},
    EngineText{{u"No store link can be made: %1.", u"אי אפשר ליצור קישור: %1."}, true},
    EngineText{{u"'%1' has no value", u"ל-'%1' אין ערך"}},
    EngineText{{u"the value of '%1' is too long", u"הערך של '%1' ארוך מדי"}},
    EngineText{
        {u"the value of '%1' has a sign that does not print", u"בערך של '%1' יש סימן שאינו נראה"}},
    EngineText{{u"the value of '%1' has blanks around it", u"לפני הערך של '%1' או אחריו יש רווח"}},
    EngineText{{u"'%1' names more than one server", u"'%1' מונה יותר משרת אחד"}},
    EngineText{{u"'%1' is no port", u"'%1' אינו מספר של פורט"}},
    EngineText{{u"line %1 is no 'key = value'", u"שורה %1 אינה בצורה '{key = value}'"}},
    EngineText{{u"line %1 holds a password, which has no place in a link",
                u"בשורה %1 יש סיסמה, ואסור שתהיה סיסמה בקישור"}},
    EngineText{{u"line %1 has the unknown key '%2'", u"בשורה %1 יש מפתח לא מוכר, '%2'"}},
    EngineText{{u"line %1 says '%2' again", u"בשורה %1 כתוב '%2' בפעם השנייה"}},
    EngineText{
        {u"'file' and '%1' exclude each other", u"אפשר לכתוב '{file}' או '%1', לא את שניהם"}},
    EngineText{{u"'%1' is missing", u"חסר '%1'"}},
    EngineText{{u"'%1' is no absolute path", u"'%1' אינו נתיב מלא"}},
    EngineText{{u"'%1' is no TLS mode", u"'%1' אינו מצב של {TLS}"}},
    EngineText{{u"it is too long", u"הוא ארוך מדי"}},
    EngineText{{u"it is no UTF-8 text", u"הוא אינו טקסט של {UTF-8}"}},
    EngineText{{u"its first line is another one", u"השורה הראשונה שלו שונה"}},
    EngineText{{u"a value cannot be told again", u"אי אפשר לקרוא ערך בחזרה"}},
    EngineText{{u"it names '%1', which is a link, too", u"הוא מוביל ל-'%1', שגם הוא קישור"}},
};

/// The classic descriptions of error numbers.
constexpr std::array classicErrors{
    EngineText{{u"Invalid procedure call or argument", u"ערך לא מתאים."}},
    EngineText{{u"Overflow", u"מספר גדול מדי."}},
    EngineText{{u"Out of memory", u"נגמר הזיכרון של המחשב."}},
    EngineText{{u"Type mismatch", u"ערך מסוג לא מתאים."}},
    EngineText{{u"Internal error", u"שגיאה פנימית."}},
    EngineText{{u"Invalid use of Null", u"חסר ערך."}},
    EngineText{{u"No current record.", u"אין רשומה כזאת."}},
    EngineText{{u"The changes you requested to the table were not successful because they would "
                "create duplicate values in the index, primary key, or relationship.",
                u"רשומה עם אותו מפתח כבר קיימת."}},
    EngineText{{u"Could not find file.", u"הקובץ לא נמצא."}},
    EngineText{{u"Not enough space on disk.", u"הדיסק מלא."}},
    EngineText{{u"Cannot update. Database or object is read-only.",
                u"מותר לקרוא את קובץ הנתונים ואסור לכתוב בו."}},
    EngineText{{u"Disk or network error.", u"הדיסק או הרשת נכשלו."}},
    EngineText{{u"Cannot open database. It may not be a database that your application "
                "recognizes, or the file may be corrupt.",
                u"קובץ הנתונים פגום."}},
    EngineText{{u"Cannot open the file. It is already opened exclusively by another user, or you "
                "need permission to view its data.",
                u"אין הרשאה לפתוח את הקובץ או את המסד."}},
    EngineText{{u"Cannot find the input table or query.", u"חסרה טבלה."}},
    EngineText{{u"Call to the database server failed.", u"הקשר לשרת נותק באמצע פעולה."}},
    EngineText{
        {u"Connection to the database server failed.", u"אין קשר לשרת, או שהוא דחה את הכניסה."}},
    EngineText{{u"The field is too small to accept the amount of data you attempted to add. Try "
                "inserting or pasting less data.",
                u"טקסט ארוך מהשדה שלו."}},
    EngineText{{u"Record is deleted.", u"הרשומה נמחקה."}},
    EngineText{{u"Database already exists.", u"כבר יש קובץ או מסד בשם הזה."}},
    EngineText{{u"Invalid operation.", u"אי אפשר לעשות את הפעולה."}},
    EngineText{
        {u"Operation is not supported for this type of object.", u"אי אפשר לעשות כאן את הפעולה."}},
    EngineText{{u"Could not update; currently locked by another user.",
                u"עמדה אחרת מחזיקה את הנתונים נעולים."}},
    EngineText{{u"Item not found in this collection.", u"חסרים טבלה, שדה או אינדקס."}},
    EngineText{{u"The field cannot contain a Null value.", u"השדה חייב להכיל ערך."}},
    EngineText{{u"Unrecognized database format.", u"זה אינו קובץ נתונים של זומרל."}},
    EngineText{{u"Data type conversion error.", u"ערך לא מתאים לשדה."}},
};

/// An engine's text that can be recognized.
struct Known
{
    QRegularExpression form;
    const EngineText* text;
};

QRegularExpression formOf(const Text& text)
{
    static const QRegularExpression placeholder(u"%[1-9]"_s);
    const QString english = QString::fromUtf16(text.english().data());
    QStringList parts;
    for (const QString& each : english.split(placeholder))
        parts.append(QRegularExpression::escape(each));
    return QRegularExpression(QRegularExpression::anchoredPattern(parts.join("(.*?)"_L1)),
                              QRegularExpression::DotMatchesEverythingOption);
}

const std::vector<Known>& knownTexts()
{
    static const std::vector<Known> all = [] {
        std::vector<Known> known;
        const auto add = [&](const auto& texts) {
            for (const EngineText& each : texts)
                known.push_back({formOf(each.text), &each});
        };
        add(findingTexts);
        add(integrityTexts);
        add(hazardTexts);
        add(placeTexts);
        add(stationTexts);
        add(errorsOfFiles);
        add(errorsOfServers);
        add(damagesOfLinks);
        add(classicErrors);
        return known;
    }();
    return all;
}

Argument reasonOf(const QString& english)
{
    if (const std::optional<QString> known = translated(english))
        return Phrase{*known};
    return english;
}

} // namespace

std::optional<QString> translated(const QString& english)
{
    if (language() == Language::English)
        return english;
    for (const Known& each : knownTexts()) {
        const QRegularExpressionMatch match = each.form.match(english);
        if (!match.hasMatch())
            continue;
        const QStringList values = match.capturedTexts().mid(1);
        std::vector<Argument> arguments(values.begin(), values.end());
        if (each.text->endsWithReason)
            arguments.back() = reasonOf(values.last());
        return filled(each.text->text, arguments);
    }
    return {};
}

QString ofEngine(const QString& english)
{
    const std::optional<QString> known = translated(english);
    return known ? *known : say({u"%1", u"הודעה של מנוע הנתונים: %1"}, english);
}

QStringList ofEngine(const QStringList& english)
{
    QStringList texts;
    for (const QString& each : english)
        texts.append(ofEngine(each));
    return texts;
}

QString placeInWords(const QString& place)
{
    return translated(place).value_or(isolated(place));
}

QStringList knownEngineTexts()
{
    QStringList texts;
    for (const Known& each : knownTexts())
        texts.append(QString::fromUtf16(each.text->text.english().data()));
    return texts;
}

} // namespace storetools
