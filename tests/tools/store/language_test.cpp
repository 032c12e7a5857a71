// Which language the program speaks, and where it isolates names.

#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/program_run.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using storetooltest::Outcome;

namespace {

using Variables = QMap<QString, QString>;

/// Returns the environment of the test with these variables of the locale and no others.
QProcessEnvironment environmentWith(const Variables& variables)
{
    QProcessEnvironment environment = storetooltest::environmentIn(u"C.UTF-8"_s);
    environment.remove(u"LC_ALL"_s);
    for (auto each = variables.cbegin(); each != variables.cend(); ++each)
        environment.insert(each.key(), each.value());
    return environment;
}

QString firstLineOfHelp(const Variables& variables)
{
    QProcess process;
    process.setProcessEnvironment(environmentWith(variables));
    process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), {u"--help"_s});
    EXPECT_TRUE(storetooltest::hasEnded(process));
    return storetooltest::outcomeOf(process).out.value(0);
}

/// The two ends of a terminal.
class Terminal
{
public:
    Terminal() { isOpen_ = openpty(&program_, &user_, nullptr, nullptr, nullptr) == 0; }
    ~Terminal()
    {
        close(program_);
        close(user_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool isOpen() const { return isOpen_; }
    int user() const { return user_; }
    /// Returns what was written, once the program has ended.
    QString written() const
    {
        QByteArray text(1 << 16, '\0');
        fcntl(program_, F_SETFL, O_NONBLOCK);
        const auto size = read(program_, text.data(), std::size_t(text.size()));
        return QString::fromUtf8(text.left(size < 0 ? 0 : size)).remove(u'\r');
    }

private:
    int program_ = -1; ///< The end at which a terminal program reads.
    int user_ = -1;
    bool isOpen_ = false;
};

} // namespace

TEST(LanguageTest, HebrewComesFromEachOfTheVariables)
{
    for (const Variables& each :
         QList<Variables>{{{u"LC_ALL"_s, u"he_IL.UTF-8"_s}},
                          {{u"LC_MESSAGES"_s, u"he_IL.UTF-8"_s}},
                          {{u"LANG"_s, u"he_IL.UTF-8"_s}},
                          {{u"LANG"_s, u"he"_s}},
                          {{u"LANGUAGE"_s, u"he:en"_s}, {u"LANG"_s, u"en_US.UTF-8"_s}}})
        EXPECT_EQ(firstLineOfHelp(each), u"שימוש:"_s) << each.firstKey().toStdString();
}

TEST(LanguageTest, EveryOtherLanguageGetsEnglish)
{
    for (const Variables& each :
         QList<Variables>{{},
                          {{u"LC_ALL"_s, u"C"_s}},
                          {{u"LC_ALL"_s, u"en_US.UTF-8"_s}, {u"LANG"_s, u"he_IL.UTF-8"_s}},
                          {{u"LC_ALL"_s, u"de_DE.UTF-8"_s}},
                          {{u"LANGUAGE"_s, u"en"_s}, {u"LANG"_s, u"he_IL.UTF-8"_s}}})
        EXPECT_EQ(firstLineOfHelp(each), u"usage:"_s) << each.values().join(u' ').toStdString();
}

TEST(LanguageTest, PipeGetsHebrewWithoutMarks)
{
    const testsupport::TemporaryStore store;
    const Outcome outcome =
        storetooltest::zomrelStoreIn(u"he_IL.UTF-8"_s, {u"create"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-store: כבר יש קובץ או מסד בשם '%1'."_s.arg(store.path())});
    EXPECT_EQ(outcome.advice,
              QStringList{u"zomrel-store: מה עושים: בחר שם אחר, או העבר הצידה את מה שכבר קיים."_s});
}

TEST(LanguageTest, TerminalGetsHebrewWithIsolatedNames)
{
    const Terminal terminal;
    ASSERT_TRUE(terminal.isOpen());
    const testsupport::TemporaryStore store;
    QProcess process;
    process.setProcessEnvironment(storetooltest::environmentIn(u"he_IL.UTF-8"_s));
    process.setChildProcessModifier([&] { dup2(terminal.user(), STDERR_FILENO); });
    process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), {u"create"_s, store.path()});
    ASSERT_TRUE(storetooltest::hasEnded(process));
    EXPECT_EQ(process.exitCode(), 1);
    const QStringList lines = terminal.written().split(u'\n');
    EXPECT_EQ(lines.value(0), u"\u2066zomrel-store\u2069: כבר יש קובץ או מסד בשם "
                              "'\u2066%1\u2069'."_s.arg(store.path()));
}

TEST(LanguageTest, TerminalGetsEnglishWithoutMarks)
{
    const Terminal terminal;
    ASSERT_TRUE(terminal.isOpen());
    QProcess process;
    process.setProcessEnvironment(storetooltest::environmentIn(u"C.UTF-8"_s));
    process.setChildProcessModifier([&] { dup2(terminal.user(), STDOUT_FILENO); });
    process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), {u"--help"_s});
    ASSERT_TRUE(storetooltest::hasEnded(process));
    EXPECT_EQ(process.exitCode(), 0);
    const QString help = terminal.written();
    EXPECT_TRUE(help.startsWith(u"usage:\n  zomrel-store create FILE "_s)) << help.toStdString();
    EXPECT_FALSE(help.contains(QChar(u'\u2066')));
}
