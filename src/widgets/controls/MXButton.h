#pragma once

#include <QColor>
#include <QMargins>
#include <QPushButton>

// A flat button: a rounded rectangle of one colour, another while pressed, and its title in a colour
// of its own. Its size includes the padding around the title.
class MXButton : public QPushButton
{
    Q_OBJECT
public:
    explicit MXButton(const QString &text = QString(), QWidget *parent = nullptr);

    void setCornerRadius(double radius);
    void setBackgroundColor(const QColor &color);
    void setHighlightColor(const QColor &color);
    void setTextColor(const QColor &color);
    void setHighlightTextColor(const QColor &color);
    void setPadding(const QMargins &padding);
    double cornerRadius() const { return m_radius; }
    QColor backgroundColor() const { return m_background; }
    QColor textColor() const { return m_text; }
    QMargins padding() const { return m_padding; }
    bool subpixelAntialiasing = true;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *) override;

private:
    double m_radius = 4.0;
    QColor m_background{0, 0, 0, 77};
    QColor m_highlight{0, 0, 0, 77};
    QColor m_text = QColor::fromRgbF(0.2f, 0.2f, 0.2f, 0.9f);
    QColor m_highlightText = QColor::fromRgbF(0.2f, 0.2f, 0.2f, 0.5f);
    QMargins m_padding{13, 2, 13, 2};
};
