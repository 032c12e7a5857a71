#include "calculation/planted_lines.h"

#include <array>
#include <cmath>

namespace calculationtest {

namespace {

struct Model
{
    cuts::Series series;
    // The openings that are made of this series.
    int leastWidth;
    int mostWidth;
    int leastHeight;
    int mostHeight;
};

/// Series of a workshop: hinged, tilting, sliding with two to six sashes, and into a pocket.
const std::array<Model, 8>& windowModels()
{
    static const std::array<Model, 8> models{{
        {{{{{-0.6, -0.6}, {-0.6, -0.6}, {-5.8, -5.8}, {0.0, 0.0}}}, 1.0}, 40, 200, 40, 200},
        {{{{{-0.6, -0.6}, {-4.2, -4.2}, {-16.4, -16.4}, {-5.6, -5.6}}}, 1.0}, 40, 100, 40, 160},
        {{{{{-0.6, -0.6}, {-5.0, -4.2}, {-29.2, -16.4}, {-6.4, -5.6}}}, 2.0}, 80, 160, 60, 160},
        {{{{{-0.6, -0.6}, {-2.8, -6.5}, {-19.6, -19.7}, {-2.4, -6.9}}}, 2.0}, 80, 240, 60, 160},
        {{{{{-0.6, -0.6}, {2.4, -6.5}, {-22.8, -19.7}, {3.0, -6.9}}}, 3.0}, 150, 300, 60, 220},
        {{{{{-0.8, -0.8}, {4.2, -7.8}, {-58.2, -24.6}, {5.4, -8.2}}}, 6.0}, 300, 600, 180, 240},
        {{{{{-0.6, -0.6}, {4.5, -5.9}, {-8.7, -19.1}, {4.9, -6.3}}}, 1.0}, 60, 140, 60, 160},
        {{{{{-1.0, -1.0}, {3.8, -5.2}, {-10.6, -19.6}, {4.2, -5.6}}}, 1.0}, 80, 120, 80, 120},
    }};
    return models;
}

} // namespace

cuts::LineFigures PlannedLine::figures() const
{
    cuts::LineFigures line;
    line.opening = opening;
    line.sashes = *series.kanafNum;
    line.isMonoblock = isMonoblock;
    cuts::Size base = opening;
    if (isMonoblock) {
        const cuts::Monoblock block{widthDeduct, heightDeduct, 12.7, 4.5};
        const cuts::Shutter shutter = cuts::shutter(opening, block);
        base = shutter.reduced;
        line.reduced = base;
        line.shutter = {shutter.uCut,        shutter.uVasa,
                        shutter.shalavWidth, std::nearbyint(cuts::shalavCount(opening, block)),
                        shutter.argaz.width, shutter.argaz.height};
    }
    for (const auto part : {cuts::Mashkof, cuts::Kanaf, cuts::Glass, cuts::Reshet})
        line.parts[part] = {cuts::cutWidth(series, part, base),
                            cuts::cutHeight(series, part, base)};
    if (isDoor) {
        const cuts::Size inner = cuts::doorOpening(opening, doorThickness);
        line.parts[cuts::Kanaf] = {cuts::cutWidth(series, cuts::Kanaf, inner),
                                   cuts::cutHeight(series, cuts::Kanaf, inner)};
        line.parts[cuts::Glass] = line.parts[cuts::Reshet] = {};
    }
    return line;
}

int Planner::number(int least, int most)
{
    // The distributions of the standard library differ between implementations.
    return least + int(random_() % unsigned(most - least + 1));
}

PlannedLine Planner::window()
{
    PlannedLine line;
    const Model& model = windowModels()[std::size_t(number(0, int(windowModels().size()) - 1))];
    line.series = model.series;
    line.opening.width = number(model.leastWidth, model.mostWidth) + number(0, 99) / 100.0;
    line.opening.height = number(model.leastHeight, model.mostHeight) + number(0, 99) / 100.0;
    line.isMonoblock = line.opening.height > 80 && number(1, 4) == 1;
    if (line.isMonoblock) {
        line.widthDeduct = number(0, 1) * 2.8;
        line.heightDeduct = number(0, 1) == 0 ? 18 : 28;
    }
    return line;
}

PlannedLine Planner::door()
{
    PlannedLine line;
    const bool isDouble = number(1, 4) == 1;
    line.series = {{{{0.0, 0.0}, {isDouble ? -1.4 : -0.8, -1.2}, {0.0, 0.0}, {0.0, 0.0}}},
                   isDouble ? 2.0 : 1.0};
    line.isDoor = true;
    line.opening = {double(isDouble ? number(120, 180) : number(70, 110)),
                    double(number(195, 240))};
    return line;
}

std::vector<PlannedLine> Planner::order()
{
    std::vector<PlannedLine> lines(std::size_t(number(4, 30)));
    for (PlannedLine& each : lines)
        each = number(1, 6) == 1 ? door() : window();
    return lines;
}

PlannedLine Planner::withSlip(PlannedLine line)
{
    double& measure = number(0, 1) == 0 ? line.opening.width : line.opening.height;
    const int kind = line.isDoor ? number(0, 4) : line.isMonoblock ? number(0, 3) : number(0, 2);
    if (kind == 3 && line.isDoor) {
        std::swap(line.opening.width, line.opening.height);
    } else if (kind == 3) {
        line.heightDeduct *= 10; // 180 for 18
    } else if (kind == 4) {
        line.doorThickness = 40; // 40 for 4
    } else if (kind == 2) {
        line.series.deductions[cuts::Kanaf].width = 120; // of another place, without its sign
    } else if (kind == 1 && measure < 100) {
        measure = std::floor(measure) * 10; // a digit too many
    } else if (measure >= 100 && number(0, 1) == 0) {
        measure = std::floor(measure / 100) + 0.2; // 1.20 for 120
    } else {
        measure = std::floor(measure / 10); // a digit too few
    }
    return line;
}

} // namespace calculationtest
