#include "HotKeyBinding.h"

#include "core/NotificationCenter.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

HotKeyBinding::HotKeyBinding(HotKeyBinder *binder, QObject *parent) : QObject(parent), m_binder(binder)
{
    connect(binder, &HotKeyBinder::activated, this,
            [] { NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::ShowPanelHK)); });
    NotificationCenter::defaultCenter().observe(QString::fromLatin1(NotificationName::ActivateViaSettingsChanged),
                                                this, [this](const QVariantMap &) { refresh(); });
    refresh();
}

void HotKeyBinding::refresh()
{
    const QString keys = Utils::isShortcutEnabled() ? Utils::showPanelHotKey() : QString();
    if (keys == m_boundKeys)
        return;
    m_binder->unbind();
    m_boundKeys.clear();
    if (keys.isEmpty())
        return;
    if (const Status bound = m_binder->bind(keys); !bound.ok()) {
        qWarning("hot key not available: %s", qPrintable(bound.error().message));
        NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::HotKeyUnavailable),
                                                 {{QStringLiteral("keys"), keys},
                                                  {QStringLiteral("message"), bound.error().message}});
        return;
    }
    m_boundKeys = keys;
    qInfo("hot key %s opens the drop window", qPrintable(keys));
}
