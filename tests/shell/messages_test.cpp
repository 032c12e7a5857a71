#include "shell/help_text.h"
#include "support/widgets.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using shell::HelpLanguage;

/// The chapter of the manual on messages against the messages in the sources.
class MessagesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyMessage_isInTheManual_data();
    void everyMessage_isInTheManual();
    void bothLanguages_listTheSameNumberOfMessages();
    void messageThatTheManualLacks_isFound();
};

namespace {

/// The files whose path has this end, or all if it is empty, and the beginnings of the statements
/// that show a message in them.
struct Place
{
    QString file;
    QString beginning;
};

const QList<Place> places{
    {u""_s, uR"(\b(MsgBox|isConfirmed|refuse|QMessageBox \w+|QProgressDialog \w+|)"
            uR"(WorkProgress \w+|marks\.append)\()"_s},
    {u"report/find_bar.cpp"_s, uR"(setText\()"_s},
    {u"report/saved_bar.cpp"_s, uR"((setText|new QAction)\()"_s},
    {u"shell/stall_window.cpp"_s, uR"((setText|addLabel|new QPushButton)\()"_s},
    {u"controls/refusal.cpp"_s, uR"(return u")"_s},
    {u"base/slips.cpp"_s, uR"(return u")"_s},
    {u"screens/shop_documents.cpp"_s, uR"(return u")"_s},
    {u"store/access_error.cpp"_s, uR"(u")"_s},
};

/// Matches string literals with nothing but blanks between them. They are one text.
const QRegularExpression literals(uR"x(u?"(?:[^"\\]|\\.)*"(?:\s*u?"(?:[^"\\]|\\.)*")*)x"_s);
const QRegularExpression hebrewLetter(u"[א-ת]"_s);

QString textOf(QString literal)
{
    static const QRegularExpression joint(uR"x((?<!\\)"\s*u?")x"_s);
    literal.remove(joint);
    return literal.section(u'"', 1).chopped(1).replace(u"\\\""_s, u"\""_s);
}

/// Returns the texts with Hebrew letters in the statements that begin as given.
QStringList textsIn(const QString& source, const QString& beginning)
{
    const QRegularExpression statement(beginning + u".*?;\n"_s,
                                       QRegularExpression::DotMatchesEverythingOption);
    QStringList texts;
    for (auto each = statement.globalMatch(source); each.hasNext();) {
        const QString whole = each.next().captured();
        for (auto match = literals.globalMatch(whole); match.hasNext();) {
            const QString text = textOf(match.next().captured());
            if (text.contains(hebrewLetter))
                texts.append(text);
        }
    }
    return texts;
}

QString chapterOnMessages(HelpLanguage language)
{
    static const QRegularExpression marks(u"[\u200e\u200f`]"_s);
    return shell::helpChapters(shell::manualText(), language)[8].markdown.remove(marks);
}

/// Returns true if the chapter quotes the text. What stands for a value may be anything.
bool isQuoted(const QString& text, const QString& chapter)
{
    static const QRegularExpression gap(uR"(%\d|\\[nr])"_s);
    const QString plain = chapter.simplified();
    QString before = u"[\"(]\\s*"_s;
    bool isWhole = true;
    for (const QString& each : text.split(gap)) {
        const QString piece = each.simplified();
        if (piece.contains(hebrewLetter)) {
            const QRegularExpression quoted(before + QRegularExpression::escape(piece) +
                                            u"(?![א-ת])"_s);
            isWhole = isWhole && plain.contains(quoted);
        }
        before = u"(?<![א-ת])"_s;
    }
    return isWhole;
}

qsizetype rowsIn(const QString& chapter)
{
    static const QRegularExpression row(u"^\\|[^-]"_s, QRegularExpression::MultilineOption);
    return chapter.count(row);
}

} // namespace

void MessagesTest::everyMessage_isInTheManual_data()
{
    QTest::addColumn<QString>("text");
    int texts = 0;
    for (QDirIterator files(QStringLiteral(ZOMREL_SOURCES), {u"*.cpp"_s}, QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        const QString source = QString::fromUtf8(file.readAll());
        for (const Place& place : places) {
            if (!file.fileName().endsWith(place.file))
                continue;
            for (const QString& text : textsIn(source, place.beginning)) {
                QTest::addRow("%s %d", qPrintable(files.fileName()), ++texts) << text;
            }
        }
    }
    QVERIFY2(texts >= 70, qPrintable(QString::number(texts)));
}

void MessagesTest::everyMessage_isInTheManual()
{
    QFETCH(const QString, text);
    QVERIFY2(isQuoted(text, chapterOnMessages(HelpLanguage::Hebrew)), qPrintable(text));
    QVERIFY2(isQuoted(text, chapterOnMessages(HelpLanguage::English)), qPrintable(text));
}

void MessagesTest::bothLanguages_listTheSameNumberOfMessages()
{
    const qsizetype rows = rowsIn(chapterOnMessages(HelpLanguage::Hebrew));
    QVERIFY(rows > 80);
    QCOMPARE(rowsIn(chapterOnMessages(HelpLanguage::English)), rows);
}

void MessagesTest::messageThatTheManualLacks_isFound()
{
    const QString chapter = chapterOnMessages(HelpLanguage::Hebrew);
    const QStringList kept =
        chapter.split(u'\n').filter(QRegularExpression(u"^(?!.*\"לא נמצא\")"_s));
    QCOMPARE(kept.size(), chapter.count(u'\n'));
    QVERIFY(isQuoted(u" לא נמצא "_s, chapter));
    QVERIFY(!isQuoted(u" לא נמצא "_s, kept.join(u'\n')));
    QCOMPARE(textsIn(u"    runtime::MsgBox(u\"אין %1\\n\"\n            \"דף\"_s.arg(x), flags,\n"
                     "                    u\"כותרת\"_s);\n"_s,
                     places.front().beginning),
             (QStringList{u"אין %1\\nדף"_s, u"כותרת"_s}));
}

ZOMREL_QTEST_MAIN(MessagesTest)
#include "messages_test.moc"
