#include "MimeApps.h"

#include <QFile>
#include <QStandardPaths>

namespace {

QHash<QString, QStringList> *sectionOf(const QString &header, QHash<QString, QStringList> &defaults,
                                       QHash<QString, QStringList> &added, QHash<QString, QStringList> &removed)
{
    if (header == QLatin1String("[Default Applications]"))
        return &defaults;
    if (header == QLatin1String("[Added Associations]"))
        return &added;
    if (header == QLatin1String("[Removed Associations]"))
        return &removed;
    return nullptr;
}

QStringList idsOf(const QString &value)
{
    QStringList ids;
    for (QString id : value.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        id = id.trimmed();
        if (id.endsWith(QLatin1String(".desktop")))
            id.chop(8);
        if (!id.isEmpty())
            ids.append(id);
    }
    return ids;
}

} // namespace

QStringList MimeApps::listFiles()
{
    QStringList desktops;
    for (const QString &d : qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'), Qt::SkipEmptyParts))
        desktops.append(d.toLower());
    QStringList files;
    auto addFolder = [&](const QString &folder) {
        for (const QString &d : desktops)
            files.append(folder + QLatin1Char('/') + d + QLatin1String("-mimeapps.list"));
        files.append(folder + QLatin1String("/mimeapps.list"));
    };
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation))
        addFolder(folder);
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation))
        addFolder(folder);
    return files;
}

MimeApps MimeApps::load(const DesktopEntries &apps, const QStringList &files)
{
    MimeApps result;
    result.m_apps = apps;
    for (const QString &path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        ListFile list;
        QHash<QString, QStringList> *section = nullptr;
        while (!file.atEnd()) {
            const QString line = QString::fromUtf8(file.readLine()).trimmed();
            if (line.startsWith(QLatin1Char('['))) {
                section = sectionOf(line, list.defaults, list.added, list.removed);
                continue;
            }
            const qsizetype eq = line.indexOf(QLatin1Char('='));
            if (!section || eq <= 0 || line.startsWith(QLatin1Char('#')))
                continue;
            (*section)[line.left(eq).trimmed()].append(idsOf(line.mid(eq + 1)));
        }
        result.m_lists.append(list);
    }
    return result;
}

QStringList MimeApps::applicationsFor(const QString &mimeType) const
{
    QStringList ids;
    QStringList removed;
    auto take = [&](const QString &id) {
        if (!ids.contains(id) && !removed.contains(id) && m_apps.byId(id))
            ids.append(id);
    };
    // A more important file's removals hide the associations of the files after it.
    for (const ListFile &list : m_lists) {
        for (const QString &id : list.added.value(mimeType))
            take(id);
        removed.append(list.removed.value(mimeType));
    }
    for (const DesktopApplication *app : m_apps.claiming(mimeType))
        take(app->id);
    const QString chosen = [&] {
        for (const ListFile &list : m_lists)
            for (const QString &id : list.defaults.value(mimeType))
                if (m_apps.byId(id))
                    return id;
        return QString();
    }();
    if (!chosen.isEmpty()) {
        ids.removeAll(chosen);
        ids.prepend(chosen);
    }
    return ids;
}

QString MimeApps::defaultFor(const QString &mimeType) const
{
    return applicationsFor(mimeType).value(0);
}
