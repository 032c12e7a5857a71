#pragma once

#include "crash/record.h"

#include <optional>
#include <sys/stat.h>

namespace crash {

/// The kinds of requests that can fail.
enum class Request { Open, Write, Resize, Sync, Rename, Remove, Lock };

/// A disk that fails.
struct Failure
{
    int error = 0;      ///< The error number, such as EIO.
    int call = 0;       ///< The number of the first failing call, from 1. 0: none fails.
    bool stays = false; ///< All later calls fail as well.
};

/// Records what this process does in one folder, and lets calls fail there. The recording VFS and
/// the system calls of this program report to it. There is one in each process.
class Recorder
{
public:
    static Recorder& instance();

    /// Starts a new record of a folder.
    void start(const std::string& folder);
    /// Ends the record and returns it. Throws std::runtime_error if the steps do not lead to the
    /// files that lie in the folder, that is, if a step was missed.
    Record stop();
    /// Returns the number of steps recorded so far.
    std::size_t position() const { return record_.steps.size(); }

    /// Counts the calls in a folder from now on and lets some of them fail.
    void failIn(const std::string& folder, const Failure& failure);
    /// Ends the failures.
    void endFailing() { failure_ = {}; }
    /// Returns true if some call has failed since failIn.
    bool hasFailed() const { return hasFailed_; }
    /// Counts a call. Returns the error with which it has to fail, or 0.
    int errorFor(Request request);

    /// Returns the path relative to the watched folder, or nothing for another path.
    std::optional<std::string> inside(const std::string& path) const;
    bool isRecording() const { return isRecording_; }

    /// Functions that add a step. A file is identified by its device and inode.
    void addEntry(const std::string& path, const struct stat& file);
    void addNewFile(const std::string& path, const struct stat& file);
    void addFolder(const std::string& path);
    void addRename(const std::string& from, const std::string& to);
    void addRemoval(const std::string& path);
    void addWrite(const struct stat& file, std::int64_t position, const void* bytes,
                  std::size_t size);
    void addResize(const struct stat& file, std::int64_t size);
    void addSync(const struct stat& file);
    void addFolderSync(const std::string& path);

private:
    FileId idOf(const struct stat& file);
    void add(const Step& step);

    std::string folder_;
    bool isRecording_ = false;
    Record record_;
    std::map<std::pair<dev_t, ino_t>, FileId> ids_;
    FileId nextId_ = 1;

    Failure failure_;
    int calls_ = 0;
    bool hasFailed_ = false;
};

/// While one of these exists, the system calls record only what happens to folders, because the
/// recording VFS records what happens to its files.
class InsideVfs
{
public:
    InsideVfs() { ++depth; }
    ~InsideVfs() { --depth; }
    InsideVfs(const InsideVfs&) = delete;
    InsideVfs& operator=(const InsideVfs&) = delete;
    static bool isActive() { return depth > 0; }

private:
    static int depth;
};

} // namespace crash
