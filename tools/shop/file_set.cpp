#include "tools/shop/file_set.h"

#include "platform/runtime/durable_file.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/random_name.h"
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

/// Reserves the folder for this process. While another process has reserved the folder, waits until
/// that process releases it. Throws PermissionDenied (3051) if waiting takes too long.
std::unique_ptr<runtime::FolderMark> mark(const QString& folder)
{
    const QString path = QDir(folder).canonicalPath();
    const QDeadlineTimer deadline(waitForOthers);
    for (;;) {
        auto marked = std::make_unique<runtime::FolderMark>(path);
        if (marked->isValid())
            return marked;
        requireWritable(folder);
        if (deadline.hasExpired())
            refuse(folder, u"another process is writing there"_s);
        QThread::msleep(pauseMilliseconds);
    }
}

/// A file that gets its name only when its contents are complete. On a file system that does not
/// support files without a name, the file has a random name until then.
class CompleteFile
{
public:
    CompleteFile(const QString& path, const QByteArray& contents)
        : path_(runtime::followLinks(path))
    {
        if (QFileInfo(path_).isDir())
            refuse(path, u"a folder has this name"_s);
        if (!runtime::createUnnamedFile(unnamed_, folder(), runtime::Readers::AsUsual))
            fillNamed(contents);
        else if (unnamed_.write(contents) != contents.size())
            refuse(path, unnamed_.errorString());
        else
            runtime::syncFile(unnamed_, path_);
    }

    void putInPlace()
    {
        if (named_) {
            named_->putInPlace(runtime::Existing::Replace);
            return;
        }
        if (!runtime::nameFile(unnamed_, path_))
            replacePrevious();
        runtime::syncFolder(folder());
    }

private:
    QString folder() const { return QFileInfo(path_).absolutePath(); }

    /// Replaces the existing file at the final path by the new file, which has no name yet. Only a
    /// file with a name can replace another file, so the new file first gets a random name.
    void replacePrevious()
    {
        const QString beginning = folder() + u'/' + storetools::unfinishedPrefix();
        QString name;
        storetools::createUnderRandomName(beginning, [&](const QString& each) {
            name = each;
            return runtime::nameFile(unnamed_, name);
        });
        try {
            runtime::replaceFile(name, path_);
        } catch (const RunTimeError&) {
            QFile::remove(name);
            throw;
        }
    }

    void fillNamed(const QByteArray& contents)
    {
        named_ = std::make_unique<UnfinishedFile>(path_, runtime::Readers::AsUsual);
        QBuffer source;
        source.setData(contents);
        source.open(QIODevice::ReadOnly);
        named_->fill(source);
        runtime::syncFile(named_->file(), path_);
    }

    QString path_;
    QFile unnamed_;
    std::unique_ptr<UnfinishedFile> named_;
};

} // namespace

void requireWritable(const QString& folder)
{
    QFileInfo place(QDir(folder).absolutePath());
    const bool exists = place.exists();
    while (!place.exists() && !place.isRoot())
        place.setFile(place.path());
    if (!place.isDir())
        refuse(folder, u"'%1' is not a folder"_s.arg(place.filePath()));
    if (!runtime::mayWriteInFolder(place.filePath()))
        refuse(folder,
               exists ? u"the folder is not writable"_s : u"the folder cannot be created"_s);
    if (exists && !runtime::mayReadFolder(place.filePath()))
        refuse(folder, u"the folder is not readable"_s);
}

void writeFiles(const QString& folder, const QMap<QString, QByteArray>& files)
{
    requireWritable(folder);
    if (!QDir().mkpath(folder))
        refuse(folder, u"the folder cannot be created"_s);
    const std::unique_ptr<runtime::FolderMark> marked = mark(folder);
    storetools::removeLeftFiles(QDir(folder).canonicalPath());
    std::vector<std::unique_ptr<CompleteFile>> complete;
    for (auto each = files.cbegin(); each != files.cend(); ++each)
        complete.push_back(
            std::make_unique<CompleteFile>(QDir(folder).filePath(each.key()), each.value()));
    for (const std::unique_ptr<CompleteFile>& each : complete)
        each->putInPlace();
}

} // namespace shoptools
