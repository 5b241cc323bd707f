#include "MailAlert.h"
#include "core/fs/NativePath.h"
#include "sending/FileUris.h"
#include "utils/Utils.h"

void Utils::emailMultiFilesViaDefaultMailApp(const QStringList &paths)
{
    MailService *mail = Platform::current().mail;
    if (!mail || paths.isEmpty()) {
        qWarning("no mail service to hand %lld file(s) to", static_cast<long long>(paths.size()));
        return;
    }
    const qsizetype count = paths.size();
    mail->composeWithAttachments(FileUris::fromPaths(paths), [count](const Status &s) {
        MailService *mail = Platform::current().mail;
        const MailClient client = mail ? mail->defaultClient() : MailClient();
        if (s.ok()) {
            qInfo("%lld file(s) handed to the mail program %s", static_cast<long long>(count), qPrintable(client.desktopFile));
            return;
        }
        qWarning("%s", qPrintable(s.error().message));
        showMailRefusedAlert(client, s.error());
    });
}

void Utils::mailFile(const QString &path)
{
    emailMultiFilesViaDefaultMailApp({path});
}
