#include "XdgAutostart.h"

#include <QDir>
#include <QFileInfo>
#include <QFile>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

QString XdgAutostart::entryPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/" QD_BUNDLE_ID ".desktop");
}

bool XdgAutostart::isEnabled() const
{
    QFile file(entryPath());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // An entry the user switched off in the desktop's settings stays off.
    const QByteArray text = file.readAll();
    return !text.contains("\nHidden=true") && !text.contains("X-GNOME-Autostart-enabled=false");
}

Status XdgAutostart::setEnabled(bool enabled)
{
    const QString path = entryPath();
    if (!enabled) {
        if (QFile::exists(path) && !QFile::remove(path))
            return Error{QStringLiteral("Autostart"), 1, QStringLiteral("cannot remove %1").arg(path)};
        return success();
    }
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return Error{QStringLiteral("Autostart"), 2, QStringLiteral("cannot create %1").arg(QFileInfo(path).absolutePath())};
    QString exec = m_executable;
    exec.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    const QString entry = QStringLiteral("[Desktop Entry]\nType=Application\nName=Quaydrop\n"
                                         "Comment=Drop window for files, text and images\nExec=\"%1\"\n"
                                         "Icon=" QD_BUNDLE_ID "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n")
                              .arg(exec);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(entry.toUtf8()) < 0 || !file.commit())
        return Error{QStringLiteral("Autostart"), 3, file.errorString()};
    return success();
}
