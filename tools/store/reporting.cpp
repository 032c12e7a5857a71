#include "tools/store/reporting.h"

#include "tools/store/advice.h"
#include "tools/store/engine_words.h"
#include "tools/store/place.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

const QString forceOption = u"--force"_s;
const QString storeProgram = u"zomrel-store"_s;

bool isForced(const Call& call)
{
    return call.options.contains(forceOption);
}

void print(QTextStream& stream, const QStringList& lines)
{
    for (const QString& line : lines)
        stream << line << '\n';
}

void tell(QTextStream& stream, const QString& message, const QString& program)
{
    stream << isolated(program) << ": " << message << '\n';
}

void tellNextStep(QTextStream& stream, const QString& nextStep, const QString& program)
{
    tell(stream, say({u"what to do: %1", u"מה עושים: %1"}, Phrase{nextStep}), program);
}

ExitStatus fail(QTextStream& err, const QString& message, const QString& nextStep)
{
    tell(err, message);
    tellNextStep(err, nextStep);
    return Failure;
}

ExitStatus fail(QTextStream& err, const runtime::RunTimeError& error)
{
    return fail(err, happened(error), nextStep(error));
}

ExitStatus notSound(QTextStream& err, const QStringList& findings, const QString& message,
                    const QString& nextStep)
{
    print(err, findings);
    return fail(err, message, nextStep);
}

bool isLeft(const QString& place, const Call& call, QTextStream& err)
{
    if (isForced(call))
        return true;
    const QStringList stations = Place(place).stations();
    for (const QString& each : stations)
        err << say({u"connected: %1", u"מחובר: %1"}, Phrase{ofEngine(each)}) << '\n';
    if (stations.isEmpty())
        return true;
    fail(err,
         say({u"stations are connected; nothing was changed", u"יש עמדות מחוברות; לא השתנה דבר"}),
         say({u"Close Zomrel on all stations and try again, or use --force.",
              u"צא מזומרל בכל העמדות ונסה שוב, או הוסף {--force}."}));
    return false;
}

Counts::Counts(QTextStream& out) : out_(out)
{
    line(say({u"table", u"טבלה"}), say({u"rows", u"רשומות"}));
}

void Counts::line(const QString& table, const QString& rows)
{
    constexpr int nameWidth = 14;
    constexpr int numberWidth = 8;
    out_ << isolated(table) << QString(std::max<qsizetype>(nameWidth - table.size(), 0), u' ')
         << QString(std::max<qsizetype>(numberWidth - rows.size(), 0), u' ') << isolated(rows)
         << '\n';
}

} // namespace storetools
