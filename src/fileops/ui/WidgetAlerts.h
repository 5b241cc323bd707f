#pragma once

#include "fileops/orchestration/MoveCopyInterfaces.h"

#include <QMessageBox>
#include <QPointer>
#include <QWidget>


// The guards' and the full disk's alerts as message boxes, shown without a nested event loop.
class WidgetAlerts : public UserAlerts
{
public:
    explicit WidgetAlerts(QWidget *window) : m_window(window) {}
    void showBasicAlert(const QString &title, const QString &informativeText) override;
    void showCriticalAlert(const QString &title, const QString &informativeText) override;
    QMessageBox *lastAlert() const { return m_last; }

private:
    void show(bool critical, const QString &title, const QString &text);
    QPointer<QWidget> m_window;
    QPointer<QMessageBox> m_last;
};
