#include "shop/settings_file.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"
#include "shop/bar_table.h"
#include "shop/csv.h"
#include "shop/pieces.h"
#include "shop/store_snapshot.h"
#include "store/schema.h"

#include <algorithm>
#include <array>
#include <set>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

constexpr qsizetype textColumns = 3;

/// Where the kinds and colours of one part are stored: in its lookup tables, and in two fields of
/// an order line.
struct Names
{
    Part part;
    std::size_t list; ///< The position in store::partLists().
    QString kindField;
    QString colourField;
};

const std::array<Names, 3>& namedParts()
{
    static const std::array<Names, 3> parts{{{Part::Frame, 0, u"Mashof_Kind"_s, u"Mahkof_Color"_s},
                                             {Part::Sash, 1, u"Kanaf_Kind"_s, u"Kanaf_Color"_s},
                                             {Part::Mesh, 3, u"Reshet_Kind"_s, u"Reshet_Color"_s}}};
    return parts;
}

QStringList namesIn(dao::Database& database, const QString& table)
{
    QStringList names;
    const auto rows = database.OpenRecordset(table, dao::dbOpenDynaset);
    for (; !rows->isEof(); rows->MoveNext()) {
        const QString name = rows->Fields(u"Name"_s).Value().toString();
        if (!name.isEmpty() && !names.contains(name))
            names.append(name);
    }
    return names;
}

/// A list of groups of pieces in the order in which they were added, without duplicates.
class Groups
{
public:
    void add(const GroupKey& group)
    {
        if (!isNotMade(group.profile) && known_.insert(group).second)
            groups_.push_back(group);
    }
    void add(const std::set<GroupKey>& groups)
    {
        for (const GroupKey& each : groups)
            add(each);
    }
    std::vector<GroupKey> take() { return std::move(groups_); }

private:
    std::vector<GroupKey> groups_;
    std::set<GroupKey> known_;
};

