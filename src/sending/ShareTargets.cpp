#include "ShareTargets.h"

#include "FileUris.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"

#include <QCoreApplication>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QThreadPool>
#include <QUrl>

namespace {

QStringList mimeTypesOf(const QStringList &paths)
{
    static const QMimeDatabase db;
    QStringList types;
    for (const QString &p : paths) {
        const QString type = db.mimeTypeForFile(NativePath::forDisplay(p)).name();
        if (!types.contains(type))
            types.append(type);
    }
    return types;
}

ShareTarget mailTarget()
{
    MailService *mail = Platform::current().mail;
    const MailClient client = mail ? mail->defaultClient() : MailClient();
    if (client.desktopFile.isEmpty())
        return {};
    return {ShareTargets::kMail, Texts::localized("shareViaMail").arg(client.name), QStringLiteral("mail-message-new")};
}

// Device names and applications as the menu shows them.
ShareTarget titled(ShareTarget t)
{
    if (t.id.startsWith(QLatin1String("kdeconnect:")))
        t.title = Texts::localized("shareKdeConnect").arg(t.title);
    else if (t.id == QLatin1String("bluetooth"))
        t.title = Texts::localized("shareBluetooth");
    else if (t.id.startsWith(QLatin1String("open-with:")))
        t.title = Texts::localized("shareOpenWith").arg(t.title);
    return t;
}

} // namespace

QList<ShareTarget> ShareTargets::forFiles(const QStringList &paths, Use use)
{
    QList<ShareTarget> targets;
    if (paths.isEmpty())
        return targets;
    if (const ShareTarget mail = mailTarget(); !mail.id.isEmpty())
        targets.append(mail);
    if (ShareService *share = Platform::current().share)
        for (const ShareTarget &t : share->fileTargets(mimeTypesOf(paths)))
            targets.append(titled(t));
    if (use == Use::Window) {
        if (paths.size() == 1)
            targets.append({kSaveAs, Texts::localized("shareSaveAs"), QStringLiteral("document-save-as")});
        targets.append({kCopyLinks, Texts::localized("shareCopyLinks"), QStringLiteral("edit-copy")});
    }
    return targets;
}

QList<ShareTarget> ShareTargets::forText()
{
    QList<ShareTarget> targets{{kCopyText, Texts::localized("Copy to clipboard"), QStringLiteral("edit-copy")}};
    if (const ShareTarget mail = mailTarget(); !mail.id.isEmpty())
        targets.append(mail);
    targets.append({kSaveText, Texts::localized("shareSaveText"), QStringLiteral("document-save-as")});
    ShareService *share = Platform::current().share;
    if (share && share->canSearchFiles())
        targets.append({kSearch, Texts::localized("Search"), QStringLiteral("system-search")});
    if (share)
        for (const ShareTarget &t : share->textTargets())
            targets.append(titled(t));
    targets.append({kWebX, Texts::localized("sharePostOnX"), QStringLiteral("internet-web-browser")});
    targets.append({kWebFacebook, Texts::localized("sharePostOnFacebook"), QStringLiteral("internet-web-browser")});
    return targets;
}

void ShareTargets::shareFiles(const QString &targetId, const QStringList &paths, std::function<void(Status)> done)
{
    const QStringList uris = FileUris::fromPaths(paths);
    if (targetId == kMail) {
        if (MailService *mail = Platform::current().mail)
            mail->composeWithAttachments(uris, done);
        else
            done(Error{QStringLiteral("Share"), MailService::NoMailProgram, QStringLiteral("no mail service")});
        return;
    }
    ShareService *share = Platform::current().share;
    if (!share) {
        done(Error{QStringLiteral("Share"), 1, QStringLiteral("nothing to share with on this desktop")});
        return;
    }
    // The tools may take a moment (KDE Connect asks its daemon): off the main thread.
    QThreadPool::globalInstance()->start([share, targetId, uris, done] {
        const Status s = share->shareFiles(targetId, uris);
        QMetaObject::invokeMethod(QCoreApplication::instance(), [s, done] { done(s); }, Qt::QueuedConnection);
    });
}

QString ShareTargets::webSharePage(const QString &targetId, const QString &text)
{
    auto escaped = [](const QString &s) { return QString::fromLatin1(QUrl::toPercentEncoding(s)); };
    if (targetId == kWebX)
        return QStringLiteral("https://x.com/intent/post?text=") + escaped(text);
    if (targetId == kWebFacebook) {
        static const QRegularExpression link(QStringLiteral("https?://[^\\s<>\"]+"));
        const QString first = link.match(text).captured(0);
        return first.isEmpty() ? QStringLiteral("https://www.facebook.com/")
                               : QStringLiteral("https://www.facebook.com/sharer/sharer.php?u=") + escaped(first);
    }
    return {};
}
