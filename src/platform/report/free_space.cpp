#include "platform/report/free_space.h"

#include <algorithm>

namespace report {

namespace {

/// Returns the distance between a boxed control's border and its text. The distance is `clearance`,
/// or a tenth of the control's width if that is less.
double borderInset(const ControlDesign& control)
{
    return std::min(clearance, control.width / 10.0);
}

bool isBoxed(const ControlDesign& control)
{
    return (control.style & Style::Boxed) != 0;
}

/// Returns true if the two controls overlap vertically by at least half of the smaller height.
bool standSideBySide(const ControlDesign& a, const ControlDesign& b)
{
    const int shared = std::min(a.top + a.height, b.top + b.height) - std::max(a.top, b.top);
    return shared > 0 && 2 * shared >= std::min(a.height, b.height);
}

/// Returns true if the two controls overlap horizontally or if the distance between them is less
/// than `clearance`.
bool isNear(const ControlDesign& control, const ControlDesign& neighbour)
{
    return neighbour.left < control.left + control.width + clearance &&
           neighbour.left + neighbour.width > control.left - clearance;
}

/// Returns the left and right end of a caption's text, in twips from the left edge of the section.
Extent captionInk(const ControlDesign& caption, double naturalWidth)
{
    const double width = std::min<double>(naturalWidth, caption.width);
    switch (caption.align) {
    case Align::Left:
        return {double(caption.left), caption.left + width};
    case Align::Right:
        return {caption.left + caption.width - width, double(caption.left + caption.width)};
    case Align::Centre:
        break;
    }
    const double middle = caption.left + caption.width / 2.0;
    return {middle - width / 2, middle + width / 2};
}

/// The horizontal range that the text of a field may occupy. Each adjacent caption, border or line
/// makes the range smaller, because the text must keep a distance from it.
class FreeSpace
{
public:
    explicit FreeSpace(const ControlDesign& field)
        : left_(field.left), right_(field.left + field.width), middle_((left_ + right_) / 2)
    {
    }

    void keepFrom(double x) { keepFrom({x, x}); }
    void keepFrom(const Extent& ink)
    {
        if ((ink.left + ink.right) / 2 < middle_)
            left_ = std::max(left_, ink.right + clearance);
        else
            right_ = std::min(right_, ink.left - clearance);
    }
    double left() const { return left_; }
    double right() const { return right_; }

private:
    double left_;
    double right_;
    double middle_;
};

void keepFromNeighbour(FreeSpace& space, const ControlDesign& neighbour,
                       const CaptionWidth& captionWidth)
{
    if (neighbour.kind == Kind::Line && neighbour.width == 0)
        space.keepFrom(neighbour.left);
    if (isBoxed(neighbour)) {
        space.keepFrom(neighbour.left);
        space.keepFrom(neighbour.left + neighbour.width);
    } else if (neighbour.kind == Kind::Label && !neighbour.text.isEmpty()) {
        space.keepFrom(captionInk(neighbour, captionWidth(neighbour)));
    }
}

} // namespace

double usableWidth(const Extent& free, double width, Align align)
{
    if (align != Align::Centre)
        return free.right - free.left;
    return 2 * std::min(width / 2 - free.left, free.right - width / 2);
}

Extent freeExtent(const ControlDesign& control, std::span<const ControlDesign> section,
                  const CaptionWidth& captionWidth)
{
    const double inset = isBoxed(control) ? borderInset(control) : 0;
    const Extent own{inset, control.width - inset};
    if (control.kind != Kind::Field)
        return own;
    FreeSpace space(control);
    for (const ControlDesign& neighbour : section) {
        if (&neighbour != &control && isNear(control, neighbour) &&
            standSideBySide(control, neighbour))
            keepFromNeighbour(space, neighbour, captionWidth);
    }
    const Extent free{std::max(own.left, space.left() - control.left),
                      std::min(own.right, space.right() - control.left)};
    return 2 * usableWidth(free, control.width, control.align) >= control.width ? free : own;
}

} // namespace report
