#include "crash/recorder.h"

#include "crash/disk.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace crash {

int InsideVfs::depth = 0;

Recorder& Recorder::instance()
{
    // Never destroyed, because system calls come until the very end of the process.
    static auto* const recorder = new Recorder;
    return *recorder;
}

void Recorder::start(const std::string& folder)
{
    record_ = {};
    ids_.clear();
    nextId_ = 1;
    for (const auto& [path, bytes] : readFolder(folder)) {
        struct stat file = {};
        if (stat((folder + '/' + path).c_str(), &file) != 0)
            throw std::runtime_error("cannot look at " + path);
        const FileId id = idOf(file);
        record_.entries[path] = id;
        record_.contents[id] = bytes;
    }
    folder_ = folder;
    isRecording_ = true;
}

Record Recorder::stop()
{
    isRecording_ = false;
    Disk disk(record_);
    for (const Step& step : record_.steps)
        disk.apply(step);
    std::mt19937_64 random(0);
    if (disk.afterPowerCut(Loss::Nothing, random) != readFolder(folder_))
        throw std::runtime_error("the record of " + folder_ + " misses a step");
    return std::move(record_);
}

void Recorder::failIn(const std::string& folder, const Failure& failure)
{
    folder_ = folder;
    failure_ = failure;
    calls_ = 0;
    hasFailed_ = false;
}

namespace {

/// Returns true if such a request can fail with this error.
bool canFailWith(Request request, int error)
{
    switch (error) {
    case ENOLCK:
        return request == Request::Lock;
    case ENOSPC:
        return request != Request::Lock && request != Request::Remove;
    default:
        return true;
    }
}

} // namespace

int Recorder::errorFor(Request request)
{
    if (failure_.error == 0 || !canFailWith(request, failure_.error))
        return 0;
    ++calls_;
    if (failure_.call == 0 || calls_ < failure_.call || (calls_ > failure_.call && !failure_.stays))
        return 0;
    hasFailed_ = true;
    return failure_.error;
}

std::optional<std::string> Recorder::inside(const std::string& path) const
{
    if (folder_.empty() || path.compare(0, folder_.size(), folder_) != 0)
        return {};
    if (path.size() == folder_.size())
        return std::string();
    if (path[folder_.size()] != '/')
        return {};
    return fs::path(path.substr(folder_.size() + 1)).lexically_normal().string();
}

FileId Recorder::idOf(const struct stat& file)
{
    const auto [found, isNew] = ids_.try_emplace({file.st_dev, file.st_ino}, nextId_);
    if (isNew)
        ++nextId_;
    return found->second;
}

void Recorder::add(const Step& step)
{
    if (isRecording_)
        record_.steps.push_back(step);
}

void Recorder::addEntry(const std::string& path, const struct stat& file)
{
    add({.kind = Step::Kind::AddEntry, .file = idOf(file), .path = path});
}

/// The inode of a removed file may be used again.
void Recorder::addNewFile(const std::string& path, const struct stat& file)
{
    ids_.erase({file.st_dev, file.st_ino});
    addEntry(path, file);
}

void Recorder::addFolder(const std::string& path)
{
    add({.kind = Step::Kind::AddFolder, .path = path});
}

void Recorder::addRename(const std::string& from, const std::string& to)
{
    add({.kind = Step::Kind::Rename, .path = from, .newPath = to});
}

void Recorder::addRemoval(const std::string& path)
{
    add({.kind = Step::Kind::RemoveEntry, .path = path});
}

void Recorder::addWrite(const struct stat& file, std::int64_t position, const void* bytes,
                        std::size_t size)
{
    add({.kind = Step::Kind::Write,
         .file = idOf(file),
         .position = position,
         .bytes = std::string(static_cast<const char*>(bytes), size)});
}

void Recorder::addResize(const struct stat& file, std::int64_t size)
{
    add({.kind = Step::Kind::Resize, .file = idOf(file), .position = size});
}

void Recorder::addSync(const struct stat& file)
{
    add({.kind = Step::Kind::SyncFile, .file = idOf(file)});
}

void Recorder::addFolderSync(const std::string& path)
{
    add({.kind = Step::Kind::SyncFolder, .path = path});
}

} // namespace crash
