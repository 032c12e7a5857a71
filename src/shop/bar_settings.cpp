#include "shop/bar_settings.h"

#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

const std::array<QString, 7>& partNames()
{
    static const std::array<QString, 7> names{u"frame"_s, u"sash"_s, u"mesh"_s, u"guide"_s,
                                              u"slat"_s,  u"box"_s,  u"glass"_s};
    return names;
}

constexpr double longestBar = 100000;
constexpr double highestFactor = 1000;
constexpr double straightAngle = 180;

} // namespace

QString partName(Part part)
{
    return partNames()[static_cast<std::size_t>(part)];
}

QString sideName(Side side)
{
    return side == Side::Width ? u"width"_s : u"height"_s;
}

std::optional<Part> partNamed(const QString& name)
{
    for (std::size_t i = 0; i < partNames().size(); ++i) {
        if (partNames()[i] == name)
            return static_cast<Part>(i);
    }
    return {};
}

const std::vector<Part>& barParts()
{
    static const std::vector<Part> parts{Part::Frame, Part::Sash, Part::Mesh,
                                         Part::Guide, Part::Slat, Part::Box};
    return parts;
}

GroupKey fixedGroup(Part part)
{
    switch (part) {
    case Part::Guide:
        return {part, u"U"_s, {}};
    case Part::Slat:
        return {part, u"שלב"_s, {}};
    case Part::Box:
        return {part, u"ארגז"_s, {}};
    default:
        return {part, {}, {}};
    }
}

BarSettings defaultSettings(Part part)
{
    BarSettings settings;
    switch (part) {
    case Part::Frame:
        settings.door = {0.5, 1}; // no sill: one width, two heights
        break;
    case Part::Sash:
        settings.door = {2, 2}; // the count of a door is the number of its leaves
        break;
    case Part::Mesh:
    case Part::Guide:
        settings.window = settings.door = {2, 2};
        break;
    default:
        break;
    }
    return settings;
}

BarSettings settingsOf(const SettingsByGroup& settings, const GroupKey& group)
{
    const auto found = settings.find(group);
    return found == settings.end() ? defaultSettings(group.part) : found->second;
}

#define ZOMREL_SETTING(member)                                                                     \
    [](const BarSettings& s) { return s.member; }, [](BarSettings& s, double v) { s.member = v; }

const std::vector<SettingColumn>& settingColumns()
{
    static const std::vector<SettingColumn> columns{
        {u"barLength"_s, u"Bar_Length"_s, ZOMREL_SETTING(barLength), 0, longestBar, false},
        {u"kerf"_s, u"Kerf"_s, ZOMREL_SETTING(kerf), 0, longestBar, true},
        {u"trim"_s, u"Trim"_s, ZOMREL_SETTING(trim), 0, longestBar, true},
        {u"angle"_s, u"Angle"_s, ZOMREL_SETTING(angle), 0, straightAngle, false},
        {u"offcut"_s, u"Offcut"_s, ZOMREL_SETTING(offcut), 0, longestBar, true},
        {u"widthFactor"_s, u"Width_Factor"_s, ZOMREL_SETTING(window.width), 0, highestFactor, true},
        {u"heightFactor"_s, u"Height_Factor"_s, ZOMREL_SETTING(window.height), 0, highestFactor,
         true},
        {u"doorWidthFactor"_s, u"Door_Width_Factor"_s, ZOMREL_SETTING(door.width), 0, highestFactor,
         true},
        {u"doorHeightFactor"_s, u"Door_Height_Factor"_s, ZOMREL_SETTING(door.height), 0,
         highestFactor, true},
    };
    return columns;
}

#undef ZOMREL_SETTING

bool isAllowed(const SettingColumn& column, double value)
{
    if (!std::isfinite(value) || value > column.highest)
        return false;
    return column.includesLowest ? value >= column.lowest : value > column.lowest;
}

QString invalidField(const BarSettings& settings)
{
    for (const SettingColumn& column : settingColumns()) {
        if (!isAllowed(column, column.get(settings)))
            return column.field;
    }
    return settings.usable() > 0 ? QString() : u"Trim"_s;
}

QString rangeText(const SettingColumn& column)
{
    return (column.includesLowest ? u"a number from %1 to %2"_s
                                  : u"a number greater than %1, up to %2"_s)
        .arg(numberText(column.lowest), numberText(column.highest));
}

double withoutNoise(double number)
{
    constexpr double perUnit = 1e9;  // The inverse of lengthNoise, exactly.
    constexpr double exact = 0x1p53; // From here on, a number has no decimals to round.
    const double units = number * perUnit;
    return std::abs(units) < exact ? std::round(units) / perUnit : number;
}

QString numberText(double number)
{
    std::array<char, 400> digits{}; // the longest double has 309 digits before its point
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                                   number, std::chars_format::fixed);
    return QString::fromLatin1(digits.data(), end.ptr - digits.data());
}

QString computedNumber(double number)
{
    return numberText(withoutNoise(number));
}

} // namespace shop
