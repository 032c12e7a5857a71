#include "support/small_disk.h"

#include <QByteArray>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>

using namespace Qt::StringLiterals;

namespace testsupport {

SmallDisk::SmallDisk(qint64 bytes)
{
    // The disk is mounted in a separate mount namespace, so that it disappears with the process in
    // every case.
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return;
    const QByteArray place = QFile::encodeName(path());
    const QByteArray options = "mode=0755,size=" + QByteArray::number(bytes);
    isThere_ = mount("tmpfs", place.constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (isThere_)
        umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
}

void SmallDisk::fill() const
{
    QFile file(path() + u"/filler"_s);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("%s", qPrintable(file.errorString()));
    for (const QByteArray& block : {QByteArray(1 << 20, 'f'), QByteArray(1 << 12, 'f')}) {
        while (file.write(block) > 0)
            ;
    }
}

void SmallDisk::empty() const
{
    QFile::remove(path() + u"/filler"_s);
}

} // namespace testsupport
