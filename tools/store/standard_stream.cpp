#include "tools/store/standard_stream.h"

#include "tools/store/language.h"
#include "tools/store/system.h"
#include "tools/store/words.h"

namespace storetools {

StandardStream::StandardStream(FILE* stream)
    : keepsIsolation_(language() == Language::English || isTerminal(stream))
{
    open(stream, QIODevice::WriteOnly);
}

qint64 StandardStream::writeData(const char* data, qint64 size)
{
    if (keepsIsolation_)
        return QFile::writeData(data, size);
    // The direction marks are removed from each block of bytes separately. This is safe, because
    // QTextStream never splits a character between two blocks.
    const QByteArray plain = withoutIsolation(QByteArray(data, size));
    return QFile::writeData(plain.constData(), plain.size()) == plain.size() ? size : -1;
}

} // namespace storetools
