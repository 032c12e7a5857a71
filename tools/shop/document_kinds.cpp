#include "tools/shop/document_kinds.h"

#include "shop/paper/papers.h"
#include "shop/workbook.h"

using namespace Qt::StringLiterals;

namespace shoptools {

namespace {

QByteArray paper(const shop::ShopPack& pack)
{
    return shop::paper::pdfOf(*shop::paper::allPapers(pack));
}

QByteArray labels(const shop::ShopPack& pack)
{
    return shop::paper::pdfOf(*shop::paper::labelDocument(pack, shop::paper::LabelPaper::A4));
}

std::vector<shop::DocumentKind> allKinds()
{
    std::vector<shop::DocumentKind> kinds{{u"paper"_s, {}, paper}};
    for (const shop::DocumentKind& each : shop::documentKinds()) {
        if (each.name == "json"_L1) {
            kinds.push_back({u"labels"_s, u"labels.pdf"_s, labels});
            kinds.push_back({u"workbook"_s, u"workbook.xlsx"_s, shop::workbook});
        }
        kinds.push_back(each);
    }
    return kinds;
}

} // namespace

const std::vector<shop::DocumentKind>& documentKinds()
{
    static const std::vector<shop::DocumentKind> kinds = allKinds();
    return kinds;
}

} // namespace shoptools
