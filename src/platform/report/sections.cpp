#include "platform/report/sections.h"

#include "platform/runtime/run_time_error.h"

#include <algorithm>

namespace report {

using runtime::RunTimeError;

Control::Control(const ControlDesign& design) : design_(&design)
{
    if (design.kind == Kind::Label)
        caption_ = design.text.toString();
}

void Control::setCaption(const QString& caption)
{
    if (design_->kind != Kind::Label)
        throw RunTimeError(runtime::InvalidProcedureCall);
    caption_ = caption;
    isCaptionSet_ = true;
}

void Control::setPicture(const QImage& picture)
{
    if (design_->kind != Kind::Image)
        throw RunTimeError(runtime::InvalidProcedureCall);
    picture_ = picture;
}

Section::Section(const SectionDesign& design) : design_(&design)
{
    controls_.reserve(design.controls.size());
    for (const ControlDesign& control : design.controls)
        controls_.emplace_back(control);
}

Control& Section::Controls(const QString& name)
{
    const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const Control& each) {
        return each.design().name == name;
    });
    if (found == controls_.end())
        throw RunTimeError(runtime::InvalidProcedureCall);
    return *found;
}

std::vector<Section> makeSections(const ReportDesign& design)
{
    std::vector<Section> sections;
    sections.reserve(design.sections.size());
    for (const SectionDesign& section : design.sections)
        sections.emplace_back(section);
    return sections;
}

} // namespace report
