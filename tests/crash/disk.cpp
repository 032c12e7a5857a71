#include "crash/disk.h"

#include <algorithm>

namespace crash {

namespace {

constexpr std::size_t sectorSize = 512;
constexpr std::size_t sectorsOfAPage = 8;
constexpr FileId folderEntry = -1;

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

bool changes(const Step& step, const std::string& folder)
{
    return folderOf(step.path) == folder ||
           (step.kind == Step::Kind::Rename && folderOf(step.newPath) == folder);
}

std::size_t below(std::size_t limit, std::mt19937_64& random)
{
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

/// Which sectors of which waiting writes reach the disk.
class Luck
{
public:
    Luck(std::size_t writes, std::mt19937_64& random)
        : kind_(static_cast<Kind>(below(kinds, random))), first_(below(writes + 1, random)),
          random_(random)
    {
    }

    /// Starts the next write.
    void beginWrite(std::size_t index)
    {
        index_ = index;
        isKept_ = below(2, random_) == 1;
        sectorsKept_ = below(sectorsOfAPage + 2, random_);
    }
    /// Returns true if this sector of the write is kept; sectors are asked for in ascending order.
    bool keepsSector()
    {
        switch (kind_) {
        case Kind::FirstWrites:
            return index_ < first_;
        case Kind::AnyWrites:
            return isKept_;
        case Kind::TornWrites:
            return isKept_ || (sectorsKept_ > 0 && sectorsKept_-- > 0);
        case Kind::AnySectors:
            return below(2, random_) == 1;
        }
        return false;
    }

private:
    enum class Kind { FirstWrites, AnyWrites, TornWrites, AnySectors };
    static constexpr std::size_t kinds = 4;

    Kind kind_;
    std::size_t first_;
    std::mt19937_64& random_;
    std::size_t index_ = 0;
    bool isKept_ = false;
    std::size_t sectorsKept_ = 0;
};

} // namespace

Disk::Disk(const Record& record) : syncedEntries_(record.entries)
{
    for (const auto& [file, contents] : record.contents)
        files_[file].synced = contents;
}

void Disk::apply(const Step& step)
{
    switch (step.kind) {
    case Step::Kind::Write:
        files_[step.file].waiting.push_back({step.position, step.bytes, false});
        break;
    case Step::Kind::Resize:
        files_[step.file].waiting.push_back({step.position, {}, true});
        break;
    case Step::Kind::SyncFile:
        for (const Change& change : files_[step.file].waiting)
            applyWhole(files_[step.file].synced, change);
        files_[step.file].waiting.clear();
        break;
    case Step::Kind::SyncFolder:
        syncFolder(step.path);
        break;
    default:
        waitingEntries_.push_back(step);
    }
}

bool Disk::isSettled() const
{
    return waitingEntries_.empty() &&
           std::all_of(files_.begin(), files_.end(),
                       [](const auto& each) { return each.second.waiting.empty(); });
}

/// Changes of folders reach the disk in the order in which they were made. If the last change of
/// this folder is on the disk, all earlier ones are, too.
void Disk::syncFolder(const std::string& folder)
{
    const auto last =
        std::find_if(waitingEntries_.rbegin(), waitingEntries_.rend(), [&](const Step& step) {
            return changes(step, folder);
        }).base();
    for (auto step = waitingEntries_.begin(); step != last; ++step)
        applyEntry(syncedEntries_, *step);
    waitingEntries_.erase(waitingEntries_.begin(), last);
}

void Disk::applyEntry(Entries& entries, const Step& step)
{
    switch (step.kind) {
    case Step::Kind::AddEntry:
        entries[step.path] = step.file;
        break;
    case Step::Kind::AddFolder:
        entries[step.path] = folderEntry;
        break;
    case Step::Kind::Rename:
        entries[step.newPath] = entries[step.path];
        [[fallthrough]];
    default:
        entries.erase(step.path);
    }
}

void Disk::applyWhole(std::string& contents, const Change& change)
{
    const auto position = static_cast<std::size_t>(change.position);
    if (change.isResize) {
        contents.resize(position);
        return;
    }
    contents.resize(std::max(contents.size(), position + change.bytes.size()));
    contents.replace(position, change.bytes.size(), change.bytes);
}

/// Returns the size of the file as it was synced and after each waiting write.
std::vector<std::size_t> Disk::sizesOf(const File& file)
{
    std::vector<std::size_t> sizes{file.synced.size()};
    for (const Change& change : file.waiting) {
        const auto position = static_cast<std::size_t>(change.position);
        sizes.push_back(change.isResize ? position
                                        : std::max(sizes.back(), position + change.bytes.size()));
    }
    return sizes;
}

/// Each sector is as it was after one of the waiting writes that touch it, or as it was synced. The
/// size is the one before or after any of the waiting writes.
std::string Disk::keepSome(const File& file, std::mt19937_64& random)
{
    if (file.waiting.empty())
        return file.synced;
    const std::vector<std::size_t> sizes = sizesOf(file);
    std::map<std::size_t, std::size_t> keptBy; // by sector, the last write that is kept
    Luck luck(file.waiting.size(), random);
    for (std::size_t i = 0; i < file.waiting.size(); ++i) {
        const Change& change = file.waiting[i];
        const auto position = static_cast<std::size_t>(change.position);
        const std::size_t end =
            change.isResize ? std::max(sizes[i], sizes[i + 1]) : position + change.bytes.size();
        luck.beginWrite(i);
        for (std::size_t s = position / sectorSize; s * sectorSize < end; ++s) {
            if (luck.keepsSector())
                keptBy[s] = i;
        }
    }
    std::string kept = file.synced;
    kept.resize(*std::max_element(sizes.begin(), sizes.end()));
    std::string current = kept;
    for (std::size_t i = 0; i < file.waiting.size(); ++i) {
        applyWhole(current, file.waiting[i]);
        current.resize(kept.size());
        for (const auto& [sector, write] : keptBy) {
            if (write == i && sector * sectorSize < kept.size())
                kept.replace(sector * sectorSize, sectorSize, current, sector * sectorSize,
                             sectorSize);
        }
    }
    kept.resize(sizes[below(sizes.size(), random)]);
    return kept;
}

Image Disk::afterPowerCut(Loss loss, std::mt19937_64& random) const
{
    const bool keepsEntries = loss == Loss::Nothing || loss == Loss::Entries;
    const bool keepsContents = loss == Loss::Nothing || loss == Loss::Contents;
    std::size_t entriesKept = keepsEntries ? waitingEntries_.size() : 0;
    if (loss == Loss::Some)
        entriesKept = below(waitingEntries_.size() + 1, random);
    Entries entries = syncedEntries_;
    for (std::size_t i = 0; i < entriesKept; ++i)
        applyEntry(entries, waitingEntries_[i]);
    std::map<FileId, std::string> contents; // two names of a file show the same contents
    Image image;
    for (const auto& [path, id] : entries) {
        const auto file = files_.find(id);
        if (id == folderEntry || file == files_.end())
            continue;
        if (!contents.contains(id)) {
            std::string& bytes = contents[id] = file->second.synced;
            if (loss == Loss::Some)
                bytes = keepSome(file->second, random);
            else if (keepsContents)
                for (const Change& change : file->second.waiting)
                    applyWhole(bytes, change);
        }
        image[path] = contents[id];
    }
    return image;
}

} // namespace crash
