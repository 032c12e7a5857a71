#include "shop/paper/sheet_ink.h"

#include "platform/runtime/twips.h"

#include <QPainter>

namespace shop::paper {

namespace {

/// Maximum number of laid-out texts in the cache. The cache helps because captions and the texts of
/// an order are on many labels.
constexpr std::size_t keptTexts = 4096;

constexpr double lineWidth = runtime::twipsPerPixel;

QBrush brushOf(Fill fill)
{
    switch (fill) {
    case Fill::Light:
        return QColor(0xEE, 0xEE, 0xEE);
    case Fill::Medium:
        return QColor(0xCC, 0xCC, 0xCC);
    case Fill::Dark:
        return QColor(0x99, 0x99, 0x99);
    case Fill::None:
        break;
    }
    return Qt::NoBrush;
}

report::TextFrame frameOf(const TextItem& item)
{
    const double width = item.place.width();
    return {.width = width,
            .height = double(item.place.height()),
            .free = {0, width},
            .align = item.align,
            .rightToLeft = item.rightToLeft};
}

} // namespace

void SheetInk::draw(const Sheet& sheet, QPainter& painter)
{
    painter.save();
    const QPen pen(Qt::black, lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    for (const BoxItem& box : sheet.boxes) {
        painter.setPen(box.hasBorder ? pen : QPen(Qt::NoPen));
        painter.setBrush(brushOf(box.fill));
        painter.drawRect(box.place);
    }
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    // QR codes are drawn without smoothing and lossy compression, because either would blur the
    // edges of the modules.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    for (const CodeItem& code : sheet.codes)
        painter.drawImage(code.place, code.picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const TextItem& text : sheet.texts)
        drawText(text, painter);
    painter.restore();
}

void SheetInk::drawText(const TextItem& item, QPainter& painter)
{
    if (!item.text.isEmpty())
        report::drawGlyphs(shaped(item), item.place.topLeft(), painter);
}

const QFont& SheetInk::font(const TextItem& item)
{
    const std::pair key(item.points, item.bold);
    const auto found = fonts_.find(key);
    if (found != fonts_.end())
        return found->second;
    return fonts_.emplace(key, report::twipFont(paperFamily(), item.points, item.bold))
        .first->second;
}

const report::ShapedText& SheetInk::shaped(const TextItem& item)
{
    const Key key{item};
    if (const auto found = kept_.find(key); found != kept_.end())
        return found->second;
    if (kept_.size() >= keptTexts)
        kept_.clear();
    return kept_.emplace(key, report::shapedText(frameOf(item), item.text, font(item)))
        .first->second;
}

} // namespace shop::paper
