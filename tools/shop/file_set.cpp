#include "tools/shop/file_set.h"

#include "platform/runtime/durable_file.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/unfinished_file.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <chrono>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;
using storetools::UnfinishedFile;

namespace shoptools {

namespace {

constexpr std::chrono::seconds waitForOthers(30);
constexpr unsigned long pauseMilliseconds = 20;

[[noreturn]] void refuse(const QString& path, const QString& why)
{
    throw RunTimeError(runtime::PermissionDenied, u"Could not write '%1': %2"_s.arg(path, why));
}

/// Marks the folder, so that other processes wait until the mark is released.
std::unique_ptr<runtime::FolderMark> mark(const QString& folder)
{
    const QString path = QDir(folder).canonicalPath();
    const QDeadlineTimer deadline(waitForOthers);
    for (;;) {
        auto marked = std::make_unique<runtime::FolderMark>(path);
        if (marked->isValid())
            return marked;
        if (deadline.hasExpired())
            refuse(folder, u"the folder is not readable, or another process is writing there"_s);
        QThread::msleep(pauseMilliseconds);
    }
}

std::unique_ptr<UnfinishedFile> written(const QString& path, const QByteArray& contents)
{
    const QString target = runtime::followLinks(path);
    if (QFileInfo(target).isDir())
        refuse(path, u"a folder has this name"_s);
    auto file = std::make_unique<UnfinishedFile>(target, runtime::Readers::AsUsual);
    QBuffer source;
    source.setData(contents);
    source.open(QIODevice::ReadOnly);
    file->fill(source);
    return file;
}

} // namespace

void writeFiles(const QString& folder, const QMap<QString, QByteArray>& files)
{
    if (!QDir().mkpath(folder))
        refuse(folder, u"the folder cannot be created"_s);
    const std::unique_ptr<runtime::FolderMark> marked = mark(folder);
    std::vector<std::unique_ptr<UnfinishedFile>> complete;
    for (auto each = files.cbegin(); each != files.cend(); ++each)
        complete.push_back(written(QDir(folder).filePath(each.key()), each.value()));
    for (const std::unique_ptr<UnfinishedFile>& each : complete)
        each->putInPlace(runtime::Existing::Replace);
}

} // namespace shoptools
