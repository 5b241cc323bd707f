#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class Spinner;

// The busy view shown while a drop is read or a long action runs: a text, a bar or a spinner, and
// an optional cancel button.
class BusyView : public QWidget
{
    Q_OBJECT
public:
    explicit BusyView(QWidget *parent = nullptr);

    QLabel *emptyContviewLbl;
    QPushButton *cancelProgressBtn;

    // Maximum 1 or less spins; more shows a bar from 0 to the maximum.
    void start(const QString &text, double alpha, double maximum, bool cancelEnabled);
    void incrementBy(double delta);
    // Turns a spinner into a bar once a job knows it has more than one item, and shows `done`.
    void showProgress(int done, int total);
    void stop();
    bool isSpinning() const;
    bool isBar() const;
    double value() const;
    double maximum() const;
    double alpha() const { return m_alpha; }

Q_SIGNALS:
    void cancelRequested();

protected:
    void paintEvent(QPaintEvent *) override;

private:
    QProgressBar *m_bar;
    Spinner *m_spinner;
    double m_alpha = 1.0;
    double m_value = 0;
    double m_maximum = 0;
};
