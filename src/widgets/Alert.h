#pragma once

#include <QMessageBox>

// A message box that stays above the drop window and is shown without a nested event loop; it goes
// away by itself once closed.
QMessageBox *showAlert(QMessageBox::Icon icon, const QString &title, const QString &informativeText);
