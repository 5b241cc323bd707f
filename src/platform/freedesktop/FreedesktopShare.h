#pragma once

#include "platform/Platform.h"

#include <QDBusConnection>

#include <optional>

class MimeApps;

// What this desktop can hand files and text to: KDE Connect's paired devices (kdeconnect-cli),
// Bluetooth (GNOME's bluetooth-sendto or KDE's bluedevil-sendfile, each with its own device
// chooser), and the installed applications that open the files' types. Searches go to the default
// file manager where it can search: Dolphin, Nautilus, or Catfish beside any other.
class FreedesktopShare : public ShareService
{
public:
    // The session bus is asked only for a Nautilus search.
    explicit FreedesktopShare(std::optional<QDBusConnection> bus = std::nullopt) : m_bus(std::move(bus)) {}

    QList<ShareTarget> fileTargets(const QStringList &mimeTypes) const override;
    QList<ShareTarget> textTargets() const override;
    Status shareFiles(const QString &targetId, const QStringList &fileUris) override;
    Status shareText(const QString &targetId, const QString &text) override;
    bool canSearchFiles() const override;
    Status searchFiles(const QString &text, const QString &folderUri) override;

private:
    QList<ShareTarget> kdeConnectDevices() const;
    QString fileManagerId() const;
    std::optional<QDBusConnection> m_bus;
};
