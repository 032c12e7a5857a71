#include "tools/store/line_figures.h"

#include "calculation/cuts.h"
#include "store/schema.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// The amounts, in the measures' unit, by which slats are narrower than the opening, for a thick
/// and for a thin U-profile. A U-profile with the thickness 6.5 is thick, and any other one is
/// thin.
constexpr double thickProfile = 6.5;
constexpr double thickProfileDeduction = 12.7;
constexpr double thinProfileDeduction = 10.3;

std::optional<double> known(const StoredFields& fields, const QString& name)
{
    const QVariant value = fields.value(name);
    return value.isValid() ? std::optional(value.toDouble()) : std::nullopt;
}

double numberIn(const StoredFields& fields, const QString& name)
{
    return known(fields, name).value_or(0);
}

cuts::Series seriesOf(const StoredFields& fields)
{
    cuts::Series series;
    const QStringList& names = store::deductionFields();
    for (qsizetype part = 0; part < cuts::PartCount; ++part) {
        series.deductions[std::size_t(part)] = {known(fields, names[2 * part]),
                                                known(fields, names[2 * part + 1])};
    }
    series.kanafNum = known(fields, u"Kanaf_Num"_s);
    return series;
}

/// An order line with the stored fields and the series from which its figures can be computed
/// again.
class Line
{
public:
    Line(const StoredFields& stored, const StoredFields& series)
        : stored_(stored),
          series_(seriesOf(series)), opening_{number(u"MyWidth"_s), number(u"MYHeight"_s)},
          isMonoblock_(stored.value(u"Kind"_s).toString() != u"אור"),
          isDoor_(series.value(u"Sign"_s).toString() == "d2000"_L1)
    {
    }

    std::vector<Figure> figures() const
    {
        std::vector<Figure> all;
        addCuts(all);
        addCounts(all);
        addReduced(all);
        addShutter(all);
        return all;
    }

private:
    double number(const QString& field) const { return numberIn(stored_, field); }

    cuts::Size doorOpening() const { return cuts::doorOpening(opening_, number(u"U_Thick"_s)); }

    cuts::Monoblock monoblock() const
    {
        const bool isThick = number(u"U_Thick"_s) == thickProfile;
        return {.widthDeduct = opening_.width - number(u"MyWidth_2"_s),
                .heightDeduct = number(u"Argaz_Height"_s),
                .shalavWidthDeduct = isThick ? thickProfileDeduction : thinProfileDeduction,
                .shalavThick = number(u"Shalav_Thick"_s)};
    }

    void addCuts(std::vector<Figure>& all) const
    {
        const QStringList& names = store::deductionFields();
        for (qsizetype each = 0; each < cuts::PartCount; ++each) {
            const auto part = static_cast<cuts::Part>(each);
            const bool isBare = isDoor_ && part > cuts::Kanaf;
            const cuts::Size base = baseOf(part);
            // The cut width of a monoblock door's frame is not computed, because it depends on a
            // deduction that the order line does not store.
            if (!(isDoor_ && isMonoblock_ && part == cuts::Mashkof))
                all.emplace_back(names[2 * each], isBare ? 0 : cuts::cutWidth(series_, part, base));
            all.emplace_back(names[2 * each + 1],
                             isBare ? 0 : cuts::cutHeight(series_, part, base));
        }
    }

    cuts::Size baseOf(cuts::Part part) const
    {
        if (isDoor_ && part == cuts::Kanaf)
            return doorOpening();
        if (!isMonoblock_)
            return opening_;
        return {number(u"MyWidth_2"_s), opening_.height - number(u"Argaz_Height"_s)};
    }

    void addCounts(std::vector<Figure>& all) const
    {
        const double sashes = series_.kanafNum.value_or(0);
        all.emplace_back(u"Mahkof_Count"_s, 2);
        all.emplace_back(u"Kanaf_Count"_s, isDoor_ ? sashes : 2 * sashes);
        all.emplace_back(u"Glass_Count"_s, sashes);
        all.emplace_back(u"Reshet_Count"_s, sashes);
    }

    void addReduced(std::vector<Figure>& all) const
    {
        if (isDoor_) {
            const cuts::Size door = doorOpening();
            all.emplace_back(u"MyWidth_2"_s, door.width);
            all.emplace_back(u"MYHeight_2"_s, door.height);
        } else if (isMonoblock_) {
            all.emplace_back(u"MYHeight_2"_s, opening_.height - number(u"Argaz_Height"_s));
        } else {
            for (const QString& field : {u"MyWidth_2"_s, u"MYHeight_2"_s, u"U_Thick"_s})
                all.emplace_back(field, 0);
        }
    }

    void addShutter(std::vector<Figure>& all) const
    {
        if (!isMonoblock_) {
            for (const QString& field :
                 {u"U_Cut"_s, u"U_Vasa"_s, u"Shalav_Thick"_s, u"Shalav_Width"_s, u"Shalav_Count"_s,
                  u"Argaz_Width"_s, u"Argaz_Height"_s})
                all.emplace_back(field, 0);
            return;
        }
        const cuts::Shutter shutter = cuts::shutter(opening_, monoblock());
        all.emplace_back(u"U_Cut"_s, shutter.uCut);
        all.emplace_back(u"U_Vasa"_s, shutter.uVasa);
        if (!isDoor_) // a door's frame has replaced the thickness of the profile
            all.emplace_back(u"Shalav_Width"_s, shutter.shalavWidth);
        all.emplace_back(u"Shalav_Count"_s,
                         std::nearbyint(cuts::shalavCount(opening_, monoblock())));
        all.emplace_back(u"Argaz_Width"_s, shutter.argaz.width);
    }

    const StoredFields& stored_;
    cuts::Series series_;
    cuts::Size opening_;
    bool isMonoblock_;
    bool isDoor_;
};

} // namespace

std::vector<Figure> figuresOf(const StoredFields& line, const StoredFields& series)
{
    return Line(line, series).figures();
}

} // namespace storetools
