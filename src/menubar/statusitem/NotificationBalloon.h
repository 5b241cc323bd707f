#pragma once

#include "platform/Platform.h"

#include <QPointer>
#include <QRect>
#include <QWidget>

#include <functional>

class QLabel;
class QPushButton;
class QTimer;

// Results told where no notification server runs: a small balloon of the program's own, near the tray
// icon or else the pointer, with the notification's text and its Show (or Open) button, for five
// seconds (longer while the pointer rests on it). A click on it or its button comes back as activated();
// with "undoTitle" in the user info it also has an Undo button, which comes back as the Undo action.
class NotificationBalloon : public NotificationService
{
    Q_OBJECT
public:
    static constexpr int kShowMs = 5000;

    // `anchor`: where the tray icon is now; an empty rectangle when there is none.
    explicit NotificationBalloon(std::function<QRect()> anchor = {}, QObject *parent = nullptr);
    ~NotificationBalloon() override;
    void setAnchor(std::function<QRect()> anchor) { m_anchor = std::move(anchor); }

    Status deliver(const QString &title, const QString &body, const QVariantMap &userInfo) override;

    QWidget *balloon() const { return m_balloon; }
    QLabel *titleLabel() const { return m_title; }
    QLabel *bodyLabel() const { return m_body; }
    QPushButton *actionButton() const { return m_action; }
    QPushButton *undoButton() const { return m_undo; }

    // Beside the icon, on its screen: under it when the icon is in the upper half, else above it;
    // without an icon, below and right of the pointer. Always inside `screen`.
    static QRect placed(const QSize &size, const QRect &icon, const QPoint &pointer, const QRect &screen);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void activate(bool undo = false);

    std::function<QRect()> m_anchor;
    QPointer<QWidget> m_balloon;
    QLabel *m_title = nullptr;
    QLabel *m_body = nullptr;
    QPushButton *m_action = nullptr;
    QPushButton *m_undo = nullptr;
    QTimer *m_timer = nullptr;
    QVariantMap m_userInfo;
};
