#pragma once

// What an edited picture carries over from its source file besides pixels, read and written at the
// byte level (no decoder involved): the EXIF block of a JPEG (APP1) or a PNG (eXIf). The colour profile
// travels with the decoded image itself (QColorSpace), the resolution with its dots per metre.

#include <QByteArray>
#include <QSize>

namespace ImageMetadata {

// The EXIF block (TIFF structure, without the "Exif\0\0" header) of a JPEG or PNG file; empty for other
// files or when there is none.
QByteArray exifOf(const QByteArray &file);

// The EXIF orientation, 1 (upright) to 8; 1 when the block states none or is unreadable.
int exifOrientation(const QByteArray &exif);

// The block stating orientation 1 and, where it states them, this pixel width and height: the pixels
// written are upright and of this size. Same length; a block it cannot read comes back unchanged.
QByteArray uprightExif(const QByteArray &exif, QSize pixels);

// An encoded JPEG or PNG with this EXIF block put in (JPEG: an APP1 segment after SOI and JFIF; PNG: an
// eXIf chunk before the first IDAT). Other files, an empty block, or a block too large for a JPEG
// segment: the bytes as they are.
QByteArray withExif(const QByteArray &encoded, const QByteArray &exif);

// A JPEG whose own EXIF block is made upright (as above) in place; without one, unchanged.
QByteArray withUprightExif(const QByteArray &jpeg, QSize pixels);

} // namespace ImageMetadata
