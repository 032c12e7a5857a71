#pragma once

#include "platform/report/shaped_text.h"

#include <QLabel>

namespace output {

/// A label that fits its text in the same way as the printed report does. A text that is wider than
/// the label is condensed, reduced in size or truncated with an ellipsis. The layout direction of
/// the label is the reading direction of the text.
class FittedLabel : public QLabel
{
public:
    explicit FittedLabel(QWidget* parent) : QLabel(parent) {}

    /// Returns the text of the label, laid out in lines as the label draws it. All sizes and
    /// positions in the result are in twips.
    report::ShapedText shapedText() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace output
