#pragma once

#include "platform/report/design.h"

#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QPointF>
#include <QString>

#include <map>
#include <unordered_map>
#include <vector>

namespace report {

/// One line of a control's text: its glyphs, drawn at `corner`, in twips from the control's corner.
struct ShapedLine
{
    QString text; ///< What of the control's text stands here.
    /// In the order in which they stand on paper, from the left: programs that read a PDF put
    /// words together from neighbours.
    QList<QGlyphRun> glyphs;
    QPointF corner;
    double width;
    double underline; ///< How far below `corner` the underline lies, where there is one.
};

using ShapedText = std::vector<ShapedLine>;

/// Sets texts into their controls. Type is measured in twips, unhinted, so that widths agree on
/// every device. A control takes as many lines as its height holds, one at the least, from its top
/// downwards. A text too wide for its last line is cut at its end, whole characters, and stands at
/// the edge at which it begins: a number at the left, Hebrew at the right. In a box it keeps a
/// hair's breadth from the border where there is room.
class TextShaper
{
public:
    explicit TextShaper(QStringView fontFamily);

    /// The reference is good until the next call.
    const ShapedText& shaped(const ControlDesign& control, const QString& text);

private:
    const QFont& font(const ControlDesign& control);

    struct Key
    {
        const ControlDesign* control;
        QString text;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash
    {
        std::size_t operator()(const Key& key) const
        {
            return qHashMulti(0, key.control, key.text);
        }
    };

    QString family_;
    std::map<std::pair<double, bool>, QFont> fonts_; ///< By points and weight.
    std::unordered_map<Key, ShapedText, KeyHash> kept_;
};

} // namespace report
