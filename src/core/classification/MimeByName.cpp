#include "MimeByName.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QtEndian>

#include <fnmatch.h>

namespace {

// Offsets of the cache header's tables.
constexpr quint32 kParentList = 8, kLiteralList = 12, kSuffixTree = 16, kGlobList = 20, kHeaderSize = 40;
constexpr quint32 kCaseSensitive = 0x100;

QString fallbackParent(const QString &type)
{
    // As the shared MIME database has it: text/* derive from text/plain, other file types from
    // application/octet-stream.
    const QStringView group = QStringView(type).left(type.indexOf(QChar('/')));
    if (group == u"text" && type != u"text/plain")
        return QStringLiteral("text/plain");
    if (group != u"inode" && group != u"all" && group != u"fonts" && group != u"print" && group != u"uri" &&
        type != u"application/octet-stream")
        return QStringLiteral("application/octet-stream");
    return {};
}

} // namespace

// The best matches so far: the highest weight wins, then the longest pattern; equals are kept.
struct MimeByName::Matches
{
    QStringList best, seen;
    int weight = 0;
    qsizetype patternLength = 0;

    void add(const QString &type, int patternWeight, qsizetype length)
    {
        if (seen.contains(type))
            return;
        if (patternWeight < weight) {
            seen.append(type);
            return;
        }
        if (patternWeight == weight && length < patternLength)
            return;
        if (patternWeight > weight || length > patternLength) {
            best.clear();
            weight = patternWeight;
            patternLength = length;
        }
        best.append(type);
        seen.append(type);
    }
};

MimeByName::MimeByName()
{
    const QStringList folders =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("mime"), QStandardPaths::LocateDirectory);
    if (folders.size() != 1)
        return;
    m_file = std::make_unique<QFile>(folders.first() + QStringLiteral("/mime.cache"));
    if (!m_file->open(QIODevice::ReadOnly) || m_file->size() < kHeaderSize || m_file->size() > (1 << 30))
        return;
    const uchar *mapped = m_file->map(0, m_file->size());
    if (!mapped)
        return;
    m_data = QByteArray::fromRawData(reinterpret_cast<const char *>(mapped), m_file->size());
    const quint16 major = qFromBigEndian<quint16>(mapped), minor = qFromBigEndian<quint16>(mapped + 2);
    const bool known = major == 1 && minor >= 1 && minor <= 2;
    const quint32 tree = word(kSuffixTree);
    const bool rootsWithin = qsizetype(word(tree + 4)) + 12 * qsizetype(word(tree)) <= m_data.size();
    if (!known || !rootsWithin || !withinTable(word(kParentList), 8) || !withinTable(word(kLiteralList), 12) ||
        !withinTable(word(kGlobList), 12))
        m_data.clear();
}

MimeByName::~MimeByName() = default;

const MimeByName &MimeByName::shared()
{
    static const MimeByName reader;
    return reader;
}

// Out of range reads as 0, which no table of a sound cache holds where it matters: a damaged cache
// gives no match, never a read past its end.
quint32 MimeByName::word(quint32 offset) const
{
    if (qsizetype(offset) + 4 > m_data.size())
        return 0;
    return qFromBigEndian<quint32>(m_data.constData() + offset);
}

const char *MimeByName::text(quint32 offset) const
{
    if (qsizetype(offset) >= m_data.size() || !memchr(m_data.constData() + offset, 0, m_data.size() - offset))
        return "";
    return m_data.constData() + offset;
}

bool MimeByName::withinTable(quint32 table, quint32 entrySize) const
{
    return qsizetype(table) + 4 + qsizetype(word(table)) * entrySize <= m_data.size();
}

void MimeByName::matchPatternList(quint32 table, const QByteArray &name, const QByteArray &lowerName, Matches &found) const
{
    const quint32 count = word(table);
    for (quint32 i = 0; i < count; ++i) {
        const quint32 entry = table + 4 + 12 * i;
        const quint32 flags = word(entry + 8);
        const QByteArray pattern(text(word(entry)));
        const bool caseSensitive = flags & kCaseSensitive;
        if (::fnmatch(caseSensitive ? pattern.constData() : pattern.toLower().constData(),
                      caseSensitive ? name.constData() : lowerName.constData(), 0) == 0)
            found.add(QLatin1String(text(word(entry + 4))), int(flags & 0xff), QString::fromUtf8(pattern).size());
    }
}

