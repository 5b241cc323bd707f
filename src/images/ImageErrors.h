#pragma once

// The words every image and PDF reader uses for what is wrong with an input, so that the same bad
// file is described the same way by every command and panel. An error names its file: the message
// reads "PATH: REASON", and its info holds the "path" as the program keeps it (bytes intact) and the
// bare "reason", for whoever prints the path's own bytes.

#include "utils/Result.h"

#include <optional>

namespace ImageErrors {

inline constexpr const char *kDomain = "Image";

inline constexpr const char *kNotAnImage = "not an image this program can read";
inline constexpr const char *kDamaged = "damaged image data";
inline constexpr const char *kFolder = "a folder, not a file";
inline constexpr const char *kEmpty = "the file is empty";
inline constexpr const char *kNotAPdf = "not a PDF document, or a damaged one";

// Larger images are refused before a pixel is decoded: a header may claim anything.
inline constexpr qint64 kMaxPixels = qint64(1) << 28; // 268 megapixels, 16384 x 16384

Error make(const QString &path, const QString &reason, int code = 1);
// Too many pixels to read, with the size the header claims.
Error tooLarge(const QString &path, qint64 width, qint64 height);
// A decoder's own words (libpng's "Read Error", libvips's "vipspng: libpng read error") go to the
// log; the message says kDamaged whichever decoder met the damage.
Error damaged(const QString &path, const QString &decoderMessage);
// Nothing when `path` is a file with something in it that can be opened for reading; else why not:
// kFolder, kEmpty, or the system's words (No such file or directory, Permission denied).
std::optional<Error> unusableInput(const QString &path);

} // namespace ImageErrors
