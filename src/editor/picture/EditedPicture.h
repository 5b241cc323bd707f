#pragma once

#include "PictureLoader.h"

#include <QRect>

// The picture as the editor holds it between edits: full-size pixels with their point size, and what is
// needed to save it as its source's kind of file. Edits replace the pixels; the file is touched only by
// saving. While nothing but quarter turns was done to a JPEG, saving turns the file's own data losslessly.
class EditedPicture
{
public:
    EditedPicture() = default;
    EditedPicture(QString sourcePath, LoadedPicture loaded);

    bool isNull() const { return !m_loaded.image.isValid(); }
    const BitmapImageRep &image() const { return m_loaded.image; }
    const QString &sourcePath() const { return m_sourcePath; }
    quint64 typeCode() const { return m_loaded.typeCode; }

    // A quarter turn: the pixels turn, the point size swaps.
    void rotate(bool clockwise);
    // The whole pixels of `pixels` (rows from the top), which take the point size `points`; false, and
    // nothing changes, when the rectangle holds no pixel of the picture.
    bool crop(const QRect &pixels, const QSizeF &points);
    // New pixels from elsewhere (a resize): the picture is no longer its source merely turned.
    void replaceImage(const BitmapImageRep &image);

    bool onlyTurned() const { return m_onlyTurned; }
    int clockwiseTurns() const { return m_turns; }

    // The file's bytes for a save: the picture with `layer` (premultiplied, the picture's pixel size)
    // over it if given, in the source's type, with its resolution, colour profile and EXIF (upright, of
    // the new size). A JPEG only turned is turned from its own data, its DCT blocks untouched.
    Result<QByteArray> encodedForSaving(const QImage &layer = {}) const;

    // What saving a JPEG file merely turned `clockwiseTurns` quarter turns writes, made from its own
    // data without decoding a pixel. Fails when the file is no JPEG or its edge blocks cannot move; the
    // picture is then loaded and saved as any other.
    static Result<QByteArray> turnedJpegFile(const QString &path, int clockwiseTurns);

private:
    // `pixels`: the upright size after the turns, for the EXIF block.
    static Result<QByteArray> turnedJpeg(const QByteArray &jpeg, int orientation, int clockwiseTurns, QSize pixels);
    Result<QByteArray> encodedPixels(const BitmapImageRep &image) const;

    QString m_sourcePath;
    LoadedPicture m_loaded;
    int m_turns = 0;
    bool m_onlyTurned = true;
};
