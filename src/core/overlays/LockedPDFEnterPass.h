#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

// Asks for the password of a locked PDF, as a sheet on the drop window. Ends with 1 for Unlock and 0
// for Cancel; the password is used for that one document and never kept.
class LockedPDFEnterPass : public QDialog
{
    Q_OBJECT
public:
    explicit LockedPDFEnterPass(const QString &documentName, QWidget *sheetParent);
    QString password() const;

    QLineEdit *pdfPassTxtFld;
    QLabel *pasHintTxtFld;

private:
    void unlockCancleAction(qint64 tag);
};
