#include "shop/pieces.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

bool isZero(const std::optional<double>& size)
{
    return size && *size == 0;
}

bool isSet(const std::optional<double>& size)
{
    return size && *size != 0;
}

/// Returns true if a piece of this length can be cut: the length is finite and not below the noise
/// of floating-point numbers.
bool isLength(double size)
{
    return size >= lengthNoise && std::isfinite(size);
}

/// Returns true for vowel points and direction marks, which do not change a word.
bool isInvisible(QChar character)
{
    return character.isMark() || character.category() == QChar::Other_Format;
}

/// Returns true for an apostrophe or a quotation mark. Between letters, such a mark is part of a
/// Hebrew abbreviation.
bool isQuote(QChar character)
{
    return character == u'\'' || character == u'"' || character == u'\u05F3' ||
           character == u'\u05F4';
}

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber() || character == u'_' || character.isSurrogate();
}

/// The length and count for one part and side of an order line, with the names of the fields that
/// contain them.
struct Source
{
    Side side;
    const char* lengthField;
    std::optional<double> length;
    const char* countField;
    std::optional<int> count;
};

/// Adds an order line's pieces, panes and faults (reasons for missing pieces) to the result.
class LineReader
{
public:
    LineReader(const OrderLine& line, const SettingsByGroup& settings, Pieces& result)
        : line_(line), isDoor_(shop::isDoor(line)), settings_(settings), result_(result)
    {
    }

    void read()
    {
        const OrderLine& line = line_;
        addPart(Part::Frame, line.frame, "Mashkof_W", "Mashkof_H", "Mahkof_Count");
        addPart(Part::Sash, line.sash, "Kanaf_W", "Kanaf_H", "Kanaf_Count");
        if (!isDoor_) {
            addPart(Part::Mesh, line.mesh, "Reshet_W", "Reshet_H", "Reshet_Count");
            addPanes(line.mesh, result_.mesh);
        }
        if (shop::isMonoblock(line))
            addShutter();
        if (!isDoor_) {
            addPaneFaults();
            addPanes(line.glass, result_.glass);
        }
    }

private:
    void addFault(Part part, Side side, Fault::Reason reason, const char* field, double value = 0,
                  double limit = 0)
    {
        result_.faults.push_back({line_.order, line_.line, part, side, reason,
                                  QString::fromLatin1(field), value, limit});
    }

    /// Returns true if the length and the count in `source` are valid and the count is not 0. If
    /// one of them is invalid, adds a fault that names the reason. A count of 0 is never a fault.
    bool isUsable(Part part, const Source& source)
    {
        if (source.count && *source.count == 0)
            return false;
        if (!source.length)
            addFault(part, source.side, Fault::Reason::IsNull, source.lengthField);
        else if (!source.count)
            addFault(part, source.side, Fault::Reason::IsNull, source.countField);
        else if (!isLength(*source.length))
            addFault(part, source.side, Fault::Reason::NotAboveZero, source.lengthField,
                     *source.length);
        else if (*source.count < 0)
            addFault(part, source.side, Fault::Reason::NegativeCount, source.countField,
                     *source.count);
        else if (*source.count > mostPieces)
            addFault(part, source.side, Fault::Reason::TooMany, source.countField, *source.count,
                     mostPieces);
        else
            return true;
        return false;
    }

    void addPieces(const GroupKey& group, const Source& source)
    {
        if (!isUsable(group.part, source))
            return;
        const BarSettings settings = settingsOf(settings_, group);
        const Factors& factors = isDoor_ ? settings.door : settings.window;
        const double factor = source.side == Side::Width ? factors.width : factors.height;
        const double count = std::ceil(*source.count * factor - lengthNoise);
        if (count < 1)
            return;
        if (*source.length > settings.usable() + lengthNoise)
            return addFault(group.part, source.side, Fault::Reason::TooLong, source.lengthField,
                            *source.length, settings.usable());
        if (count > mostPieces)
            return addFault(group.part, source.side, Fault::Reason::TooMany, source.countField,
                            count, mostPieces);
        const Piece piece{line_.order, line_.line, source.side, group, *source.length};
        result_.pieces.insert(result_.pieces.end(), static_cast<std::size_t>(count), piece);
    }

