#pragma once

#include "platform/report/shaped_text.h"
#include "shop/paper/sheet.h"

#include <map>
#include <unordered_map>

namespace shop::paper {

/// The font family of the printed documents.
inline const QString& paperFamily()
{
    static const QString family = QStringLiteral("David");
    return family;
}

/// Draws sheets. The painter's unit must be the twip.
class SheetInk
{
public:
    void draw(const Sheet& sheet, QPainter& painter);

private:
    void drawText(const TextItem& item, QPainter& painter);
    const QFont& font(const TextItem& item);
    const report::ShapedText& shaped(const TextItem& item);

    struct Key
    {
        TextItem item;
        bool operator==(const Key& other) const { return item.looksLike(other.item); }
    };
    struct KeyHash
    {
        std::size_t operator()(const Key& key) const
        {
            return qHashMulti(0, key.item.text, key.item.place.width(), key.item.place.height(),
                              key.item.points, key.item.bold, static_cast<int>(key.item.align),
                              key.item.rightToLeft);
        }
    };

    std::map<std::pair<double, bool>, QFont> fonts_; ///< By size in points and weight.
    std::unordered_map<Key, report::ShapedText, KeyHash> kept_;
};

} // namespace shop::paper
