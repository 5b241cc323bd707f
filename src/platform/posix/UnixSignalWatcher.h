#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM and SIGINT into a signal on the Qt event loop (self-pipe), so that a logout or a
// kill stops the program through its normal stop steps.
class UnixSignalWatcher : public QObject
{
    Q_OBJECT
public:
    explicit UnixSignalWatcher(QObject *parent = nullptr);
    ~UnixSignalWatcher() override;
    bool isActive() const { return m_notifier != nullptr; }

Q_SIGNALS:
    void terminationRequested(int signalNumber);

private:
    void drain();
    QSocketNotifier *m_notifier = nullptr;
};
