#include "Alert.h"

QMessageBox *showAlert(QMessageBox::Icon icon, const QString &title, const QString &informativeText)
{
    // Parented to nothing: the drop window may close while the alert is still being read.
    auto *box = new QMessageBox(icon, QStringLiteral("Quaydrop"), title, QMessageBox::Ok);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(informativeText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    box->show();
    box->raise();
    return box;
}
