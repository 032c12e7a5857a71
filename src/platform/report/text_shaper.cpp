#include "platform/report/text_shaper.h"

#include "platform/report/report_text.h"

#include <functional>

namespace report {

namespace {

/// Maximum number of cached texts, enough for a few pages.
constexpr std::size_t keptTexts = 1024;

bool isRightToLeft(const ControlDesign& control)
{
    return (control.style & Style::RightToLeft) != 0;
}

} // namespace

TextShaper::TextShaper(QStringView fontFamily, std::span<const SectionDesign> sections)
    : family_(fontFamily.toString()), sections_(sections)
{
}

const QFont& TextShaper::font(const ControlDesign& control)
{
    const bool bold = (control.style & Style::Bold) != 0;
    const auto found = fonts_.find({control.points, bold});
    if (found != fonts_.end())
        return found->second;
    return fonts_.emplace(std::pair(control.points, bold), twipFont(family_, control.points, bold))
        .first->second;
}

std::span<const ControlDesign> TextShaper::neighboursOf(const ControlDesign& control) const
{
    for (const SectionDesign& section : sections_) {
        const auto& controls = section.controls;
        // Pointers into different arrays may only be compared with std::less, not with the operator
        // <.
        if (!controls.empty() && !std::less<>()(&control, &controls.front()) &&
            !std::less<>()(&controls.back(), &control))
            return controls;
    }
    return {};
}

const TextFrame& TextShaper::frame(const ControlDesign& control)
{
    const auto found = frames_.find(&control);
    if (found != frames_.end())
        return found->second;
    const auto captionWidth = [this](const ControlDesign& caption) {
        const DisplayText display = displayText(caption.text.toString(), isRightToLeft(caption));
        return textWidth(display.text, display.rightToLeft, font(caption));
    };
    const TextFrame frame{.width = double(control.width),
                          .height = double(control.height),
                          .free = freeExtent(control, neighboursOf(control), captionWidth),
                          .align = control.align,
                          .rightToLeft = isRightToLeft(control)};
    return frames_.emplace(&control, frame).first->second;
}

const ShapedText& TextShaper::shaped(const ControlDesign& control, const QString& text)
{
    const auto found = kept_.find({&control, text});
    if (found != kept_.end())
        return found->second;
    if (kept_.size() >= keptTexts)
        kept_.clear();
    return kept_.emplace(Key{&control, text}, shapedText(frame(control), text, font(control)))
        .first->second;
}

} // namespace report
