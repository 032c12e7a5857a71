#include "tools/shop/document_kinds.h"

#include "shop/paper/papers.h"
#include "shop/workbook.h"

#include <algorithm>

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
    const std::vector<shop::DocumentKind>& texts = shop::documentKinds();
    kinds.insert(kinds.end(), texts.begin(), texts.end());
    const std::vector<shop::DocumentKind> others{
        {u"labels"_s, u"labels.pdf"_s, labels},
        {u"workbook"_s, u"workbook.xlsx"_s, shop::workbook}};
    kinds.insert(std::ranges::find(kinds, u"json"_s, &shop::DocumentKind::name), others.begin(),
                 others.end());
    return kinds;
}

} // namespace

const std::vector<shop::DocumentKind>& documentKinds()
{
    static const std::vector<shop::DocumentKind> kinds = allKinds();
    return kinds;
}

} // namespace shoptools
