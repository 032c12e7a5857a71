#include "tools/store/import_command.h"

#include "platform/runtime/run_time_error.h"
#include "tools/store/language.h"
#include "tools/store/old_store/reading.h"
#include "tools/store/old_store/take_over.h"
#include "tools/store/place.h"
#include "tools/store/progress.h"
#include "tools/store/reporting.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString codePageOption = u"--code-page"_s;
const QString cutTextsOption = u"--cut-texts"_s;

CodePage codePageNamed(const QString& name)
{
    try {
        return CodePage(name);
    } catch (const runtime::RunTimeError&) {
        throw WrongCall(u"there is no code page '%1' with a byte for each character"_s.arg(name));
    }
}

ExitStatus notTakenOver(const TakeOverOutcome& outcome, QTextStream& err)
{
    print(err, outcome.notes + outcome.findings);
    err << inUsersLanguage(u"zomrel-store: nothing was imported\n"_s,
                           u"zomrel-store: דבר לא יובא\n"_s);
    return Failure;
}

ExitStatus takeOver(const Call& call, QTextStream& out, QTextStream& err)
{
    TakeOverOptions options;
    if (call.options.contains(codePageOption))
        options.codePage = codePageNamed(call.options.value(codePageOption));
    options.cutTexts = call.options.contains(cutTextsOption);
    if (!isLeft(call.arguments[1], call, err))
        return Failure;
    const TakeOverOutcome outcome = withProgress(err, [&](const TakeOverProgress& progress) {
        return takeOverStore(call.arguments[0], Place(call.arguments[1]), options, progress);
    });
    if (!outcome.findings.isEmpty())
        return notTakenOver(outcome, err);
    print(out, outcome.notes);
    Counts counts(out);
    for (const TakenTable& table : outcome.tables)
        counts.add(table.name, table.rows);
    out << inUsersLanguage(u"imported %1 into %2"_s, u"%1 יובא אל %2"_s)
               .arg(call.arguments[0], call.arguments[1])
        << '\n';
    return Success;
}

} // namespace

Command importCommand()
{
    return {u"import"_s,
            {u"OLD.mdb"_s, u"TO"_s},
            u"import an old-format store (Jet 3, Jet 4) into a new one"_s,
            takeOver,
            {{codePageOption, u"CP"_s, u"code page of a Jet 3 file's texts; default 1255"_s},
             {cutTextsOption, {}, u"truncate texts that are longer than their field"_s},
             {forceOption, {}, u"import although stations are connected to TO"_s}}};
}

ExitStatus readOldFile(const QString& path)
{
    return runReading(path) == 0 ? Success : Failure;
}

} // namespace storetools
