#pragma once

#include "crash/record.h"

#include <random>
#include <set>

namespace crash {

/// How much of the unsynced data a power cut removes.
enum class Loss {
    Everything, ///< All that was not synced is lost.
    Nothing,    ///< The disk has received all of it.
    Entries,    ///< Contents are lost, changes of folders are kept.
    Contents,   ///< Contents are kept, changes of folders are lost.
    Some,       ///< A random part of it is lost.
};

/// A disk with a volatile cache. The README of this folder states the model.
class Disk
{
public:
    explicit Disk(const Record& record);

    void apply(const Step& step);
    /// Returns the files that a power cut may leave at this moment.
    Image afterPowerCut(Loss loss, std::mt19937_64& random) const;
    /// Returns true if nothing waits to be synced, so that a power cut changes nothing.
    bool isSettled() const;

private:
    /// A write or a new size that was not synced.
    struct Change
    {
        std::int64_t position = 0;
        std::string bytes;
        bool isResize = false;
    };
    struct File
    {
        std::string synced;
        std::vector<Change> waiting;
    };
    using Entries = std::map<std::string, FileId>;

    static void applyEntry(Entries& entries, const Step& step);
    void syncFolder(const std::string& folder);
    static void applyWhole(std::string& contents, const Change& change);
    static std::vector<std::size_t> sizesOf(const File& file);
    static std::string keepSome(const File& file, std::mt19937_64& random);

    std::map<FileId, File> files_;
    Entries syncedEntries_;
    std::vector<Step> waitingEntries_;
};

} // namespace crash