// Walks the tree of reversed suffixes from the name's last character towards its first (which a
// suffix pattern's star must cover) and takes the types of the deepest node that has any.
bool MimeByName::matchSuffixes(quint32 count, quint32 first, const QList<uint> &name, qsizetype at, bool caseSensitive,
                               Matches &found) const
{
    qsizetype low = 0, high = qsizetype(count) - 1;
    while (low <= high) {
        const qsizetype mid = (low + high) / 2;
        const quint32 node = first + 12 * quint32(mid);
        const uint character = word(node);
        if (character < name[at]) {
            low = mid + 1;
        } else if (character > name[at]) {
            high = mid - 1;
        } else {
            const quint32 children = word(node + 4), childTable = word(node + 8);
            if (at > 1 && matchSuffixes(children, childTable, name, at - 1, caseSensitive, found))
                return true;
            bool matched = false;
            for (quint32 i = 0; i < children && word(childTable + 12 * i) == 0; ++i) {
                const quint32 leaf = childTable + 12 * i;
                const quint32 flags = word(leaf + 8);
                if (caseSensitive || !(flags & kCaseSensitive)) {
                    found.add(QLatin1String(text(word(leaf + 4))), int(flags & 0xff), 1 + name.size() - at);
                    matched = true;
                }
            }
            return matched;
        }
    }
    return false;
}

QString MimeByName::typeOf(const QString &fileName) const
{
    if (m_data.isEmpty())
        return QMimeDatabase().mimeTypeForFile(fileName, QMimeDatabase::MatchExtension).name();
    const QString name = fileName.mid(fileName.lastIndexOf(QChar('/')) + 1);
    const QString lower = name.toLower();
    Matches found;
    if (!name.isEmpty()) {
        const QByteArray utf8 = name.toUtf8(), lowerUtf8 = lower.toUtf8();
        matchPatternList(word(kLiteralList), utf8, lowerUtf8, found);
        if (found.best.isEmpty()) {
            const quint32 tree = word(kSuffixTree);
            const QList<uint> lowerChars = lower.toUcs4();
            if (!matchSuffixes(word(tree), word(tree + 4), lowerChars, lowerChars.size() - 1, false, found)) {
                const QList<uint> chars = name.toUcs4(); // case-sensitive suffixes, looked for only then
                matchSuffixes(word(tree), word(tree + 4), chars, chars.size() - 1, true, found);
            }
        }
        if (found.best.isEmpty())
            matchPatternList(word(kGlobList), utf8, lowerUtf8, found);
    }
    if (found.best.isEmpty())
        return QStringLiteral("application/octet-stream");
    found.best.sort(); // several equal matches: the first by name, as Qt takes it
    return found.best.first();
}

QStringList MimeByName::parentsOf(const QString &type) const
{
    QStringList parents;
    const QByteArray wanted = type.toLatin1();
    const quint32 table = word(kParentList);
    qsizetype low = 0, high = qsizetype(word(table)) - 1;
    while (low <= high) {
        const qsizetype mid = (low + high) / 2;
        const quint32 entry = table + 4 + 8 * quint32(mid);
        const int order = qstrcmp(text(word(entry)), wanted.constData());
        if (order < 0) {
            low = mid + 1;
        } else if (order > 0) {
            high = mid - 1;
        } else {
            const quint32 list = word(entry + 4);
            for (quint32 i = 0, n = word(list); i < n; ++i)
                if (const QString parent = QLatin1String(text(word(list + 4 + 4 * i))); !parents.contains(parent))
                    parents.append(parent);
            break;
        }
    }
    if (parents.isEmpty())
        if (const QString parent = fallbackParent(type); !parent.isEmpty())
            parents.append(parent);
    return parents;
}

void MimeByName::collectAncestors(const QString &type, QStringList &all, int depth) const
{
    // A type's parents, then each parent's own, so that the most general (application/octet-stream)
    // comes last; the depth bounds a damaged cache's loop.
    const QStringList parents = parentsOf(type);
    for (const QString &parent : parents)
        if (!all.contains(parent))
            all.append(parent);
    if (depth < 16)
        for (const QString &parent : parents)
            collectAncestors(parent, all, depth + 1);
}

QStringList MimeByName::typeAndAncestors(const QString &type) const
{
    QStringList all{type};
    if (m_data.isEmpty())
        all += QMimeDatabase().mimeTypeForName(type).allAncestors();
    else
        collectAncestors(type, all, 0);
    return all;
}
