#pragma once

// Driving the editor's window as a user would: opening a picture and waiting until it is read, and
// dragging strokes across the paint layer.

#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

namespace EditorWindowFixtures {

// Opens the picture and waits for the whole of it; false when it was refused or took too long.
inline bool openAndWait(CropImgWC &editor, const QString &path, bool fromAnotherApp = false, bool attachment = false)
{
    QSignalSpy ready(&editor, &CropImgWC::pictureReady);
    editor.openImage(path, fromAnotherApp, attachment);
    return editor.isVisible() && (ready.count() > 0 || ready.wait(20000));
}

// A stroke dragged through these points, given as fractions of the paint view.
inline void stroke(AKPaintView *view, const QList<QPointF> &fractions)
{
    const auto at = [view](QPointF f) { return QPointF(f.x() * view->width(), f.y() * view->height()); };
    QMouseEvent press(QEvent::MouseButtonPress, at(fractions.first()), view->mapToGlobal(at(fractions.first())),
                      Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(view, &press);
    for (const QPointF &f : fractions.mid(1)) {
        QMouseEvent move(QEvent::MouseMove, at(f), view->mapToGlobal(at(f)), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(view, &move);
    }
    QMouseEvent release(QEvent::MouseButtonRelease, at(fractions.last()), view->mapToGlobal(at(fractions.last())),
                        Qt::LeftButton, Qt::NoButton, {});
    QApplication::sendEvent(view, &release);
}

} // namespace EditorWindowFixtures
