#pragma once

namespace crash {

/// Makes the recording VFS the default of SQLite in this process. It passes every request to the
/// engine's own VFS and records writes, new sizes, syncs and removals of the files.
void useRecordingVfs();

/// While one of these exists, the VFS ignores the setting of `synchronous` that a new connection
/// asks for, so that the engine works with its default FULL, and reports EXTRA when asked.
class FullInsteadOfExtra
{
public:
    FullInsteadOfExtra();
    ~FullInsteadOfExtra();
    FullInsteadOfExtra(const FullInsteadOfExtra&) = delete;
    FullInsteadOfExtra& operator=(const FullInsteadOfExtra&) = delete;
};

} // namespace crash
