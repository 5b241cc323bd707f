#pragma once

// The arithmetic and naming of a resize, without touching a file: what the overlay shows while the
// user types, and which files a batch writes.

#include <QList>
#include <QSizeF>
#include <QStringList>

#include <functional>
#include <optional>

namespace ResizePlan {

// The other side for a new value of one side: trunc(otherOld x new / old) in 32-bit floats, as "%d".
// An empty new value gives an empty result.
QString proportional(float oldSide, float oldOther, const QString &newValue);

// "NAME_WxH.EXT": the width and height as typed and the source's extension as it stands.
QString outputName(const QString &sourceFileName, const QString &width, const QString &height);

// The arrow keys in a size field: up adds one to a value shorter than five characters, down takes one
// away unless that gives 0. Nothing when the key does nothing.
std::optional<QString> steppedUp(const QString &text);
std::optional<QString> steppedDown(const QString &text);

struct Task
{
    QString source;
    QString width;
    QString height;
    QString output;  // full path
    QString problem; // set when the source's size could not be read
};

// Several images: one output for each filled field, fitted to it with the image's own proportions.
// One image (or none in the list): the first dropped path, at both values as given.
QList<Task> plan(const QStringList &imagePaths, bool multiFiles, const QString &width, const QString &height,
                 const QString &firstDroppedPath, const QString &destFolder,
                 const std::function<QSizeF(const QString &)> &pixelSizeOf);

} // namespace ResizePlan
