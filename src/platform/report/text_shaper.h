#pragma once

#include "platform/report/shaped_text.h"

#include <map>
#include <unordered_map>

namespace report {

/// Shapes the texts of a report's controls and caches the results.
class TextShaper
{
public:
    /// `sections` are sections of a report. The text of a field in one of them keeps a distance
    /// from the captions, drawn lines and borders beside it. The text of any other control keeps no
    /// such distance. The sections must outlive this object.
    explicit TextShaper(QStringView fontFamily, std::span<const SectionDesign> sections = {});

    /// Returns the shaped text of a control. The reference is valid until the next call of
    /// shaped(). The cache distinguishes the controls by their addresses.
    const ShapedText& shaped(const ControlDesign& control, const QString& text);
    const TextFrame& frame(const ControlDesign& control);

private:
    const QFont& font(const ControlDesign& control);
    std::span<const ControlDesign> neighboursOf(const ControlDesign& control) const;

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
    std::span<const SectionDesign> sections_;
    std::map<std::pair<double, bool>, QFont> fonts_; ///< Font cache by size in points and weight.
    std::unordered_map<const ControlDesign*, TextFrame> frames_;
    std::unordered_map<Key, ShapedText, KeyHash> kept_;
};

} // namespace report
