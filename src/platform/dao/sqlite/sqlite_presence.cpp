#include "platform/dao/sqlite/sqlite_presence.h"

#include <map>

namespace dao::sqlite {

std::shared_ptr<Presence> Presence::at(const QString& path, const QString& fileIdentity)
{
    static std::map<QString, std::weak_ptr<Presence>> known;
    std::erase_if(known, [](const auto& each) { return each.second.expired(); });
    std::shared_ptr<Presence> presence = known[fileIdentity].lock();
    if (!presence) {
        presence = std::make_shared<Presence>(path);
        known[fileIdentity] = presence;
    }
    return presence;
}

} // namespace dao::sqlite
