#pragma once

#include "platform/report/shaped_text.h"

#include <QLabel>

namespace output {

/// A label that fits its text in the same way as the printed report: a text wider than the label is
/// condensed, reduced in size or truncated with an ellipsis. The reading direction is the label's
/// layout direction.
class FittedLabel : public QLabel
{
public:
    explicit FittedLabel(QWidget* parent) : QLabel(parent) {}

    /// Returns the text as drawn, measured in twips.
    report::ShapedText shapedText() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace output
