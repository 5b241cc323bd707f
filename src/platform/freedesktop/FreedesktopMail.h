#pragma once

#include "platform/Platform.h"

#include <QDBusConnection>
#include <QObject>

#include <optional>

struct DesktopApplication;

// The default handler of mailto: from the desktop's MIME associations; attachments through the
// program's own command line (MailClients), else through the desktop portal's Email interface with
// the files as descriptors.
class FreedesktopMail : public QObject, public MailService
{
    Q_OBJECT
public:
    // The session bus is connected only when the portal is first needed: a command that sends no
    // mail pays nothing for it.
    explicit FreedesktopMail(QObject *parent = nullptr);
    explicit FreedesktopMail(QDBusConnection bus, QObject *parent = nullptr);

    MailClient defaultClient() const override;
    void composeWithAttachments(const QStringList &fileUris, std::function<void(Status)> done) override;
    Status openMailto(const QString &mailtoUrl) override;
    Status launchDefaultClient() override;

    // The portal is on the bus (running or to be started by it).
    bool portalAnswers() const;

private:
    std::optional<DesktopApplication> defaultApplication() const;
    void composeThroughPortal(const QStringList &fileUris, std::function<void(Status)> done);

    QDBusConnection bus() const;
    mutable std::optional<QDBusConnection> m_bus;
};