/// Returns the groups that occur in the order lines, for frame, sash and mesh. The lines are read
/// page by page, because a store may contain a hundred thousand of them.
std::array<std::set<GroupKey>, 3> groupsOfLines(dao::Database& database)
{
    std::array<std::pair<std::size_t, std::size_t>, 3> columns;
    const std::vector<dao::FieldInfo> fields =
        database.OpenRecordset(u"Cuts"_s, dao::dbOpenTable)->fieldInfos();
    const auto columnOf = [&](const QString& name) {
        const auto found = std::ranges::find_if(fields, [&](const dao::FieldInfo& each) {
            return each.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (found == fields.end())
            throw runtime::RunTimeError(runtime::ItemNotFound,
                                        u"Cuts has no field '%1'."_s.arg(name));
        return static_cast<std::size_t>(found - fields.begin());
    };
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i] = {columnOf(namedParts()[i].kindField), columnOf(namedParts()[i].colourField)};
    std::array<std::set<GroupKey>, 3> groups;
    dao::examineRows(database, u"Cuts"_s, [&](const dao::ExaminedRow& row) {
        for (std::size_t i = 0; i < groups.size(); ++i)
            groups[i].insert({namedParts()[i].part, row.values[columns[i].first].toString(),
                              row.values[columns[i].second].toString()});
    });
    return groups;
}

std::vector<GroupKey> groupsOf(dao::Database& database)
{
    const std::array<std::set<GroupKey>, 3> ofLines = groupsOfLines(database);
    Groups groups;
    for (std::size_t i = 0; i < namedParts().size(); ++i) {
        const Names& names = namedParts()[i];
        const store::PartLists& lists = store::partLists()[names.list];
        QStringList colours = namesIn(database, lists.colorTable);
        if (colours.isEmpty())
            colours.append(QString()); // A kind without a colour has a row, too.
        for (const QString& kind : namesIn(database, lists.kindTable)) {
            for (const QString& colour : colours)
                groups.add({names.part, kind, colour});
        }
        groups.add(ofLines[i]);
    }
    for (const Part part : {Part::Guide, Part::Slat, Part::Box})
        groups.add(fixedGroup(part));
    return groups.take();
}

QStringList heading()
{
    QStringList names{u"part"_s, u"profile"_s, u"colour"_s};
    for (const SettingColumn& column : settingColumns())
        names.append(column.column);
    return names;
}

qsizetype trimColumn()
{
    return heading().indexOf(u"trim"_s);
}

bool isGuarded(const QString& text)
{
    qsizetype first = 0;
    while (first < text.size() && text[first] == u'\'')
        ++first;
    const QString rest = text.mid(first);
    return textCell(rest) != rest;
}

/// Returns the cell for a text. A text that a spreadsheet would read as a formula gets a leading
/// apostrophe. A formula that already has leading apostrophes gets another one, so that unguarded()
/// can restore every text.
QString guarded(const QString& text)
{
    return isGuarded(text) ? u'\'' + text : text;
}

QString unguarded(const QString& cell)
{
    return cell.startsWith(u'\'') && isGuarded(cell) ? cell.mid(1) : cell;
}

bool isBlank(const QStringList& cells)
{
    return std::ranges::all_of(cells, [](const QString& each) { return each.trimmed().isEmpty(); });
}

/// Reads the settings of bars from the rows of a settings file and collects the errors in the rows.
class Intake
{
public:
    explicit Intake(const std::vector<GroupKey>& known) : known_(known.begin(), known.end()) {}

    SettingsIntake read(const QList<QStringList>& rows)
    {
        if (rows.isEmpty() || rows.front() != heading()) {
            result_.findings.append(u"row 1: the heading must be %1"_s.arg(heading().join(u',')));
            return std::move(result_);
        }
        for (row_ = 2; row_ <= rows.size(); ++row_) {
            if (!isBlank(rows[row_ - 1]))
                take(rows[row_ - 1]);
        }
        if (!result_.findings.isEmpty())
            result_.settings.clear();
        return std::move(result_);
    }

private:
    void refuse(const QString& column, const QString& value, const QString& why)
    {
        result_.findings.append(u"row %1, %2, '%3': %4"_s.arg(row_).arg(column, value, why));
    }

    void take(const QStringList& cells)
    {
        if (cells.size() != heading().size()) {
            result_.findings.append(u"row %1: has %2 cells instead of %3"_s.arg(row_)
                                        .arg(cells.size())
                                        .arg(heading().size()));
            return;
        }
        const std::optional<GroupKey> group = groupIn(cells);
        const BarSettings settings = settingsIn(cells);
        if (!group)
            return;
        if (!result_.settings.emplace(*group, settings).second)
            refuse(u"profile"_s, cells[1], u"another row has the same part, profile and colour"_s);
    }

    std::optional<GroupKey> groupIn(const QStringList& cells)
    {
        const std::optional<Part> part = partNamed(cells[0]);
        if (!part || *part == Part::Glass) {
            refuse(u"part"_s, cells[0], u"unknown part"_s);
            return {};
        }
        const GroupKey group{*part, unguarded(cells[1]), unguarded(cells[2])};
        if (known_.contains(group))
            return group;
        const bool isProfile = std::any_of(known_.begin(), known_.end(), [&](const auto& each) {
            return each.part == group.part && each.profile == group.profile;
        });
        if (isProfile)
            refuse(u"colour"_s, cells[2], u"the profile does not exist in this colour"_s);
        else
            refuse(u"profile"_s, cells[1], u"unknown profile"_s);
        return {};
    }

    BarSettings settingsIn(const QStringList& cells)
    {
        BarSettings settings;
        const qsizetype before = result_.findings.size();
        qsizetype cell = textColumns;
        for (const SettingColumn& column : settingColumns()) {
            const QString& text = cells[cell++];
            bool isNumber = false;
            const double value = text.toDouble(&isNumber);
            if (!isNumber || !isAllowed(column, value))
                refuse(column.column, text, u"must be %1"_s.arg(rangeText(column)));
            else
                column.set(settings, value);
        }
        if (result_.findings.size() == before && !(settings.usable() > 0))
            refuse(u"trim"_s, cells[trimColumn()], u"both trims use up the whole bar"_s);
        return settings;
    }

    std::set<GroupKey> known_;
    qsizetype row_ = 0;
    SettingsIntake result_;
};

} // namespace

StoredBars readStoredBars(const QString& path)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    const StoreSnapshot snapshot(*database);
    return {groupsOf(*database), readBarTable(*database)};
}

std::vector<GroupKey> readBarGroups(const QString& path)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    const StoreSnapshot snapshot(*database);
    return groupsOf(*database);
}

QByteArray settingsFile(const StoredBars& bars)
{
    QList<QStringList> rows{heading()};
    for (const GroupKey& group : bars.groups) {
        QStringList row{partName(group.part), guarded(group.profile), guarded(group.colour)};
        const BarSettings settings = settingsOf(bars.settings, group);
        for (const SettingColumn& column : settingColumns())
            row.append(numberText(column.get(settings)));
        rows.append(row);
    }
    return csvText(rows);
}

SettingsIntake readSettingsFile(const QByteArray& file, const std::vector<GroupKey>& known)
{
    const std::optional<QList<QStringList>> rows = readCsv(file);
    if (!rows)
        return {{}, {u"the file is not CSV in UTF-8"_s}};
    return Intake(known).read(*rows);
}

} // namespace shop
