#include "platform/dao/engine/link.h"

#include "platform/runtime/run_time_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <array>
#include <span>

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr QByteArrayView firstLine("Zomrel store link 1");
constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");
/// Maximum size of a link file in bytes. A larger file is not a link file. An embedded store with
/// at least one table is always larger than this size.
constexpr qint64 longestText = 4095;
constexpr qsizetype longestValue = 255;
constexpr int highestPort = 65535;

constexpr auto fileKey = "file"_L1;

/// The name of a key in a link file, and a pointer to the text member of Link that holds the key's
/// value. The pointer is null for the port, because the port is stored as a number.
struct Key
{
    QLatin1StringView name;
    QString Link::*text;
};

/// The keys of link files. A link to a file has only the key `file`. A link to a database on a
/// server has all the other keys.
constexpr std::array keys = {
    Key{fileKey, &Link::file},           Key{"server"_L1, &Link::server}, Key{"port"_L1, nullptr},
    Key{"database"_L1, &Link::database}, Key{"user"_L1, &Link::user},     Key{"tls"_L1, &Link::tls},
};

/// Returns the keys that the link file of this link must contain, in the order of the file.
std::span<const Key> keysOf(const Link& link)
{
    return link.namesFile() ? std::span(keys).first(1) : std::span(keys).subspan(1);
}

bool hasFirstLine(QByteArrayView text)
{
    if (text.startsWith(byteOrderMark))
        text = text.sliced(byteOrderMark.size());
    return text.startsWith(firstLine);
}

/// An exception with the reason why a link file is invalid. The code that catches the exception
/// adds the path of the link file to the message.
struct Damage
{
    QString what;
};

void checkValue(QLatin1StringView key, const QString& value)
{
    if (value.isEmpty())
        throw Damage{u"'%1' has no value"_s.arg(key)};
    if (value.size() > (key == fileKey ? longestText : longestValue))
        throw Damage{u"the value of '%1' is too long"_s.arg(key)};
    if (std::any_of(value.begin(), value.end(), [](QChar c) { return !c.isPrint(); }))
        throw Damage{u"the value of '%1' has a sign that does not print"_s.arg(key)};
    if (value != value.trimmed())
        throw Damage{u"the value of '%1' has blanks around it"_s.arg(key)};
    // A comma in the name of a server is refused, because the PostgreSQL client library would
    // interpret it as the separator between several servers.
    if (key == "server"_L1 && value.contains(u','))
        throw Damage{u"'%1' names more than one server"_s.arg(key)};
}

int portOf(const QString& value)
{
    const bool digits =
        std::all_of(value.begin(), value.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    bool fits = false;
    const int port = value.toInt(&fits);
    if (!digits || !fits || port < 1 || port > highestPort)
        throw Damage{u"'%1' is no port"_s.arg(value)};
    return port;
}

/// Parses the lines of a link file one after the other and collects the values. Each key may occur
/// only once.
class Reader
{
public:
    void take(const QString& line, int number)
    {
        const qsizetype sign = line.indexOf(u'=');
        if (sign < 0)
            throw Damage{u"line %1 is no 'key = value'"_s.arg(number)};
        const QString key = line.left(sign).trimmed();
        if (key.compare("password"_L1, Qt::CaseInsensitive) == 0)
            throw Damage{u"line %1 holds a password, which has no place in a link"_s.arg(number)};
        const auto known =
            std::ranges::find_if(keys, [&key](const Key& each) { return each.name == key; });
        if (known == keys.end())
            throw Damage{u"line %1 has the unknown key '%2'"_s.arg(QString::number(number), key)};
        if (seen_.contains(key))
            throw Damage{u"line %1 says '%2' again"_s.arg(QString::number(number), key)};
        seen_.append(key);
        set(*known, line.mid(sign + 1).trimmed());
    }

    Link link() const
    {
        if (link_.namesFile() && seen_.size() > 1)
            throw Damage{u"'file' and '%1' exclude each other"_s.arg(otherKey())};
        for (const Key& each : keysOf(link_)) {
            if (!seen_.contains(each.name))
                throw Damage{u"'%1' is missing"_s.arg(each.name)};
        }
        return link_;
    }

private:
    QString otherKey() const { return seen_[seen_.first() == fileKey ? 1 : 0]; }

    void set(const Key& key, const QString& value)
    {
        checkValue(key.name, value);
        // A link file must not contain a relative path, because its meaning would depend on the
        // folder in which a station starts the program.
        if (key.text == &Link::file && !QDir::isAbsolutePath(value))
            throw Damage{u"'%1' is no absolute path"_s.arg(value)};
        if (key.text == &Link::tls && !linkTlsModes().contains(value))
            throw Damage{u"'%1' is no TLS mode"_s.arg(value)};
        if (key.text != nullptr)
            link_.*key.text = value;
        else
            link_.port = portOf(value);
    }

    QStringList seen_;
    Link link_;
};

Link parsed(QByteArray text)
{
    if (text.size() > longestText)
        throw Damage{u"it is too long"_s};
    if (text.startsWith(byteOrderMark))
        text.remove(0, byteOrderMark.size());
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString whole = decoder(text);
    if (decoder.hasError())
        throw Damage{u"it is no UTF-8 text"_s};
    const QStringList lines = whole.split(u'\n');
    Reader reader;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        const QString& line = lines[i];
        if (i == 0) {
            if (line.trimmed() != QString::fromLatin1(firstLine))
                throw Damage{u"its first line is another one"_s};
        } else if (!line.trimmed().isEmpty()) {
            reader.take(line, number);
        }
    }
    return reader.link();
}

