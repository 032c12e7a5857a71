#include "tools/store/random_name.h"

#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <QRandomGenerator>

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
    throw ToldError(runtime::PermissionDenied,
                    say({u"Could not create '%1...'.", u"אי אפשר ליצור את '%1'."}, beginning));
}

} // namespace storetools
