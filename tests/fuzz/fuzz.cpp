#include "fuzz/fuzz.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void require(bool holds, const char* property, const QString& input)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s: does not hold for '%s'\n", property, qUtf8Printable(input));
    for (const QChar c : input.first(qMin(input.size(), qsizetype{200})))
        std::fprintf(stderr, "%04x ", c.unicode());
    std::fputc('\n', stderr);
    std::abort();
}

} // namespace fuzz
