#pragma once

// The jobs a worker does and the names of their arguments and answers, shared by both ends.
// Paths are byte strings (WorkerProtocol::path); images are maps (WorkerProtocol::image).

#include <QLatin1StringView>

namespace WorkerJobs {

// {source} -> {width, height (as the image is seen), dpiX, dpiY, orientation}
inline constexpr QLatin1StringView kProbe{"probe"};
// {source, width, height, code, output} -> {}: Lanczos-resampled and encoded into the file `output`
inline constexpr QLatin1StringView kResize{"resize"};
// {source, code, [factor], output} -> {}; with pngLevel, the PNG deflated again at that factor
inline constexpr QLatin1StringView kConvert{"convert"};
// {source, [side]} -> {image, dpiX, dpiY}: upright, in sRGB, fitted into side x side when given
inline constexpr QLatin1StringView kDecode{"decode"};
// {source, side} -> {image}: an image, or a PDF's first page
inline constexpr QLatin1StringView kThumbnail{"thumbnail"};
// {image, width, height} -> {image}
inline constexpr QLatin1StringView kScale{"scale"};
// {image, code, factor} -> {data}
inline constexpr QLatin1StringView kEncode{"encode"};
// {source, [password]} -> {readable, problem, locked, encrypted, opens, pages}
inline constexpr QLatin1StringView kPdfInfo{"pdfInfo"};
// {source, password, index, dpi, code, output} -> {} or {tooSmall}
inline constexpr QLatin1StringView kPdfPage{"pdfPage"};

// {data, operation (LosslessJpeg::Op)} -> {data}: a JPEG turned or flipped without decoding
inline constexpr QLatin1StringView kJpegTransform{"jpegTransform"};

inline constexpr QLatin1StringView kSource{"source"};
inline constexpr QLatin1StringView kOutput{"output"};
inline constexpr QLatin1StringView kWidth{"width"};
inline constexpr QLatin1StringView kHeight{"height"};
inline constexpr QLatin1StringView kCode{"code"};
inline constexpr QLatin1StringView kFactor{"factor"};
inline constexpr QLatin1StringView kPngLevel{"pngLevel"};
inline constexpr QLatin1StringView kSide{"side"};
inline constexpr QLatin1StringView kImage{"image"};
inline constexpr QLatin1StringView kData{"data"};
inline constexpr QLatin1StringView kDpiX{"dpiX"};
inline constexpr QLatin1StringView kDpiY{"dpiY"};
inline constexpr QLatin1StringView kOrientation{"orientation"};
inline constexpr QLatin1StringView kPassword{"password"};
inline constexpr QLatin1StringView kIndex{"index"};
inline constexpr QLatin1StringView kDpi{"dpi"};
inline constexpr QLatin1StringView kReadable{"readable"};
inline constexpr QLatin1StringView kProblem{"problem"};
inline constexpr QLatin1StringView kLocked{"locked"};
inline constexpr QLatin1StringView kEncrypted{"encrypted"};
inline constexpr QLatin1StringView kOpens{"opens"};
inline constexpr QLatin1StringView kPages{"pages"};
inline constexpr QLatin1StringView kTooSmall{"tooSmall"};
inline constexpr QLatin1StringView kOperation{"operation"};

} // namespace WorkerJobs
