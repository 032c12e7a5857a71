#pragma once

#include <QByteArray>

namespace dao::postgres {

/// Removes the variables from the environment of this process that would change how or where the
/// client library connects, such as PGHOSTADDR, PGSERVICE, PGSSLMODE and PGOPTIONS. The link alone
/// decides about that. The variables that name files of credentials stay: PGPASSFILE,
/// PGSSLROOTCERT, PGSSLCERT, PGSSLKEY, PGSSLCRL, PGSSLCRLDIR; and PGREQUIREPEER, which only adds a
/// condition.
void clearClientEnvironment();

/// Returns the value of PGPASSWORD, which clearClientEnvironment has removed.
const QByteArray& environmentPassword();

} // namespace dao::postgres
