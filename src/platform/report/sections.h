#pragma once

#include "platform/report/design.h"

#include <QImage>
#include <QString>

#include <vector>

namespace report {

/// A control of a report with the properties that can be set at run time.
class Control
{
public:
    explicit Control(const ControlDesign& design);

    const ControlDesign& design() const { return *design_; }
    const QString& Caption() const { return caption_; }
    /// Returns true if the caption has been set at run time, even if the caption is the same text
    /// as in the design.
    bool isCaptionSet() const { return isCaptionSet_; }
    /// Sets the caption of a label. Throws InvalidProcedureCall (5) if the control is not a label.
    void setCaption(const QString& caption);
    const QImage& Picture() const { return picture_; }
    /// Sets the picture of an image control. The picture is scaled to fit the control, keeps its
    /// proportions and is centred. A null image leaves the control blank. Throws
    /// InvalidProcedureCall (5) if the control is not an image.
    void setPicture(const QImage& picture);

private:
    const ControlDesign* design_;
    QString caption_;
    bool isCaptionSet_ = false;
    QImage picture_;
};

/// A section of a report. Its controls are in the order of the design.
class Section
{
public:
    explicit Section(const SectionDesign& design);

    const SectionDesign& design() const { return *design_; }
    /// Returns the control with this name. Names are case-sensitive. The reference is valid while
    /// the section exists. Throws InvalidProcedureCall (5) for an unknown name.
    Control& Controls(const QString& name);
    const std::vector<Control>& controls() const { return controls_; }

private:
    const SectionDesign* design_;
    std::vector<Control> controls_;
};

std::vector<Section> makeSections(const ReportDesign& design);

} // namespace report
