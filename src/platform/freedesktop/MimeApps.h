#pragma once

// Which installed applications open which MIME types (URL schemes included, as
// "x-scheme-handler/mailto"), as the XDG MIME Applications specification tells: the mimeapps.list
// files of the configuration and data folders, then the types the desktop files themselves claim.

#include "DesktopEntries.h"

#include <QHash>
#include <QStringList>

class MimeApps
{
public:
    // The mimeapps.list files, most important first: the desktop's own and the user's, then the
    // system's, then those beside the desktop files.
    static QStringList listFiles();
    static MimeApps load(const DesktopEntries &apps, const QStringList &files = listFiles());

    // The default application's desktop-file id, or empty when none is set and none claims the type.
    QString defaultFor(const QString &mimeType) const;
    // Every application that takes the type, the default first; none that the user removed.
    QStringList applicationsFor(const QString &mimeType) const;
    const DesktopEntries &entries() const { return m_apps; }

private:
    struct ListFile
    {
        QHash<QString, QStringList> defaults, added, removed;
    };
    DesktopEntries m_apps;
    QList<ListFile> m_lists;
};
