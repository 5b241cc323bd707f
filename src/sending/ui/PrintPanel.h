#pragma once

#include "platform/Platform.h"

#include <QObject>
#include <QPrinter>

class QPrintDialog;
class QWidget;

// What the print dialog chose, as options of the printing system.
PrintOptions printOptionsOf(const QPrinter &printer);

// The print dialog for one document, opened without a nested event loop; once it is accepted the
// document goes to the chosen printer on a worker thread. `finished` comes once: true when the job
// was handed over, false when the dialog was cancelled or the job failed (the failure already said).
class PrintPanel : public QObject
{
    Q_OBJECT
public:
    PrintPanel(const QString &path, const QByteArray &password, QWidget *parent);
    void open();
    QPrintDialog *dialog() const { return m_dialog; }

Q_SIGNALS:
    void finished(bool sent);

private:
    void accepted();

    QString m_path;
    QByteArray m_password;
    QPrinter m_printer;
    QPrintDialog *m_dialog = nullptr;
};
