#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Simulation of power cuts: what was asked of the disk is recorded, and every state that a power
/// cut may leave is computed from the record.
namespace crash {

/// A file as opposed to its names. Two names of one file share the number.
using FileId = int;

/// A successful request to the file system. Paths are relative to the recorded folder.
struct Step
{
    enum class Kind {
        AddEntry,    ///< `path` becomes a name of `file`.
        AddFolder,   ///< `path` becomes a folder.
        Rename,      ///< `path` becomes `newPath` and replaces what was there.
        RemoveEntry, ///< The file or folder `path` is removed.
        Write,       ///< `bytes` are written to `file` at `position`.
        Resize,      ///< `file` gets the size `position`.
        SyncFile,    ///< The contents of `file` are on the disk.
        SyncFolder,  ///< The entries of the folder `path` are on the disk.
    };

    Kind kind = Kind::SyncFile;
    FileId file = 0;
    std::string path{};
    std::string newPath{};
    std::int64_t position = 0;
    std::string bytes{};
};

/// Returns one line that describes the step.
std::string describe(const Step& step);

/// The files of a folder by relative path.
using Image = std::map<std::string, std::string>;

/// The steps of a process in one folder and the files that lay there before.
struct Record
{
    std::map<std::string, FileId> entries;
    std::map<FileId, std::string> contents;
    std::vector<Step> steps;
};

/// Reads and writes whole folders.
Image readFolder(const std::string& folder);
void writeFolder(const std::string& folder, const Image& image);

} // namespace crash
