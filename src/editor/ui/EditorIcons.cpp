#include "EditorIcons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QtMath>

#include <cmath>

namespace EditorIcons {

namespace {

// An arc about `centre` from `start` degrees (counter-clockwise from three o'clock, as the eye sees it)
// over `sweep` degrees, positive counter-clockwise, with an arrowhead at its end along the turn.
void arcArrow(QPainter &p, QPointF centre, double radius, double start, double sweep)
{
    const QRectF circle(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    QPainterPath arc;
    arc.arcMoveTo(circle, start);
    arc.arcTo(circle, start, sweep);
    p.drawPath(arc);
    const double end = qDegreesToRadians(start + sweep);
    const QPointF tip = arc.currentPosition();
    // The direction of travel at the end, in y-down coordinates.
    const double sign = sweep > 0 ? 1.0 : -1.0;
    const QPointF along(-std::sin(end) * sign, -std::cos(end) * sign);
    const QPointF across(-along.y(), along.x());
    p.setBrush(p.pen().color());
    p.drawPolygon(QPolygonF({tip + along * 3.0, tip - along * 1.5 + across * 3.0, tip - along * 1.5 - across * 3.0}));
    p.setBrush(Qt::NoBrush);
}

// A quarter turn: an arrow over the top towards the side the picture turns to.
void turnArrow(QPainter &p, const QRectF &box, bool clockwise)
{
    const QPointF centre(box.center().x(), box.center().y() + 1);
    arcArrow(p, centre, 6.5, clockwise ? 200 : -20, clockwise ? -220 : 220);
}

void align(QPainter &p, const QRectF &box, int corner)
{
    const QRectF frame = box.adjusted(3, 3, -3, -3);
    QPen dashed = p.pen();
    dashed.setStyle(Qt::DotLine);
    p.setPen(dashed);
    p.drawRect(frame);
    const double s = frame.width() * 0.45;
    QRectF mark(0, 0, s, s);
    switch (corner) {
    case 0: mark.moveCenter(frame.center()); break;
    case 1: mark.moveBottomLeft(frame.bottomLeft()); break;
    case 2: mark.moveBottomRight(frame.bottomRight()); break;
    case 3: mark.moveTopLeft(frame.topLeft()); break;
    default: mark.moveTopRight(frame.topRight()); break;
    }
    p.fillRect(mark, p.pen().color());
}

void draw(QPainter &p, Kind kind, const QRectF &b)
{
    const QPointF c = b.center();
    switch (kind) {
    case Kind::RotateLeft: turnArrow(p, b, false); break;
    case Kind::RotateRight: turnArrow(p, b, true); break;
    case Kind::Revert: {
        // Back in time: a clock face inside an arrow turning back.
        arcArrow(p, c, 7, 100, 280);
        p.drawLine(c, c + QPointF(0, -3.5));
        p.drawLine(c, c + QPointF(2.5, 1.5));
        break;
    }
    case Kind::Undo:
    case Kind::Redo: {
        const bool back = kind == Kind::Undo;
        QPainterPath path;
        const double x0 = back ? b.right() - 4 : b.left() + 4, x1 = back ? b.left() + 5 : b.right() - 5;
        path.moveTo(x0, b.bottom() - 4);
        path.cubicTo(x0, c.y() - 5, x1, c.y() - 5, x1, c.y() - 1);
        p.drawPath(path);
        p.setBrush(p.pen().color());
        p.drawPolygon(QPolygonF({QPointF(x1 - 3.5, c.y() - 2.5), QPointF(x1 + 3.5, c.y() - 2.5), QPointF(x1, c.y() + 2.5)}));
        break;
    }
    case Kind::Resize: {
        p.drawRect(b.adjusted(3, 9, -9, -3));
        p.drawLine(QPointF(c.x() - 1, c.y() + 1), QPointF(b.right() - 3, b.top() + 3));
        p.drawLine(QPointF(b.right() - 3, b.top() + 3), QPointF(b.right() - 8, b.top() + 3));
        p.drawLine(QPointF(b.right() - 3, b.top() + 3), QPointF(b.right() - 3, b.top() + 8));
        break;
    }
    case Kind::FullSize: {
        const QRectF r = b.adjusted(3, 3, -3, -3);
        const double l = 5;
        for (const QPointF &corner : {r.topLeft(), r.topRight(), r.bottomLeft(), r.bottomRight()}) {
            const double dx = corner.x() < c.x() ? l : -l, dy = corner.y() < c.y() ? l : -l;
            p.drawLine(corner, corner + QPointF(dx, 0));
            p.drawLine(corner, corner + QPointF(0, dy));
        }
        break;
    }
    case Kind::Share: {
        p.drawPolyline(QPolygonF({QPointF(b.left() + 5, c.y()), QPointF(b.left() + 5, b.bottom() - 3),
                                  QPointF(b.right() - 5, b.bottom() - 3), QPointF(b.right() - 5, c.y())}));
        p.drawLine(QPointF(c.x(), b.top() + 3), QPointF(c.x(), c.y() + 3));
        p.drawPolyline(QPolygonF({QPointF(c.x() - 3.5, b.top() + 6.5), QPointF(c.x(), b.top() + 3),
                                  QPointF(c.x() + 3.5, b.top() + 6.5)}));
        break;
    }
    case Kind::Brush: {
        p.drawLine(QPointF(b.right() - 3, b.top() + 3), QPointF(c.x() + 1, c.y() - 1));
        p.setBrush(p.pen().color());
        QPainterPath tip;
        tip.moveTo(c.x() + 2, c.y() - 2);
        tip.cubicTo(c.x() - 6, c.y() - 2, b.left() + 2, b.bottom() - 5, b.left() + 3, b.bottom() - 3);
        tip.cubicTo(b.left() + 7, b.bottom() - 2, c.x() + 3, c.y() + 6, c.x() + 2, c.y() - 2);
        p.drawPath(tip);
        break;
    }
    case Kind::Eraser: {
        QTransform t;
        t.translate(c.x(), c.y());
        t.rotate(-40);
        p.setTransform(t, true);
        p.drawRoundedRect(QRectF(-7, -4, 14, 8), 1.5, 1.5);
        p.fillRect(QRectF(-7, -4, 5, 8), p.pen().color());
        break;
    }
    case Kind::AlignCentre: align(p, b, 0); break;
    case Kind::AlignBottomLeft: align(p, b, 1); break;
    case Kind::AlignBottomRight: align(p, b, 2); break;
    case Kind::AlignTopLeft: align(p, b, 3); break;
    case Kind::AlignTopRight: align(p, b, 4); break;
    }
}

QPixmap render(Kind kind, const QColor &color, int side, qreal ratio)
{
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.scale(side / 20.0, side / 20.0);
    draw(p, kind, QRectF(0, 0, 20, 20));
    return pixmap;
}

} // namespace

QIcon icon(Kind kind, const QPalette &palette, int side)
{
    const qreal ratio = qApp ? qApp->devicePixelRatio() : 1.0;
    QIcon icon(render(kind, palette.color(QPalette::Active, QPalette::ButtonText), side, ratio));
    icon.addPixmap(render(kind, palette.color(QPalette::Disabled, QPalette::ButtonText), side, ratio), QIcon::Disabled);
    return icon;
}

QIcon swatch(const QColor &color, int side)
{
    const qreal ratio = qApp ? qApp->devicePixelRatio() : 1.0;
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0, 0, 0, 90), 1));
    p.setBrush(color);
    p.drawEllipse(QRectF(2, 2, side - 4, side - 4));
    return QIcon(pixmap);
}

} // namespace EditorIcons
