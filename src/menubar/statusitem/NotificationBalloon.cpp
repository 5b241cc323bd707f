#include "NotificationBalloon.h"

#include "core/texts/Texts.h"

#include <QCursor>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace {
constexpr int kGap = 6;          // between the icon or the pointer and the balloon
constexpr int kPointerOffset = 16; // clear of the pointer's own picture
constexpr int kTextWidth = 260;
} // namespace

NotificationBalloon::NotificationBalloon(std::function<QRect()> anchor, QObject *parent)
    : NotificationService(parent), m_anchor(std::move(anchor))
{
}

NotificationBalloon::~NotificationBalloon() { delete m_balloon; }

void NotificationBalloon::build()
{
    auto *frame = new QFrame(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                                          Qt::WindowDoesNotAcceptFocus);
    frame->setObjectName(QStringLiteral("notificationBalloon"));
    frame->setWindowTitle(QStringLiteral("Quaydrop"));
    frame->setAttribute(Qt::WA_ShowWithoutActivating);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setAutoFillBackground(true);
    frame->setCursor(Qt::PointingHandCursor);
    auto *layout = new QGridLayout(frame);
    layout->setContentsMargins(12, 10, 12, 10);
    layout->setHorizontalSpacing(10);
    auto *icon = new QLabel(frame);
    icon->setPixmap(QIcon(QStringLiteral(":/icons/bw_menuBarIcon.svg")).pixmap(24));
    m_title = new QLabel(frame);
    m_title->setObjectName(QStringLiteral("balloonTitle"));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_body = new QLabel(frame);
    m_body->setObjectName(QStringLiteral("balloonBody"));
    for (QLabel *l : {m_title, m_body}) {
        l->setTextFormat(Qt::PlainText); // names are shown as they are, never read as markup
        l->setWordWrap(true);
        l->setFixedWidth(kTextWidth);
    }
    m_action = new QPushButton(frame);
    m_action->setObjectName(QStringLiteral("balloonAction"));
    m_action->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(m_title, 0, 1);
    layout->addWidget(m_body, 1, 1);
    m_undo = new QPushButton(frame);
    m_undo->setObjectName(QStringLiteral("balloonUndo"));
    m_undo->setFocusPolicy(Qt::NoFocus);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_undo);
    buttons->addWidget(m_action);
    layout->addLayout(buttons, 2, 1);
    connect(m_action, &QPushButton::clicked, this, [this] { activate(); });
    connect(m_undo, &QPushButton::clicked, this, [this] { activate(true); });
    m_timer = new QTimer(frame);
    m_timer->setSingleShot(true);
    m_timer->setInterval(kShowMs);
    connect(m_timer, &QTimer::timeout, frame, &QWidget::hide);
    frame->installEventFilter(this);
    m_balloon = frame;
}

Status NotificationBalloon::deliver(const QString &title, const QString &body, const QVariantMap &userInfo)
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return Error{QStringLiteral("Notifications"), 2, QStringLiteral("no display for a balloon")};
    if (!m_balloon)
        build();
    m_userInfo = userInfo;
    m_title->setText(title);
    m_body->setText(body);
    m_body->setVisible(!body.isEmpty());
    // The same action as a click on a desktop notification: show the files, or open the one file.
    const bool reveal = !userInfo.value(QStringLiteral("filePaths")).toStringList().isEmpty();
    m_action->setText(reveal ? Texts::localized("revealShowFileBtn") : Texts::localized("openFileBtn"));
    m_action->setVisible(reveal || !userInfo.value(QStringLiteral("OpenPath")).toString().isEmpty());
    const QString undo = userInfo.value(QStringLiteral("undoTitle")).toString();
    m_undo->setText(undo);
    m_undo->setVisible(!undo.isEmpty());
    m_balloon->adjustSize();

    const QRect icon = m_anchor ? m_anchor() : QRect();
    const QPoint pointer = QCursor::pos();
    const QScreen *screen = QGuiApplication::screenAt(icon.isEmpty() ? pointer : icon.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
    m_balloon->setGeometry(placed(m_balloon->size(), icon, pointer, area));
    m_balloon->show();
    m_balloon->raise();
    m_timer->start();
    return success();
}

QRect NotificationBalloon::placed(const QSize &size, const QRect &icon, const QPoint &pointer, const QRect &screen)
{
    QRect r(QPoint(), size);
    if (!icon.isEmpty()) {
        r.moveRight(icon.right());
        if (icon.center().y() < screen.center().y())
            r.moveTop(icon.bottom() + kGap);
        else
            r.moveBottom(icon.top() - kGap);
    } else {
        r.moveTopLeft(pointer + QPoint(kPointerOffset, kPointerOffset));
    }
    r.moveLeft(std::clamp(r.left(), screen.left(), std::max(screen.left(), screen.right() - r.width() + 1)));
    r.moveTop(std::clamp(r.top(), screen.top(), std::max(screen.top(), screen.bottom() - r.height() + 1)));
    return r;
}

void NotificationBalloon::activate(bool undo)
{
    m_timer->stop();
    m_balloon->hide();
    QVariantMap info = m_userInfo;
    if (undo)
        info.insert(QString::fromLatin1(kActivationActionKey), QString::fromLatin1(kUndoAction));
    Q_EMIT activated(info);
}

bool NotificationBalloon::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_balloon) {
        // It waits while the pointer rests on it, and a click anywhere on it acts as its button does.
        if (event->type() == QEvent::Enter)
            m_timer->stop();
        else if (event->type() == QEvent::Leave && m_balloon->isVisible())
            m_timer->start();
        else if (event->type() == QEvent::MouseButtonRelease)
            activate();
    }
    return NotificationService::eventFilter(watched, event);
}
