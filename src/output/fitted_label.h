#pragma once

#include "platform/report/shaped_text.h"

#include <QLabel>

namespace output {

/// A label that draws its text as paper does: condensed, set smaller or cut with an ellipsis where
/// it is wider than the label. It reads in the label's layout direction.
class FittedLabel : public QLabel
{
public:
    explicit FittedLabel(QWidget* parent) : QLabel(parent) {}

    /// The text as it is drawn, in twips.
    report::ShapedText shapedText() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace output
