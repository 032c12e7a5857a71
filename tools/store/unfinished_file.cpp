#include "tools/store/unfinished_file.h"

#include "tools/store/random_name.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

[[noreturn]] void raise(const QString& path, const QFile& file)
{
    const int number = file.error() == QFileDevice::ResourceError ? runtime::DiskFull
                                                                  : runtime::DiskOrNetworkError;
    throw ToldError(number, say(couldNotWrite, path, file.errorString()));
}

} // namespace

QString unfinishedPrefix()
{
    return u".zomrel-store-"_s;
}

void removeLeftFiles(const QString& folder)
{
    const QStringList left = QDir(folder).entryList(
        {unfinishedPrefix() + u'*'}, QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks);
    for (const QString& each : left)
        runtime::removeIfLeft(folder + u'/' + each);
}

UnfinishedFile::UnfinishedFile(const QString& path, runtime::Readers readers) : finalPath_(path)
{
    const QString folder = QFileInfo(path).absolutePath();
    removeLeftFiles(folder);
    createUnderRandomName(folder + u'/' + unfinishedPrefix(), [&](const QString& name) {
        path_ = name;
        return runtime::createFile(file_, name, readers);
    });
}

UnfinishedFile::~UnfinishedFile()
{
    file_.close();
    if (!isFinished_)
        QFile::remove(path_);
}

void UnfinishedFile::fill(QIODevice& source)
{
    constexpr qint64 blockSize = 1 << 20;
    while (!source.atEnd()) {
        const QByteArray block = source.read(blockSize);
        if (block.isEmpty())
            throw RunTimeError(runtime::DiskOrNetworkError);
        if (file_.write(block) != block.size())
            raise(finalPath_, file_);
    }
    if (!file_.flush())
        raise(finalPath_, file_);
}

void UnfinishedFile::fill(const QString& sourcePath)
{
    QFile source(sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        throw ToldError(runtime::PermissionDenied,
                        say(couldNotRead, sourcePath, source.errorString()));
    fill(source);
}

void UnfinishedFile::putInPlace(runtime::Existing existing)
{
    runtime::durableRename(file_, path_, finalPath_, existing);
    isFinished_ = true;
}

} // namespace storetools
