#include "platform/report/font_substitutes.h"

#include <QFont>
#include <QStringList>

namespace report {

using namespace Qt::StringLiterals;

void substituteFonts()
{
    QFont::insertSubstitutions(u"David"_s,
                               {u"David CLM"_s, u"Frank Ruehl CLM"_s, u"DejaVu Sans"_s});
    for (const QString& sans : {u"Arial"_s, u"MS Sans Serif"_s})
        QFont::insertSubstitutions(sans, {u"Nachlieli CLM"_s, u"DejaVu Sans"_s});
}

} // namespace report
