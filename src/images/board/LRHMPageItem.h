#pragma once

// One entry of the page board: a file and the turn or flip it is shown and exported with. The file
// itself is never changed. The transform is in the PDF's own space (y up, as the page is drawn).

#include <QString>
#include <QTransform>

class LRHMPageItem
{
public:
    explicit LRHMPageItem(const QString &filePath = {}); // initWithFilepath

    // The thumbnail cache's key: "<name>_<random>", and "_1" more after every change of the picture, so
    // that a key is never used again for another look of the page.
    QString identify;
    QString filePath;
    QTransform transform; // starts as the identity

    QString fileName() const; // the file's name less extension; empty without a path
    void appendCGTransform(const QTransform &t); // the newest is applied last
    void autoReloadIdentify() { identify += QStringLiteral("_1"); }

    static QString createIdentifyWith(const QString &fileName);
};

// The transforms of the board's four buttons, in y-up space.
class LRHMTransformManager
{
public:
    // `rect` is unused, as it always was; `angle` in degrees, positive anticlockwise.
    static QTransform rotateTransformWith(const QRectF &rect, double angle);
    static QTransform verticalFlipTransformWith(const QRectF &rect);   // y becomes height - y
    static QTransform horizontalFlipTransformWith(const QRectF &rect); // x becomes width - x
};

namespace PageGeometry {
// The picture's size once `transform` is applied to a picture of `size`, truncated to whole units.
QSize transformedSize(const QSize &size, const QTransform &transform);
// The same transform for y-down pixels (QImage), where the picture's top row comes first.
QTransform forYDown(const QTransform &yUp);
} // namespace PageGeometry
