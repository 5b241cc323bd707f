#include "WidgetAlerts.h"

#include "widgets/Alert.h"

void WidgetAlerts::showBasicAlert(const QString &title, const QString &informativeText)
{
    show(false, title, informativeText);
}

void WidgetAlerts::showCriticalAlert(const QString &title, const QString &informativeText)
{
    show(true, title, informativeText);
}

void WidgetAlerts::show(bool critical, const QString &title, const QString &text)
{
    qWarning("%s: %s", qPrintable(title), qPrintable(text));
    m_last = showAlert(critical ? QMessageBox::Critical : QMessageBox::Information, title, text);
}
