#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

class QFile;

// A file's type by its name, read in place from the MIME cache that update-mime-database keeps. It
// answers what QMimeDatabase answers by name (the same order of literals, suffixes and globs, weights,
// longest pattern, ties by name), without loading Qt's whole type database first, which is most of
// the time `quaydrop type` takes. Where that cache is not the only type database of the session (a
// user's own types beside the system's, no cache at all, a cache of another version), Qt answers.
class MimeByName
{
public:
    // Reads the type folders of the session as they are now.
    MimeByName();
    ~MimeByName();
    MimeByName(const MimeByName &) = delete;
    MimeByName &operator=(const MimeByName &) = delete;

    // The one the program shares, made on first use.
    static const MimeByName &shared();

    // "image/png" for "a.PNG"; "application/octet-stream" when no pattern matches.
    QString typeOf(const QString &fileName) const;
    // The type and every type it derives from, nearest first, as QMimeType::allAncestors orders them.
    QStringList typeAndAncestors(const QString &type) const;
    // False where Qt's database answers.
    bool readsTheCache() const { return !m_data.isEmpty(); }

private:
    struct Matches;
    quint32 word(quint32 offset) const;
    const char *text(quint32 offset) const;
    bool withinTable(quint32 table, quint32 entrySize) const;
    void matchPatternList(quint32 table, const QByteArray &name, const QByteArray &lowerName, Matches &found) const;
    bool matchSuffixes(quint32 count, quint32 first, const QList<uint> &name, qsizetype at, bool caseSensitive,
                       Matches &found) const;
    QStringList parentsOf(const QString &type) const;
    void collectAncestors(const QString &type, QStringList &all, int depth) const;

    std::unique_ptr<QFile> m_file;
    QByteArray m_data; // the mapped cache, not copied; empty where Qt answers
};
