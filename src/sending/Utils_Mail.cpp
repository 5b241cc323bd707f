#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QUrl>

void Utils::sendEmailTo(const QString &address, const QString &body, const QString &subject)
{
    // "mailto:ADDRESS?Subject=SUBJECT&body=BODY": the body is escaped as a query value; in the address
    // and the subject only the blanks are.
    const QString query = QStringLiteral("body=") + QString::fromLatin1(QUrl::toPercentEncoding(body));
    QString url = QStringLiteral("mailto:%1?Subject=%2&%3").arg(address, subject, query);
    url.replace(QChar(' '), QStringLiteral("%20"));
    Workspace *workspace = Platform::current().workspace;
    if (!workspace) {
        qWarning("no mail program to hand the message to: %s", qPrintable(url));
        return;
    }
    if (const Status s = workspace->openUrl(url); !s.ok())
        qWarning("the mail program did not open: %s", qPrintable(s.error().message));
}
