#include "FreedesktopWorkspace.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace {

const QString kFileManagerService = QStringLiteral("org.freedesktop.FileManager1");

QString fileUri(const QString &path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

Status startDetached(const QString &program, const QStringList &args)
{
    if (!QProcess::startDetached(program, args))
        return Error{QStringLiteral("Workspace"), 1, QStringLiteral("could not start %1").arg(program)};
    return success();
}

} // namespace

Status FreedesktopWorkspace::revealItems(const QStringList &paths)
{
    if (paths.isEmpty())
        return success();
    const bool hasFileManager = m_bus.isConnected() && m_bus.interface() &&
                                (m_bus.interface()->isServiceRegistered(kFileManagerService).value() ||
                                 m_bus.interface()->activatableServiceNames().value().contains(kFileManagerService));
    if (hasFileManager) {
        QStringList uris;
        for (const QString &p : paths)
            uris.append(fileUri(p));
        QDBusMessage call = QDBusMessage::createMethodCall(kFileManagerService, QStringLiteral("/org/freedesktop/FileManager1"),
                                                           QStringLiteral("org.freedesktop.FileManager1"),
                                                           QStringLiteral("ShowItems"));
        call << uris << QString();
        m_bus.asyncCall(call);
        return success();
    }
    return openPath(QFileInfo(paths.first()).absolutePath());
}

Status FreedesktopWorkspace::openPath(const QString &path)
{
    return startDetached(QStringLiteral("xdg-open"), {fileUri(path)});
}

Status FreedesktopWorkspace::openUrl(const QString &url)
{
    return startDetached(QStringLiteral("xdg-open"), {url});
}

QString FreedesktopWorkspace::defaultFileManagerId() const
{
    if (m_fileManager)
        return *m_fileManager;
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("inode/directory")});
    if (!query.waitForFinished(2000))
        return {};
    QString id = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
    if (id.endsWith(QLatin1String(".desktop")))
        id.chop(8);
    m_fileManager = id;
    return id;
}
