#include "driving/opening.h"

using namespace Qt::StringLiterals;

namespace driving {

QString names::measureBox(int index)
{
    return u"TextNum_%1"_s.arg(index);
}

std::vector<Entry> measureEntries(int wholeBox, const Boxes& boxes)
{
    if (boxes.whole.isEmpty())
        return {};
    return {{names::measureBox(wholeBox), boxes.whole},
            {names::measureBox(wholeBox + 1), boxes.hundredths}};
}

std::vector<Entry> measureEntries(const Opening& opening)
{
    std::vector<Entry> entries;
    int wholeBox = 0;
    for (const Boxes& each :
         {opening.width, opening.height, opening.doorThickness.value_or(Boxes())}) {
        for (const Entry& entry : measureEntries(wholeBox, each))
            entries.push_back(entry);
        wholeBox += 2;
    }
    return entries;
}

std::vector<Entry> listEntries(const Opening& opening)
{
    std::vector<Entry> entries;
    for (std::size_t part = 0; part < opening.kinds.size(); ++part) {
        entries.push_back({u"DBComboKind_%1"_s.arg(part), opening.kinds[part]});
        entries.push_back({u"DBComboColor_%1"_s.arg(part), opening.colours[part]});
    }
    return entries;
}

} // namespace driving
