#pragma once

#include <QColor>
#include <QPushButton>
#include <QVariant>

// A text button without a border, in bold, with a hand cursor; under the pointer its colour is dimmed.
class RMBorderlessButton : public QPushButton
{
    Q_OBJECT
public:
    explicit RMBorderlessButton(const QString &text = QString(), QWidget *parent = nullptr);

    static QColor defaultColor() { return QColor::fromRgbF(0.0392156862745098f, 0.0392156862745098f, 0.11764705882352941f); }
    // Each of red, green and blue 0.2 lower, not below 0; alpha kept.
    static QColor dimmedColor(const QColor &color);
    void setColor(const QColor &color);
    QColor color() const { return m_color; }
    bool dimWhileClicked = false;
    QVariant representedObject;

    QSize sizeHint() const override;

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *) override;

private:
    QColor m_color = defaultColor();
    QColor m_tempColor;
};
