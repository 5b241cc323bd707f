#pragma once

#include "StatusItemWindowConfiguration.h"

#include <QPointer>
#include <QWidget>

// The borderless window that hangs under the tray icon: a rounded card with a small arrow towards the
// icon, holding one content view. As a normal window it has a title bar and no arrow: what a desktop
// without a tray gets.
class CCNStatusItemWindow : public QWidget
{
    Q_OBJECT
public:
    static constexpr int kArrowHeight = 11;
    static constexpr double kCornerRadius = 5.0;

    explicit CCNStatusItemWindow(const StatusItemWindowConfiguration &configuration, QWidget *parent = nullptr);

    void setContentView(QWidget *view); // the same view again changes nothing
    QWidget *userContentView() const { return m_content; }
    // Which side the arrow is on: under the icon it points up, above it it points down.
    void setArrowOnTop(bool top);
    void setArrowX(int x);
    void setAsNormalWindow(bool normal);
    bool isNormalWindow() const { return m_normal; }
    void setConfiguration(const StatusItemWindowConfiguration &configuration);
    // The window's size for its content: the arrow adds to the height.
    QSize frameSizeForContent(const QSize &content) const;

Q_SIGNALS:
    void lostFocus();
    void escapePressed();
    void closedByUser(); // the normal window's close button

protected:
    void paintEvent(QPaintEvent *) override;
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void relayout();

    StatusItemWindowConfiguration m_configuration;
    QPointer<QWidget> m_content;
    bool m_arrowOnTop = true;
    int m_arrowX = -1;
    bool m_normal = false;
};
