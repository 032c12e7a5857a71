#include "tools/store/random_name.h"

#include "platform/runtime/run_time_error.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace storetools {

void createUnderRandomName(const QString& beginning,
                           const std::function<bool(const QString& name)>& create)
{
    constexpr int mostTrials = 100;
    for (int trial = 0; trial < mostTrials; ++trial) {
        const quint64 number = QRandomGenerator::system()->generate64();
        if (create(beginning + QString::number(number, 36)))
            return;
    }
    throw runtime::RunTimeError(runtime::PermissionDenied,
                                u"Could not create '%1...'."_s.arg(beginning));
}

} // namespace storetools
