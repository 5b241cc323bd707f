#pragma once

#include "utils/Result.h"

#include <QColor>
#include <QPointer>
#include <QSize>
#include <QWidget>

class JMModalOverlay;

// Optional messages of an overlay's delegate; each forwards the notification of the same meaning.
class JMModalOverlayDelegate
{
public:
    virtual ~JMModalOverlayDelegate() = default;
    virtual void modalOverlayWillShow(JMModalOverlay *) {}
    virtual void modalOverlayDidShow(JMModalOverlay *) {}
    virtual void modalOverlayWillClose(JMModalOverlay *) {}
    virtual void modalOverlayDidClose(JMModalOverlay *) {}
    virtual bool modalOverlayShouldClose(JMModalOverlay *) { return true; }
};

namespace JMModalOverlayNotification {
inline constexpr char WillShow[] = "JMModalOverlayWillShowNotification";
inline constexpr char DidShow[] = "JMModalOverlayDidShowNotification";
inline constexpr char WillClose[] = "JMModalOverlayWillCloseNotification";
inline constexpr char DidClose[] = "JMModalOverlayDidCloseNotification";
} // namespace JMModalOverlayNotification

// Lays a controller's view over a window, on a card over a dimmed background that takes every click,
// until close(). The parent cannot be resized meanwhile.
class JMModalOverlay : public QObject
{
    Q_OBJECT
public:
    explicit JMModalOverlay(QObject *parent = nullptr);
    ~JMModalOverlay() override;

    JMModalOverlayDelegate *delegate = nullptr;
    QPointer<QWidget> contentViewController;
    bool shouldCloseWhenClickOnBackground = true;
    bool shouldOverlayTitleBar = true;
    bool animates = true;
    int animationDirection = 0; // 0 fade; 1 from top, 2 from bottom, 3 from left, 4 from right

    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    bool isShown() const { return m_shown; }
    QWidget *parentWindow() const { return m_parentWindow; }

    // Refuses, as an error, a missing window or controller. Showing twice shows one overlay.
    Status showInWindow(QWidget *window);
    void close();
    // Asks the delegate first.
    void performClose();

private:
    void afterShow();
    void afterClose();
    void post(const char *name);
    void forward(const QString &name);
    void animate(QWidget *view, bool appearing, const std::function<void()> &done);

    QColor m_backgroundColor{0, 0, 0, 102};
    bool m_shown = false;
    QPointer<QWidget> m_parentWindow;
    QPointer<QWidget> m_overlayView;
    QPointer<QWidget> m_container;
    bool m_tookResizable = false;
    QSize m_oldMin, m_oldMax;
};
