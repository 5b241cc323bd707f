#include "FakePlatform.h"

#include <QFile>
#include <QTimer>

#include <QDir>
#include <QThread>
#include <QFileInfo>

namespace {
Error fakeError(const QString &message) { return Error{QStringLiteral("FakePlatform"), 1, message}; }
} // namespace

void FakeDragPasteboard::startDrag(const QStringList &types, const QStringList &paths)
{
    m_types = types;
    m_paths = paths;
    m_told = false;
    asked = 0;
    Q_EMIT changed(++m_count);
}

void FakeDragPasteboard::learnContent()
{
    ++asked;
    if (!answerLater)
        answer();
}

void FakeDragPasteboard::answer()
{
    m_told = true;
    Q_EMIT contentLearned(m_count);
}

void FakePointerMonitor::move(QPointF at)
{
    if (tracking)
        Q_EMIT mouseMoved(at);
}

void FakeWindowSystem::restoreRememberedFocus()
{
    ++focusRestores;
    if (!remembered.isEmpty())
        activate(remembered);
}

void FakeWindowSystem::activate(const QString &appId)
{
    frontmost = appId;
    Q_EMIT applicationActivated(appId);
}

Status FakeHotKeyBinder::bind(const QString &portableKeys)
{
    if (portableKeys.isEmpty())
        return fakeError(QStringLiteral("no key to bind"));
    if (refuse)
        return fakeError(QStringLiteral("%1 is grabbed by another program").arg(portableKeys));
    bound = portableKeys;
    return success();
}

void FakeHotKeyBinder::press(const QString &portableKeys)
{
    if (!bound.isEmpty() && portableKeys == bound)
        Q_EMIT activated();
}

Status FakeNotificationService::deliver(const QString &title, const QString &body, const QVariantMap &userInfo)
{
    delivered.append({title, body, userInfo});
    return success();
}

Status FakeWorkspace::revealItems(const QStringList &paths)
{
    revealed.append(paths);
    return success();
}

Status FakeWorkspace::openPath(const QString &path)
{
    if (!QFileInfo::exists(path))
        return fakeError(QStringLiteral("no such file: %1").arg(path));
    opened.append(path);
    return success();
}

Status FakeWorkspace::openUrl(const QString &url)
{
    opened.append(url);
    return success();
}

Result<QString> FakeTrash::moveToTrash(const QString &path)
{
    if (const int ms = delayMs.load())
        QThread::msleep(ms);
    if (refuse)
        return Error{QStringLiteral("FakeTrash"), kNoTrashHere, QStringLiteral("no trash on this volume")};
    QDir().mkpath(m_folder);
    const QFileInfo source(path);
    if (!source.exists() && !source.isSymLink())
        return fakeError(QStringLiteral("no such file: %1").arg(path));
    QString target = m_folder + QChar('/') + source.fileName();
    for (int n = 1; QFileInfo::exists(target); ++n)
        target = m_folder + QChar('/') + source.fileName() + QStringLiteral(".%1").arg(n);
    if (!QDir().rename(path, target))
        return fakeError(QStringLiteral("could not move %1 to the trash").arg(path));
    m_origins.insert(target, path);
    return target;
}

Result<QString> FakeTrash::restore(const QString &trashedPath)
{
    const QString original = m_origins.value(trashedPath);
    if (original.isEmpty())
        return fakeError(QStringLiteral("%1 is not in the trash").arg(trashedPath));
    if (QFileInfo::exists(original) || QFileInfo(original).isSymLink())
        return Error{QStringLiteral("FakeTrash"), kNameTaken, QStringLiteral("%1 has been taken meanwhile").arg(original)};
    if (!QDir().rename(trashedPath, original))
        return fakeError(QStringLiteral("could not put %1 back").arg(original));
    m_origins.remove(trashedPath);
    return original;
}

Status FakeVolumeService::eject(const QString &mountPoint)
{
    for (qsizetype i = 0; i < volumes.size(); ++i) {
        if (volumes.at(i).mountPoint == mountPoint) {
            if (!volumes.at(i).ejectable)
                return fakeError(QStringLiteral("%1 cannot be ejected").arg(mountPoint));
            volumes.removeAt(i);
            Q_EMIT mountsChanged();
            return success();
        }
    }
    return fakeError(QStringLiteral("%1 is not mounted").arg(mountPoint));
}

void FakeVolumeService::plugIn(const VolumeInfo &volume)
{
    volumes.append(volume);
    Q_EMIT mountsChanged();
}

Status FakeWallpaper::setWallpaper(const QString &imagePath)
{
    if (!QFileInfo(imagePath).isFile())
        return fakeError(QStringLiteral("no picture at %1").arg(imagePath));
    current = imagePath;
    return success();
}

QList<ShareTarget> FakeShare::fileTargets(const QStringList &) const
{
    return targets;
}

Status FakeShare::shareFiles(const QString &targetId, const QStringList &fileUris)
{
    for (const ShareTarget &t : targets) {
        if (t.id == targetId) {
            shared.append({targetId, fileUris});
            return success();
        }
    }
    return fakeError(QStringLiteral("no share target %1").arg(targetId));
}

Status FakeShare::shareText(const QString &targetId, const QString &text)
{
    sharedTexts.append({targetId, text});
    return success();
}

Status FakeShare::searchFiles(const QString &text, const QString &folderUri)
{
    searches.append({text, folderUri});
    return success();
}

void FakeMail::composeWithAttachments(const QStringList &fileUris, std::function<void(Status)> done)
{
    composed.append(fileUris);
    if (client.desktopFile.isEmpty())
        done(Error{QStringLiteral("Mail"), NoMailProgram, QStringLiteral("no mail program")});
    else if (!client.takesAttachments)
        done(Error{QStringLiteral("Mail"), NoAttachments, QStringLiteral("%1 takes no attachments").arg(client.name)});
    else
        done(success());
}

Status FakeMail::openMailto(const QString &mailtoUrl)
{
    mailtos.append(mailtoUrl);
    return success();
}

Status FakeMail::launchDefaultClient()
{
    ++launches;
    return success();
}

FakePlatform::FakePlatform(const QString &trashFolder) : trash(trashFolder) {}

Platform FakePlatform::services()
{
    return Platform{&drag,  &promisedFiles, &pointer, &windows,    &hotKey,    &notifications, &workspace,
                    &trash, &volumes,       &power,   &loginItems, &wallpaper, &share,
                    &mail};
}

Result<PromisedFiles> FakePromisedFiles::namesOfPromisedFilesDroppedAtDestination(const QString &folder, quintptr)
{
    askedFolders.append(folder);
    if (names.isEmpty())
        return Error{QStringLiteral("FakePromisedFiles"), 1, QStringLiteral("the source refused")};
    if (!writeFromType.isEmpty())
        return PromisedFiles{names, writeFromType};
    const auto write = [folder, names = names, content = content] {
        for (const QString &name : names) {
            QFile file(folder + QLatin1Char('/') + name);
            if (file.open(QIODevice::WriteOnly))
                file.write(content);
        }
    };
    if (writeAfterMs == 0)
        write();
    else if (writeAfterMs > 0)
        QTimer::singleShot(writeAfterMs, write);
    return PromisedFiles{names, {}};
}
