#pragma once

#include <QDialog>

#include <functional>

class QLabel;
class QLineEdit;

// Asks for the password of a locked PDF, as a sheet on the drop window. Ends with 1 for Unlock and 0
// for Cancel; the password is used for that one document and never kept. A password that `opens`
// refuses leaves the sheet up, saying so, for another try.
class LockedPDFEnterPass : public QDialog
{
    Q_OBJECT
public:
    using Check = std::function<bool(const QString &password)>;
    LockedPDFEnterPass(const QString &documentName, Check opens, QWidget *sheetParent);
    QString password() const;

    QLineEdit *pdfPassTxtFld;
    QLabel *pasHintTxtFld;
    QLabel *wrongPassLbl;

private:
    void unlockCancleAction(qint64 tag);
    Check m_opens;
};
