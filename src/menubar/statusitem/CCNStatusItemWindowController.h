#pragma once

#include "CCNStatusItemWindow.h"

#include <QObject>
#include <QPointer>

class QVariantAnimation;

// Shows and dismisses the panel window with the configured transition, one at a time: a toggle while
// the window moves is ignored. Posts the four window notifications, and dismisses the window when it
// loses the focus unless it is pinned.
class CCNStatusItemWindowController : public QObject
{
    Q_OBJECT
public:
    explicit CCNStatusItemWindowController(const StatusItemWindowConfiguration &configuration, QObject *parent = nullptr);
    ~CCNStatusItemWindowController() override;

    CCNStatusItemWindow *window() const { return m_window; }
    void setContentView(QWidget *view) { m_window->setContentView(view); }
    void setConfiguration(const StatusItemWindowConfiguration &configuration);
    const StatusItemWindowConfiguration &configuration() const { return m_configuration; }

    // Under (or over) `icon`, kept on `screen`; as a normal window when there is no tray.
    void showStatusItemWindow(const QRect &icon, const QRect &screen);
    void showAsNormalWindow();
    void dismissStatusItemWindow();
    void updateWindowFrame(const QRect &icon, const QRect &screen);

    bool windowIsOpen() const { return m_open; }
    bool animationIsRunning() const { return m_animating; }

private:
    enum Direction { In = 0, Out = 1 };
    void animateWindow(Direction direction);
    void finishAnimation(Direction direction);
    void post(const char *name);

    StatusItemWindowConfiguration m_configuration;
    CCNStatusItemWindow *m_window;
    QVariantAnimation *m_animation;
    QPoint m_restingPos;
    bool m_open = false;
    bool m_animating = false;
};
