#pragma once

#include "widgets/TranslatedTexts.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

// zippingTaskPanel: a small window that stays while an archive is written, whatever happens to the
// drop window: its state as the title, a bar in bytes, how far it got, and a cancel button.
class ZipProgressWindow : public QWidget
{
    Q_OBJECT
public:
    explicit ZipProgressWindow(QWidget *parent = nullptr);

    // "...Initializing...", "zipping", "Success", "Canceled": keys of the texts table.
    void setStateKey(const char *key);
    void setProgress(quint64 done, quint64 total, const QString &currentName);
    QString stateText() const;
    int permille() const;

    QProgressBar *taskProgressIndic;
    QPushButton *cancelBtn;

Q_SIGNALS:
    void cancelRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();

    QByteArray m_stateKey;
    QLabel *m_state;
    QLabel *m_detail;
    quint64 m_done = 0, m_total = 0;
    QString m_current;
    TranslatedTexts m_texts;
};
