// Converts a server's errors to run-time errors with numbers from runtime::ErrorNumber.

#include "platform/dao/postgres/pq_connection.h"

#include <array>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

struct Meaning
{
    QLatin1StringView state; ///< An SQLSTATE or its first characters.
    int number;
    bool ownText; ///< True to use only the classic text, false to append the server's message.
};

/// The run-time errors for the SQLSTATE codes of the server. The first entry whose code matches is
/// used.
constexpr std::array meanings = {
    Meaning{"23505"_L1, runtime::DuplicateKey, true},
    Meaning{"23502"_L1, runtime::FieldRequired, true},
    Meaning{"23"_L1, runtime::DuplicateKey, false},
    Meaning{"55P03"_L1, runtime::Locked, true},
    Meaning{"40"_L1, runtime::Locked, true},
    Meaning{"25006"_L1, runtime::ReadOnly, true},
    Meaning{"25"_L1, runtime::InvalidOperation, false},
    Meaning{"42501"_L1, runtime::PermissionDenied, false},
    Meaning{"42P01"_L1, runtime::TableNotFound, true},
    Meaning{"42701"_L1, runtime::FieldDefinedTwice, true},
    Meaning{"22001"_L1, runtime::FieldTooSmall, true},
    Meaning{"22003"_L1, runtime::Overflow, true},
    Meaning{"2200H"_L1, runtime::Overflow, false},
    Meaning{"22"_L1, runtime::DataTypeConversion, true},
    Meaning{"53100"_L1, runtime::DiskFull, true},
    Meaning{"53200"_L1, runtime::OutOfMemory, true},
    Meaning{"58"_L1, runtime::DiskOrNetworkError, false},
    Meaning{"XX001"_L1, runtime::CorruptDatabase, true},
    Meaning{"XX002"_L1, runtime::CorruptDatabase, true},
};

} // namespace

RunTimeError errorOf(const QString& state, const QString& text, const Link& link)
{
    for (const Meaning& each : meanings) {
        if (!state.startsWith(each.state))
            continue;
        if (each.ownText)
            return RunTimeError(each.number);
        return RunTimeError(
            each.number,
            u"%1 (%2: %3)"_s.arg(runtime::errorDescription(each.number), link.place(), text));
    }
    return RunTimeError(runtime::InternalError, u"%1: %2"_s.arg(link.place(), text));
}

} // namespace dao::postgres
