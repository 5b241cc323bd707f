#pragma once

#include <QObject>

class HotKeyBinder;

// Keeps the global key in step with the settings: grabbed while the hot key is the way of summoning,
// released otherwise, and taken again whenever "activateViaSettingsChanged" says the way or the key
// changed. A press posts "showPanelHKnotif".
class HotKeyBinding : public QObject
{
    Q_OBJECT
public:
    HotKeyBinding(HotKeyBinder *binder, QObject *parent = nullptr);
    void refresh();
    bool isBound() const { return !m_boundKeys.isEmpty(); }

private:
    HotKeyBinder *m_binder;
    QString m_boundKeys;
};
