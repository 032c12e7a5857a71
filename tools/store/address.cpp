#include "tools/store/address.h"

#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <QStringList>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

constexpr int highestPort = 65535;

[[noreturn]] void refuse(const QString& what)
{
    throw ToldError(
        runtime::UnrecognizedFormat,
        say({u"No such place: %1.", u"אין מקום כזה: %1."}, Phrase{what}),
        say({u"Write postgresql://USER@HOST:PORT/DATABASE, without a password. --server "
             "takes HOST or HOST:PORT.",
             u"כתוב {postgresql://USER@HOST:PORT/DATABASE}, בלי סיסמה. אחרי {--server} "
             "כתוב {HOST} או {HOST:PORT}."}));
}

constexpr Text holdsNoPassword{u"an address holds no password", u"בכתובת לא כותבים סיסמה"};

QString decoded(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

int portOf(const QString& text)
{
    bool isNumber = false;
    const int port = text.toInt(&isNumber);
    if (!isNumber || !text.front().isDigit() || port < 1 || port > highestPort)
        refuse(say({u"'%1' is no port", u"'%1' אינו מספר של פורט"}, text));
    return port;
}

void takeOption(const QString& option, dao::Link& link)
{
    const qsizetype sign = option.indexOf(u'=');
    const QString name = option.left(sign);
    const QString value = sign < 0 ? QString() : decoded(option.mid(sign + 1));
    if (name == "password"_L1)
        refuse(say(holdsNoPassword));
    if (value.isEmpty())
        refuse(say({u"'%1' has no value", u"ל-'%1' אין ערך"}, name));
    if (name == "sslmode"_L1)
        link.tls = value;
    else if (name == "host"_L1)
        link.server = value;
    else if (name == "port"_L1)
        link.port = portOf(value);
    else if (name == "user"_L1)
        link.user = value;
    else if (name == "dbname"_L1)
        link.database = value;
    else
        refuse(say({u"'%1' is unknown in an address", u"'%1' אינו מוכר בכתובת"}, name));
}

/// Checks that the address is complete. Throws UnrecognizedFormat (3343) otherwise, because missing
/// parts of an address are not taken from environment variables.
void checkWhole(const dao::Link& link)
{
    dao::parseLink(dao::linkText(link), link.place());
}

} // namespace

bool isAddress(const QString& place)
{
    return place.startsWith("postgresql://"_L1) || place.startsWith("postgres://"_L1);
}

dao::Link parseServer(const QString& server)
{
    dao::Link link;
    const qsizetype bracket = server.startsWith(u'[') ? server.indexOf(u']') : -1;
    const qsizetype colon = server.indexOf(u':', bracket + 1);
    if (bracket > 0) {
        if (colon < 0 ? bracket + 1 != server.size() : colon != bracket + 1)
            refuse(say({u"'%1' is no server", u"'%1' אינו שרת"}, server));
        link.server = server.mid(1, bracket - 1);
    } else {
        link.server = colon < 0 ? server : server.left(colon);
    }
    if (colon >= 0) {
        if (colon + 1 == server.size())
            refuse(say({u"'%1' has no port behind its colon", u"ב-'%1' חסר הפורט אחרי הנקודתיים"},
                       server));
        link.port = portOf(server.mid(colon + 1));
    }
    link.tls = dao::defaultTlsMode(link.server);
    return link;
}

dao::Link parseAddress(const QString& address)
{
    const QString whole = address.mid(address.indexOf("://"_L1) + 3);
    const qsizetype question = whole.indexOf(u'?');
    const QString place = question < 0 ? whole : whole.left(question);
    const qsizetype slash = place.indexOf(u'/');
    const QString authority = slash < 0 ? place : place.left(slash);
    const qsizetype at = authority.lastIndexOf(u'@');
    const QString user = at < 0 ? QString() : authority.left(at);
    if (user.contains(u':'))
        refuse(say(holdsNoPassword));
    dao::Link link = parseServer(authority.mid(at + 1));
    link.server = decoded(link.server);
    link.user = decoded(user);
    link.database = slash < 0 ? QString() : decoded(place.mid(slash + 1));
    link.tls.clear();
    if (question >= 0) {
        for (const QString& option : whole.mid(question + 1).split(u'&', Qt::SkipEmptyParts))
            takeOption(option, link);
    }
    if (link.tls.isEmpty())
        link.tls = dao::defaultTlsMode(link.server);
    checkWhole(link);
    return link;
}

} // namespace storetools
