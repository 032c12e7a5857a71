#pragma once

#include <QString>

#include <map>
#include <optional>
#include <tuple>
#include <vector>

/// The shop pack: pieces, bar plans and lists, computed from the stored lines of orders.
namespace shop {

enum class Part { Frame, Sash, Mesh, Guide, Slat, Box, Glass };
enum class Side { Width, Height };

/// Return the names that data files contain: frame, sash, mesh, guide, slat, box, glass; width,
/// height.
QString partName(Part part);
QString sideName(Side side);
/// Returns the part with this name, or nothing for an unknown name.
std::optional<Part> partNamed(const QString& name);

/// Returns the parts that are cut from bars, in the order of the documents.
const std::vector<Part>& barParts();

/// Pieces of the same part, profile and colour are cut from the same bars. The profile is the
/// part's kind. Texts are as stored; a Null is an empty text.
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

/// Returns the group of a part that always has the same profile and no colour: guide, slat or box.
GroupKey fixedGroup(Part part);

/// The number of pieces per counted piece, for each direction.
struct Factors
{
    double width = 1;
    double height = 1;

    bool operator==(const Factors&) const = default;
};

/// The settings of a group's bars. Lengths are in the unit of the stored measures, the angle is in
/// degrees.
struct BarSettings
{
    double barLength = 600;
    double kerf = 0.5;  ///< The width of a cut.
    double trim = 1;    ///< The length that is cut off at each end of a bar.
    double angle = 90;  ///< For documents only; it does not change any length.
    double offcut = 60; ///< The shortest rest that is worth keeping.
    Factors window;
    Factors door;

    /// Returns the length available for pieces and the kerfs between them.
    double usable() const { return barLength - 2 * trim; }
    bool operator==(const BarSettings&) const = default;
};

/// Returns the settings of a group that has none of its own.
BarSettings defaultSettings(Part part);

/// The settings of the groups that have their own.
using SettingsByGroup = std::map<GroupKey, BarSettings>;

/// Returns the group's own settings. If it has none, returns the default settings of the group's
/// part.
BarSettings settingsOf(const SettingsByGroup& settings, const GroupKey& group);

/// One of the numbers of BarSettings: its column in the settings file, its field in the store's
/// table and its range.
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

/// Returns the columns in the order of the file and of the table.
const std::vector<SettingColumn>& settingColumns();

/// Returns true if the number is finite and within the range of the column.
bool isAllowed(const SettingColumn& column, double value);
/// Returns the field of the first invalid number, or an empty text. If both trims use up the whole
/// bar, this is the field of the trim.
QString invalidField(const BarSettings& settings);
/// Returns the range of the column in words.
QString rangeText(const SettingColumn& column);

/// Lengths that differ by less than this are equal, because the difference is floating-point noise.
constexpr double lengthNoise = 1e-9;

/// Returns a number rounded to nine decimals, because everything beyond is floating-point noise.
/// Totals and areas are computed with it, and paper shows all numbers so. Data files contain the
/// stored lengths and sizes with all their digits.
double withoutNoise(double number);

/// Returns the shortest decimal text without exponent that reads back as the same number.
QString numberText(double number);
/// Returns the text of withoutNoise.
QString computedNumber(double number);

} // namespace shop
