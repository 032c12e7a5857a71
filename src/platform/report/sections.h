#pragma once

#include "platform/report/design.h"

#include <QImage>
#include <QString>

#include <vector>

namespace report {

/// What the run time may set of one control.
class Control
{
public:
    explicit Control(const ControlDesign& design);

    const ControlDesign& design() const { return *design_; }
    const QString& Caption() const { return caption_; }
    /// Whether the caption has been set at run time, even to the text of the design.
    bool isCaptionSet() const { return isCaptionSet_; }
    /// Raises 5 where the control is no label.
    void setCaption(const QString& caption);
    const QImage& Picture() const { return picture_; }
    /// Raises 5 where the control is no image. The picture is fitted into the control, centred, its
    /// proportions kept; an empty one leaves the control blank.
    void setPicture(const QImage& picture);

private:
    const ControlDesign* design_;
    QString caption_;
    bool isCaptionSet_ = false;
    QImage picture_;
};

/// One band of a report with its controls in the order of the design.
class Section
{
public:
    explicit Section(const SectionDesign& design);

    const SectionDesign& design() const { return *design_; }
    /// The control with the name, spelled as in the design. Raises 5 where there is none. The
    /// reference lives as long as the section.
    Control& Controls(const QString& name);
    const std::vector<Control>& controls() const { return controls_; }

private:
    const SectionDesign* design_;
    std::vector<Control> controls_;
};

std::vector<Section> makeSections(const ReportDesign& design);

} // namespace report