RunTimeError damaged(const Damage& damage, const QString& path)
{
    return RunTimeError(runtime::UnrecognizedFormat,
                        u"The store link '%1' is damaged: %2."_s.arg(path, damage.what));
}

} // namespace

Link Link::toFile(const QString& path)
{
    Link link;
    link.file = path;
    return link;
}

QString Link::place() const
{
    if (namesFile())
        return u"file '%1'"_s.arg(file);
    const QString host = server.contains(u':') ? u'[' + server + u']' : server;
    return u"database '%1' on server '%2:%3'"_s.arg(database, host, QString::number(port));
}

QString defaultTlsMode(const QString& server)
{
    static const QRegularExpression loopback(
        u"^(localhost|::1|127\\.\\d{1,3}\\.\\d{1,3}\\.\\d{1,3})$"_s);
    const bool isLocalSocket = server.startsWith(u'/') || server.startsWith(u'@');
    return isLocalSocket || loopback.match(server).hasMatch() ? u"prefer"_s : u"verify-full"_s;
}

const QStringList& linkTlsModes()
{
    static const QStringList modes{u"disable"_s, u"allow"_s,     u"prefer"_s,
                                   u"require"_s, u"verify-ca"_s, u"verify-full"_s};
    return modes;
}

Link parseLink(const QByteArray& text, const QString& path)
{
    try {
        return parsed(text);
    } catch (const Damage& damage) {
        throw damaged(damage, path);
    }
}

QByteArray linkText(const Link& link)
{
    QByteArray text = firstLine.toByteArray() + '\n';
    try {
        for (const Key& each : keysOf(link)) {
            const QString value =
                each.text != nullptr ? link.*each.text : QString::number(link.port);
            checkValue(each.name, value);
            text += u"%1 = %2\n"_s.arg(each.name, value).toUtf8();
        }
        if (parsed(text) != link)
            throw Damage{u"a value cannot be told again"_s};
    } catch (const Damage& damage) {
        throw RunTimeError(runtime::UnrecognizedFormat,
                           u"No store link can be made: %1."_s.arg(damage.what));
    }
    return text;
}

bool beginsAsLink(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) &&
           hasFirstLine(file.read(byteOrderMark.size() + firstLine.size()));
}

std::optional<Link> linkAt(const QString& path)
{
    const QFileInfo info(path);
    // A file that is too large for a link file is not opened, because it may be an embedded store
    // that this process has open. Closing a second file descriptor of the store would release the
    // POSIX locks on it.
    if (!info.isFile() || info.size() > longestText)
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.read(longestText + 1);
    if (!hasFirstLine(text))
        return {};
    return parseLink(text, path);
}

QString linkedFile(const Link& link, const QString& path)
{
    if (linkAt(link.file))
        throw damaged({u"it names '%1', which is a link, too"_s.arg(link.file)}, path);
    return link.file;
}

} // namespace dao
