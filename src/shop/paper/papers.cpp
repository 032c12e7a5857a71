#include "shop/paper/papers.h"

#include "shop/documents.h"
#include "shop/paper/bar_picture.h"
#include "shop/paper/explanations.h"
#include "shop/paper/flow.h"
#include "shop/paper/lists.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

/// Returns the title of a document: `word`, such as "מדבקות" (labels), followed by the number of
/// the order. For several orders, the numbers of the first and of the last order follow.
QString titleFor(const QString& word, const ShopPack& pack)
{
    if (pack.orders.empty())
        return word;
    const int first = pack.orders.front().number;
    if (pack.orders.size() == 1)
        return u"%1 %2"_s.arg(word).arg(first);
    return u"%1 %2-%3"_s.arg(word).arg(first).arg(pack.orders.back().number);
}

std::unique_ptr<SheetDocument> numbered(const QString& title, std::vector<Sheet> sheets)
{
    numberPages(sheets);
    return std::make_unique<SheetDocument>(title, report::a4Portrait, std::move(sheets));
}

void append(std::vector<Sheet> more, std::vector<Sheet>& sheets)
{
    std::ranges::move(more, std::back_inserter(sheets));
}

template <typename Element>
std::vector<Element> ofLine(const std::vector<Element>& all, int order, int line)
{
    std::vector<Element> some;
    std::ranges::copy_if(all, std::back_inserter(some), [&](const Element& each) {
        return each.order == order && each.line == line;
    });
    return some;
}

} // namespace

const std::vector<PaperKind>& paperKinds()
{
    static const std::vector<PaperKind> kinds{
        {u"רשימת חיתוך"_s, u"cut-list.csv"_s, cutListCsv, cutListSheets},
        {u"תוכנית מוטות"_s, u"bar-plan.csv"_s, barPlanCsv, barPlanSheets},
        {u"רשימת זכוכית"_s, u"glass.csv"_s, glassCsv, glassSheets},
        {u"רשימת רשתות"_s, u"mesh.csv"_s, meshCsv, meshSheets},
        {u"איך חושב"_s, u"computed.csv"_s, explanationsCsv, explanationSheets},
    };
    return kinds;
}

std::unique_ptr<SheetDocument> paperDocument(const PaperKind& kind, const ShopPack& pack)
{
    return numbered(titleFor(kind.title, pack), kind.sheets(pack));
}

std::unique_ptr<SheetDocument> allPapers(const ShopPack& pack)
{
    std::vector<Sheet> sheets;
    for (const PaperKind& each : paperKinds())
        append(each.sheets(pack), sheets);
    const QString word = pack.orders.size() > 1 ? u"הזמנות"_s : u"הזמנה"_s;
    return numbered(titleFor(word, pack), std::move(sheets));
}

std::unique_ptr<SheetDocument> labelDocument(const ShopPack& pack, LabelPaper paper)
{
    return std::make_unique<SheetDocument>(titleFor(u"מדבקות"_s, pack), paperOf(paper),
                                           labelSheets(pack, paper));
}

ShopPack remakePack(const ShopPack& pack, int order, int line, Part part)
{
    ShopPack remake;
    remake.pieces.pieces = ofLine(pack.pieces.pieces, order, line);
    std::erase_if(remake.pieces.pieces, [&](const Piece& each) { return each.group.part != part; });
    remake.pieces.faults = ofLine(pack.pieces.faults, order, line);
    std::erase_if(remake.pieces.faults, [&](const Fault& each) { return each.part != part; });
    if (part == Part::Glass)
        remake.pieces.glass = ofLine(pack.pieces.glass, order, line);
    if (part == Part::Mesh)
        remake.pieces.mesh = ofLine(pack.pieces.mesh, order, line);
    std::ranges::copy_if(pack.orders, std::back_inserter(remake.orders),
                         [&](const OrderHead& each) { return each.number == order; });
    return remake;
}

std::unique_ptr<SheetDocument> remakeSlip(const ShopPack& pack)
{
    std::vector<Sheet> sheets;
    if (!pack.pieces.pieces.empty() || !pack.pieces.faults.empty()) {
        append(cutListSheets(pack), sheets);
        append(barPlanSheets(pack), sheets);
    }
    if (!pack.pieces.glass.empty())
        append(glassSheets(pack), sheets);
    if (!pack.pieces.mesh.empty())
        append(meshSheets(pack), sheets);
    for (Sheet& each : sheets)
        each.texts.push_back({{Flow::left, 300, Flow::width, 300}, u"קריאה חוזרת"_s, 12, true});
    numberPages(sheets); // The labels leave no room for a number.
    if (!pack.pieces.pieces.empty())
        append(labelSheets(pack, LabelPaper::A4), sheets);
    return std::make_unique<SheetDocument>(titleFor(u"קריאה חוזרת"_s, pack), report::a4Portrait,
                                           std::move(sheets));
}

QString paperFile(const ShopPack& pack)
{
    const int first = pack.orders.front().number;
    if (pack.orders.size() == 1)
        return u"order-%1.pdf"_s.arg(first);
    return u"orders-%1-%2.pdf"_s.arg(first).arg(pack.orders.back().number);
}

} // namespace shop::paper
