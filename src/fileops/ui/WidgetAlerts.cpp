#include "WidgetAlerts.h"

#include <QMessageBox>

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
    // Parented to nothing: the drop window may close while the alert is still read.
    auto *box = new QMessageBox(critical ? QMessageBox::Critical : QMessageBox::Information, QStringLiteral("Quaydrop"),
                                title, QMessageBox::Ok);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(text);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    m_last = box;
    box->show();
    box->raise();
}
