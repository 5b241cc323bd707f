#pragma once

#include "platform/Platform.h"

#include <QDBusConnection>

#include <optional>

// The file manager over org.freedesktop.FileManager1, default applications through xdg-open.
class FreedesktopWorkspace : public Workspace
{
public:
    explicit FreedesktopWorkspace(QDBusConnection bus = QDBusConnection::sessionBus()) : m_bus(std::move(bus)) {}

    // Selects the items in a file manager window; with no file manager on the bus, opens the parent
    // folder of the first item instead.
    Status revealItems(const QStringList &paths) override;
    Status openPath(const QString &path) override;
    Status openUrl(const QString &url) override;
    // Asked of xdg-mime once: the drag watcher asks on every drag.
    QString defaultFileManagerId() const override;

private:
    QDBusConnection m_bus;
    mutable std::optional<QString> m_fileManager;
};
