#include "MailAlert.h"

#include "core/texts/Texts.h"
#include "widgets/Alert.h"

#include <QIcon>
#include <QPushButton>

QMessageBox *showMailRefusedAlert(const MailClient &client, const Error &why)
{
    if (why.code == MailService::NoMailProgram || client.desktopFile.isEmpty())
        return showAlert(QMessageBox::Information, Texts::localized("NoMailApp"), Texts::localized("NoMailAppText"));
    if (why.code != MailService::NoAttachments)
        return showAlert(QMessageBox::Warning, Texts::localized("MailNotStarted"), why.message);

    QMessageBox *box = showAlert(QMessageBox::Information, Texts::localized("MailAppNOTDefault"),
                                 Texts::localized("MailAppNOTDefaultText").arg(client.name));
    const QIcon icon = QIcon::fromTheme(client.iconName);
    if (!icon.isNull())
        box->setIconPixmap(icon.pixmap(64, 64));
    QPushButton *launch = box->addButton(Texts::localized("LaunchMailApp").arg(client.name), QMessageBox::ActionRole);
    launch->setObjectName(QStringLiteral("launchMailAppBtn"));
    QObject::connect(launch, &QPushButton::clicked, box, [] {
        if (MailService *mail = Platform::current().mail)
            if (const Status s = mail->launchDefaultClient(); !s.ok())
                qWarning("the mail program did not start: %s", qPrintable(s.error().message));
    });
    return box;
}