    void addPart(Part part, const PartOfLine& stored, const char* widthField,
                 const char* heightField, const char* countField)
    {
        if (isNotMade(stored.kind))
            return;
        const GroupKey group{part, stored.kind, stored.colour};
        addPieces(group, {Side::Width, widthField, stored.width, countField, stored.count});
        addPieces(group, {Side::Height, heightField, stored.height, countField, stored.count});
    }

    void addShutter()
    {
        const GroupKey guide = fixedGroup(Part::Guide);
        addPieces(guide, {Side::Height, "U_Cut", line_.uCut, "U_Cut", 1});
        addPieces(guide, {Side::Height, "U_Vasa", line_.uVasa, "U_Vasa", 1});
        addPieces(fixedGroup(Part::Slat),
                  {Side::Width, "Shalav_Width", line_.slatWidth, "Shalav_Count", line_.slatCount});
        addPieces(fixedGroup(Part::Box),
                  {Side::Width, "Argaz_Width", line_.boxWidth, "Argaz_Width", 1});
    }

    /// Adds the faults (missing or invalid numbers) of the panes of glass. Panels of mesh need no
    /// check, because addPart checks the same fields for the bars of the mesh.
    void addPaneFaults()
    {
        const PartOfLine& glass = line_.glass;
        if (isNotMade(glass.kind))
            return;
        isUsable(Part::Glass, {Side::Width, "Glass_W", glass.width, "Glass_Count", glass.count});
        isUsable(Part::Glass, {Side::Height, "Glass_H", glass.height, "Glass_Count", glass.count});
    }

    void addPanes(const PartOfLine& stored, std::vector<Pane>& panes) const
    {
        const int count = stored.count.value_or(0);
        if (isNotMade(stored.kind) || !isLength(stored.width.value_or(0)) ||
            !isLength(stored.height.value_or(0)) || count < 1 || count > mostPieces)
            return;
        panes.push_back({line_.order, line_.line, *stored.width, *stored.height, count, stored.kind,
                         stored.colour});
    }

    const OrderLine& line_;
    bool isDoor_;
    const SettingsByGroup& settings_;
    Pieces& result_;
};

} // namespace

bool isDoor(const OrderLine& line)
{
    return isZero(line.glass.width) && isZero(line.glass.height) && isZero(line.mesh.width) &&
           isZero(line.mesh.height);
}

bool isMonoblock(const OrderLine& line)
{
    return isSet(line.uCut) || isSet(line.uVasa) || isSet(line.slatWidth) || isSet(line.boxWidth);
}

bool isNotMade(const QString& kind)
{
    QString visible;
    for (const QChar each : kind.trimmed()) {
        if (!isInvisible(each))
            visible.append(each);
    }
    visible = visible.trimmed();
    const QString without = u"ללא"_s;
    if (!visible.startsWith(without))
        return false;
    const QStringView rest = QStringView(visible).mid(without.size());
    if (rest.isEmpty())
        return true;
    if (isQuote(rest[0]))
        return rest.size() == 1 || !isWordCharacter(rest[1]);
    return !isWordCharacter(rest[0]);
}

QString reasonText(const Fault& fault)
{
    switch (fault.reason) {
    case Fault::Reason::IsNull:
        return u"%1 is Null"_s.arg(fault.field);
    case Fault::Reason::NotAboveZero:
        return u"%1 is %2; a length must be greater than 0"_s.arg(fault.field,
                                                                  numberText(fault.value));
    case Fault::Reason::TooLong:
        return u"%1 is %2; the longest piece of a bar is %3"_s.arg(
            fault.field, numberText(fault.value), numberText(fault.limit));
    case Fault::Reason::NegativeCount:
        return u"%1 is %2; a count must not be negative"_s.arg(fault.field,
                                                               numberText(fault.value));
    case Fault::Reason::TooMany:
        break;
    }
    return u"%1 results in %2 pieces, more than %3"_s.arg(fault.field, numberText(fault.value),
                                                          numberText(fault.limit));
}

QString faultText(const Fault& fault)
{
    return u"order %1, line %2, %3, %4: %5"_s.arg(fault.order)
        .arg(fault.line)
        .arg(partName(fault.part), sideName(fault.side), reasonText(fault));
}

Pieces piecesOf(const std::vector<OrderLine>& lines, const SettingsByGroup& settings)
{
    Pieces result;
    for (const OrderLine& line : lines)
        LineReader(line, settings, result).read();
    return result;
}

} // namespace shop
