#include "crash/recording_vfs.h"

#include "crash/recorder.h"

#include <cstring>
#include <new>
#include <sqlite3.h>
#include <stdexcept>

namespace crash {

namespace {

bool keepsFull = false;

/// An open file, followed in memory by the file of the engine's own VFS.
struct RecordedFile
{
    sqlite3_file base{};
    bool isRecorded = false;
    struct stat status = {};
};

RecordedFile& recorded(sqlite3_file* file)
{
    return *reinterpret_cast<RecordedFile*>(file);
}

sqlite3_file* actual(sqlite3_file* file)
{
    return reinterpret_cast<sqlite3_file*>(&recorded(file) + 1);
}

/// Calls a method of the engine's own file.
template <typename Method, typename... Arguments>
int pass(sqlite3_file* file, Method method, Arguments... arguments)
{
    const InsideVfs guard;
    return (actual(file)->pMethods->*method)(actual(file), arguments...);
}

template <auto method, typename... Arguments>
int passOn(sqlite3_file* file, Arguments... arguments)
{
    return pass(file, method, arguments...);
}

int closeFile(sqlite3_file* file)
{
    return pass(file, &sqlite3_io_methods::xClose);
}

int writeFile(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 position)
{
    const int result = pass(file, &sqlite3_io_methods::xWrite, bytes, size, position);
    if (result == SQLITE_OK && recorded(file).isRecorded)
        Recorder::instance().addWrite(recorded(file).status, position, bytes,
                                      static_cast<std::size_t>(size));
    return result;
}

int resizeFile(sqlite3_file* file, sqlite3_int64 size)
{
    const int result = pass(file, &sqlite3_io_methods::xTruncate, size);
    if (result == SQLITE_OK && recorded(file).isRecorded)
        Recorder::instance().addResize(recorded(file).status, size);
    return result;
}

/// The engine's own VFS syncs the file first and then perhaps its folder.
int syncFile(sqlite3_file* file, int flags)
{
    if (recorded(file).isRecorded)
        Recorder::instance().addSync(recorded(file).status);
    return pass(file, &sqlite3_io_methods::xSync, flags);
}

int controlFile(sqlite3_file* file, int operation, void* argument)
{
    if (operation == SQLITE_FCNTL_PRAGMA && keepsFull) {
        auto** const words = static_cast<char**>(argument);
        if (std::strcmp(words[1], "synchronous") == 0) {
            if (words[2] == nullptr)
                words[0] = sqlite3_mprintf("3"); // EXTRA
            return SQLITE_OK;
        }
    }
    return pass(file, &sqlite3_io_methods::xFileControl, operation, argument);
}

const sqlite3_io_methods& methods()
{
    static const sqlite3_io_methods all = [] {
        sqlite3_io_methods own{};
        own.iVersion = 1; // neither shared memory nor memory mapping
        own.xClose = closeFile;
        own.xRead = passOn<&sqlite3_io_methods::xRead, void*, int, sqlite3_int64>;
        own.xWrite = writeFile;
        own.xTruncate = resizeFile;
        own.xSync = syncFile;
        own.xFileSize = passOn<&sqlite3_io_methods::xFileSize, sqlite3_int64*>;
        own.xLock = passOn<&sqlite3_io_methods::xLock, int>;
        own.xUnlock = passOn<&sqlite3_io_methods::xUnlock, int>;
        own.xCheckReservedLock = passOn<&sqlite3_io_methods::xCheckReservedLock, int*>;
        own.xFileControl = controlFile;
        own.xSectorSize = passOn<&sqlite3_io_methods::xSectorSize>;
        own.xDeviceCharacteristics = passOn<&sqlite3_io_methods::xDeviceCharacteristics>;
        return own;
    }();
    return all;
}

sqlite3_vfs* actual(sqlite3_vfs* vfs)
{
    return static_cast<sqlite3_vfs*>(vfs->pAppData);
}

int openFile(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* outFlags)
{
    Recorder& recorder = Recorder::instance();
    auto* const own = new (file) RecordedFile;
    const auto name = path == nullptr ? std::nullopt : recorder.inside(path);
    struct stat before = {};
    const bool isNew = name && stat(path, &before) != 0;
    const InsideVfs guard;
    const int result = actual(vfs)->xOpen(actual(vfs), path, actual(file), flags, outFlags);
    if (actual(file)->pMethods != nullptr)
        own->base.pMethods = &methods();
    if (result != SQLITE_OK || !name || !recorder.isRecording())
        return result;
    own->isRecorded = stat(path, &own->status) == 0;
    if (isNew)
        recorder.addNewFile(*name, own->status);
    return result;
}

/// The engine's own VFS removes the file first and then perhaps syncs its folder.
int removeFile(sqlite3_vfs* vfs, const char* path, int syncsFolder)
{
    Recorder& recorder = Recorder::instance();
    const auto name = recorder.inside(path);
    struct stat status = {};
    if (name && recorder.isRecording() && stat(path, &status) == 0)
        recorder.addRemoval(*name);
    const InsideVfs guard;
    return actual(vfs)->xDelete(actual(vfs), path, syncsFolder);
}

} // namespace

void useRecordingVfs()
{
    static sqlite3_vfs vfs = [] {
        sqlite3_vfs* const engine = sqlite3_vfs_find(nullptr);
        if (engine == nullptr)
            throw std::runtime_error("SQLite has no VFS");
        sqlite3_vfs own = *engine;
        own.pNext = nullptr;
        own.pAppData = engine;
        own.zName = "recording";
        own.szOsFile = static_cast<int>(sizeof(RecordedFile)) + engine->szOsFile;
        own.xOpen = openFile;
        own.xDelete = removeFile;
        return own;
    }();
    sqlite3_vfs_register(&vfs, 1);
}

FullInsteadOfExtra::FullInsteadOfExtra()
{
    keepsFull = true;
}

FullInsteadOfExtra::~FullInsteadOfExtra()
{
    keepsFull = false;
}

} // namespace crash
