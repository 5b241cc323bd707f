#pragma once

#include "UndoLog.h"

#include <QHash>
#include <QSet>
#include <QStringList>

// Batch rename: each item becomes prefix + (new name, or its own base name) + suffix, keeps its
// extension, and goes into one folder (the first item's). A taken name gets the free-name rule's
// number, in list order: Trip.jpg, Trip 1.jpg, Trip 2.jpg. Nothing is ever overwritten.
namespace BatchRename {

struct Request
{
    QStringList paths;
    QString folder;
    QString name, prefix, suffix;
};

// The names the batch will give, worked out without touching anything: each earlier item's move is
// taken into account (the name it takes, the name it leaves). Finds free numbers from where the last
// one was found, so a batch of thousands to one name stays linear.
class Planner
{
public:
    explicit Planner(QString folder) : m_folder(std::move(folder)) {}
    // The final file name for `path`; `taken` asks the disk.
    QString nameFor(const QString &path, const Request &request);
    void moved(const QString &from, const QString &toName);
    void markTaken(const QString &name) { m_taken.insert(name); }

private:
    bool exists(const QString &name) const;
    QString freeName(const QString &base, const QString &extension);

    QString m_folder;
    QSet<QString> m_taken, m_vacated;
    QHash<QString, quint64> m_nextNumber; // by "base\0extension"
};

// Up to `rows` pairs of (old name, new name), for the live preview.
QList<QPair<QString, QString>> preview(const Request &request, int rows);

struct Outcome
{
    QStringList renamed; // the new paths
    QList<UndoLog::Step> steps;
    QList<Error> failures; // each item that could not be renamed, which stays as it was
};
Outcome run(const Request &request);

} // namespace BatchRename
