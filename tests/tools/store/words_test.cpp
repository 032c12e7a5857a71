// The texts of the messages in both languages.

#include "support/printers.h"
#include "tools/store/advice.h"
#include "tools/store/engine_words.h"
#include "tools/store/in_hebrew.h"
#include "tools/store/told_error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace storetools;
using storetooltest::bareLatin;
using storetooltest::hasHebrew;
using storetooltest::InHebrew;

namespace {

const QString lri(QChar(u'\u2066'));
const QString pdi(QChar(u'\u2069'));

} // namespace

TEST(WordsTest, TextsOfTheTwoLanguagesBelongTogether)
{
    EXPECT_TRUE(isTranslation(u"created %1", u"%1 נוצר"));
    EXPECT_TRUE(isTranslation(u"%1 of %2", u"%2 של %1"));
    EXPECT_TRUE(isTranslation(u"use --force", u"הוסף {--force}"));
}

TEST(WordsTest, MissingOrIncompleteHebrew_isFound)
{
    EXPECT_FALSE(isTranslation(u"created", u""));
    EXPECT_FALSE(isTranslation(u"created %1", u"%1"));
    EXPECT_FALSE(isTranslation(u"created", u"created"));
    EXPECT_FALSE(isTranslation(u"created %1", u"נוצר"));
    EXPECT_FALSE(isTranslation(u"created", u"%1 נוצר"));
    EXPECT_FALSE(isTranslation(u"created %1 %2", u"%1 נוצר %1"));
    EXPECT_FALSE(isTranslation(u"%1 נוצר", u"created %1"));
}

TEST(WordsTest, LatinLettersOutsideOfBraces_areFound)
{
    EXPECT_FALSE(isTranslation(u"use --force", u"הוסף --force"));
    EXPECT_FALSE(isTranslation(u"use --force", u"הוסף {--force"));
    EXPECT_FALSE(isTranslation(u"use --force", u"הוסף --force}"));
    EXPECT_FALSE(isTranslation(u"use --force", u"הוסף {{--force}}"));
    EXPECT_FALSE(isTranslation(u"use {--force}", u"הוסף {--force}"));
}

TEST(WordsTest, EnglishIsTheLanguageUntilAnotherOneIsChosen)
{
    EXPECT_EQ(language(), Language::English);
    EXPECT_EQ(say({u"%1 is at %2", u"%2 הוא המקום של %1 {x}"}, u"a b"_s, 3), u"a b is at 3"_s);
}

TEST(WordsTest, HebrewIsolatesNamesAndNumbersAndWhatIsInBraces)
{
    const InHebrew hebrew;
    EXPECT_EQ(say({u"%1 is at %2", u"%2 הוא המקום של %1 {x}"}, u"a b"_s, 3),
              lri + u"3"_s + pdi + u" הוא המקום של "_s + lri + u"a b"_s + pdi + u" "_s + lri +
                  u"x"_s + pdi);
    EXPECT_EQ(say({u"%1!", u"הנה: %1"}, Phrase{u"שלום"_s}), u"הנה: שלום"_s);
}

TEST(WordsTest, ValueWithAPlaceholder_isNotFilledAgain)
{
    EXPECT_EQ(say({u"%1 and %2", u"%1 וגם %2"}, u"%2"_s, u"x"_s), u"%2 and x"_s);
}

TEST(WordsTest, IsolationIsRemovedWithoutAnythingElse)
{
    EXPECT_EQ(withoutIsolation((lri + u"חנות.mdb"_s + pdi + u" נוצר"_s).toUtf8()),
              u"חנות.mdb נוצר"_s.toUtf8());
}

TEST(EngineWordsTest, EveryKnownTextIsRecognizedAndTranslated)
{
    const QStringList texts = knownEngineTexts();
    EXPECT_GT(texts.size(), 70);
    const InHebrew hebrew;
    for (QString text : texts) {
        for (int number = 1; number <= 9; ++number)
            text.replace(u'%' + QString::number(number), u"value%1"_s.arg(number));
        const std::optional<QString> found = translated(text);
        ASSERT_TRUE(found.has_value()) << text.toStdString();
        EXPECT_TRUE(hasHebrew(*found)) << text.toStdString();
        EXPECT_EQ(bareLatin(*found), QString()) << text.toStdString();
        for (int number = 1; number <= 9; ++number) {
            const QString value = u"value%1"_s.arg(number);
            EXPECT_EQ(found->contains(lri + value + pdi), text.contains(value))
                << text.toStdString();
        }
    }
}

TEST(EngineWordsTest, ReasonWithinATextIsTranslated)
{
    const InHebrew hebrew;
    EXPECT_EQ(translated(u"The store link 'a' is damaged: it is too long."_s),
              u"הקישור '"_s + lri + u"a"_s + pdi + u"' פגום: הוא ארוך מדי."_s);
}

TEST(EngineWordsTest, UnknownText_isQuotedInEnglish)
{
    EXPECT_EQ(ofEngine(u"*** in database main ***"_s), u"*** in database main ***"_s);
    const InHebrew hebrew;
    EXPECT_EQ(translated(u"*** in database main ***"_s), std::nullopt);
    EXPECT_EQ(ofEngine(u"*** in database main ***"_s),
              u"הודעה של מנוע הנתונים: "_s + lri + u"*** in database main ***"_s + pdi);
}

TEST(AdviceTest, ErrorOfTheEngine_saysWhatHappenedAndWhatToDo)
{
    const runtime::RunTimeError error(runtime::DiskFull, u"no space, says the system"_s);
    EXPECT_EQ(happened(error), u"no space, says the system"_s);
    EXPECT_EQ(nextStep(error), u"Free some space on the disk and try again."_s);
    const InHebrew hebrew;
    EXPECT_EQ(happened(error),
              u"הדיסק מלא. פרטים: "_s + lri + u"no space, says the system"_s + pdi);
    EXPECT_EQ(nextStep(error), u"פנה מקום בדיסק ונסה שוב."_s);
}

TEST(AdviceTest, ErrorOfACommand_keepsItsOwnNextStep)
{
    EXPECT_EQ(nextStep(ToldError(runtime::DiskFull, u"text"_s, u"Do this."_s)), u"Do this."_s);
    EXPECT_EQ(nextStep(ToldError(runtime::DiskFull, u"text"_s)),
              u"Free some space on the disk and try again."_s);
}

TEST(AdviceTest, EveryErrorNumberHasANextStepInHebrew)
{
    const InHebrew hebrew;
    constexpr int unknownNumber = 9999;
    for (int number = 1; number <= unknownNumber; ++number) {
        if (runtime::errorDescription(number).isEmpty() && number != unknownNumber)
            continue;
        const runtime::RunTimeError error(number);
        EXPECT_TRUE(hasHebrew(happened(error))) << number;
        EXPECT_EQ(bareLatin(happened(error)), QString()) << number;
        EXPECT_TRUE(hasHebrew(nextStep(error))) << number;
        EXPECT_EQ(bareLatin(nextStep(error)), QString()) << number;
    }
}
