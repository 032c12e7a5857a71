#pragma once

#include <QString>

#include <map>
#include <optional>
#include <tuple>
#include <vector>

/// The shop pack: the documents that a workshop needs for cutting, such as lists of pieces and bar
/// plans. They are computed from the stored lines of orders.
namespace shop {

enum class Part { Frame, Sash, Mesh, Guide, Slat, Box, Glass };
enum class Side { Width, Height };

/// The functions partName and sideName return the names that data files contain: frame, sash, mesh,
/// guide, slat, box and glass, or width and height.
QString partName(Part part);
QString sideName(Side side);
/// Returns the part with this name, or nothing for an unknown name.
std::optional<Part> partNamed(const QString& name);

/// Returns the parts that are cut from bars, in the order in which the documents list them.
const std::vector<Part>& barParts();

/// Identifies a group of pieces. Pieces of the same part, profile and colour are one group and are
/// cut from the same bars. The profile is the stored kind of the part. A stored Null is an empty
/// text.
struct GroupKey
{
    Part part = Part::Frame;
    QString profile;
    QString colour;

    bool operator==(const GroupKey& other) const { return tied() == other.tied(); }
    bool operator<(const GroupKey& other) const { return tied() < other.tied(); }

private:
    std::tuple<Part, const QString&, const QString&> tied() const
    {
        return {part, profile, colour};
    }
};

/// Returns the group of a part that always has the same profile and no colour. Such a part is a
/// guide, slat or box.
GroupKey fixedGroup(Part part);

/// The number of pieces is the stored count of a part multiplied by a factor. There is one factor
/// for the widths and one for the heights.
struct Factors
{
    double width = 1;
    double height = 1;

    bool operator==(const Factors&) const = default;
};

/// The settings of the bars from which a group of pieces is cut. Lengths are in the measures' unit,
/// the angle is in degrees.
struct BarSettings
{
    double barLength = 600;
    double kerf = 0.5;  ///< The width of a cut.
    double trim = 1;    ///< The length that is cut off at each end of a bar.
    double angle = 90;  ///< For documents only; it does not change any length.
    double offcut = 60; ///< The shortest rest that is worth keeping.
    Factors window;
    Factors door;

    /// Returns the length of a bar that is available for pieces and for the kerfs between them.
    double usable() const { return barLength - 2 * trim; }
    bool operator==(const BarSettings&) const = default;
};

/// Returns the settings for the groups of pieces of a part that have no stored settings.
BarSettings defaultSettings(Part part);

/// The stored settings by group of pieces. It contains only the groups for which settings are
/// stored.
using SettingsByGroup = std::map<GroupKey, BarSettings>;

/// Returns the stored settings of a group of pieces. If the group has no stored settings, returns
/// the default settings of its part.
BarSettings settingsOf(const SettingsByGroup& settings, const GroupKey& group);

/// Describes one of the numbers in BarSettings: its column in the settings file, its field in the
/// store's table zomrel_bars, and its range.
struct SettingColumn
{
    QString column;
    QString field;
    double (*get)(const BarSettings&);
    void (*set)(BarSettings&, double);
    double lowest;
    double highest;
    bool includesLowest;
};

/// Returns the descriptions of all numbers, in the column order of the settings file and of the
/// store's table zomrel_bars.
const std::vector<SettingColumn>& settingColumns();

/// Returns true if the number is finite and within the range of the column.
bool isAllowed(const SettingColumn& column, double value);
/// Returns the field name of the first invalid number in the settings, or an empty text if all
/// numbers are valid. If the trims at both ends use up the whole bar, returns the field name of the
/// trim.
QString invalidField(const BarSettings& settings);
/// Returns a text that describes the range of the column.
QString rangeText(const SettingColumn& column);

/// Two lengths that differ by less than this value are treated as equal, because the difference is
/// floating-point noise.
constexpr double lengthNoise = 1e-9;

/// Returns a number rounded to nine decimals, because further decimals are floating-point noise.
/// Totals, areas and all printed numbers are rounded in this way. Data files contain the stored
/// lengths and sizes with all their digits.
double withoutNoise(double number);

/// Returns the shortest decimal text without exponent that reads back as the same number.
QString numberText(double number);
/// Returns the text of the number rounded by withoutNoise.
QString computedNumber(double number);

} // namespace shop
