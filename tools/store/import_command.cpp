#include "tools/store/import_command.h"

#include "platform/runtime/run_time_error.h"
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
        throw WrongCall(say({u"there is no code page '%1' with a byte for each character",
                             u"אין דף קוד '%1' עם בית אחד לכל תו"},
                            name));
    }
}

ExitStatus notTakenOver(const TakeOverOutcome& outcome, QTextStream& err)
{
    print(err, outcome.notes + outcome.findings);
    return fail(err, say({u"nothing was imported", u"לא יובא דבר"}),
                say({u"Mend what the lines above name in the old file, and import it again. "
                     "--cut-texts truncates texts that are too long.",
                     u"תקן בקובץ הישן את מה שכתוב בשורות שלמעלה, וייבא אותו שוב. "
                     "{--cut-texts} מקצר טקסטים ארוכים מדי."}));
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
    out << say({u"imported %1 into %2", u"%1 יובא אל %2"}, call.arguments[0], call.arguments[1])
        << '\n';
    return Success;
}

} // namespace

Command importCommand()
{
    return {
        u"import"_s,
        {u"OLD.mdb"_s, u"TO"_s},
        {u"import an old-format store (Jet 3, Jet 4) into a new one",
         u"להעתיק קובץ ישן ({Jet 3}, {Jet 4}) לקובץ נתונים חדש"},
        takeOver,
        {{codePageOption,
          u"CP"_s,
          {u"code page of a Jet 3 file's texts; default 1255",
           u"דף הקוד של הטקסטים בקובץ {Jet 3}; בלי זה 1255"}},
         {cutTextsOption,
          {},
          {u"truncate texts that are longer than their field", u"לקצר טקסטים שארוכים מהשדה שלהם"}},
         {forceOption,
          {},
          {u"import although stations are connected to TO",
           u"לייבא גם כשיש עמדות מחוברות אל {TO}"}}}};
}

ExitStatus readOldFile(const QString& path)
{
    return runReading(path) == 0 ? Success : Failure;
}

} // namespace storetools
