#pragma once

#include "platform/report/shaped_text.h"

#include <map>
#include <unordered_map>

namespace report {

/// Sets texts into the controls of a report and keeps them shaped.
class TextShaper
{
public:
    /// Controls of the sections keep clear of the captions and lines beside them; any other control
    /// stands alone. The sections must outlive the shaper.
    explicit TextShaper(QStringView fontFamily, std::span<const SectionDesign> sections = {});

    /// The reference is good until the next call. Controls are told apart by their address.
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
    std::map<std::pair<double, bool>, QFont> fonts_; ///< By points and weight.
    std::unordered_map<const ControlDesign*, TextFrame> frames_;
    std::unordered_map<Key, ShapedText, KeyHash> kept_;
};

} // namespace report
