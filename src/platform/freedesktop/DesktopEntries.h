#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// An installed application, as its desktop file describes it.
struct DesktopApplication
{
    QString id; // desktop-file id without ".desktop": "org.gnome.Nautilus"
    QString name;
    QString iconName; // a theme icon name or an absolute path
    QString startupWMClass;
    QString executable; // the base name of Exec's program
    QString exec;       // the whole Exec line, the string escapes (\\s, \\\\, ...) undone
    QStringList mimeTypes;
    QString filePath;   // the desktop file itself, for %k
    bool shown = true;  // neither NoDisplay nor Hidden
};

// The desktop files of the data folders, the user's own first, as menus and docks read them.
class DesktopEntries
{
public:
    // $XDG_DATA_HOME/applications, then each of $XDG_DATA_DIRS/applications.
    static QStringList applicationFolders();
    static DesktopEntries load(const QStringList &folders = applicationFolders());
    static DesktopApplication parse(const QString &filePath, const QString &id);

    const QList<DesktopApplication> &applications() const { return m_apps; }
    // The application a window belongs to, from its WM_CLASS and the program behind its process;
    // empty when no desktop file claims it.
    QString idForWindow(const QString &wmInstance, const QString &wmClass, const QString &executable) const;
    const DesktopApplication *byId(const QString &id) const;
    // Applications whose desktop file lists `mimeType`, in the folders' order.
    QList<const DesktopApplication *> claiming(const QString &mimeType) const;

private:
    QList<DesktopApplication> m_apps;
};
