#include "PdfPages.h"

#include "images/ImageErrors.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <poppler-qt6.h>

#include <sys/stat.h>

#include <cmath>
#include <mutex>

QString PdfPages::extensionForImgType(qint64 tag)
{
    switch (tag) {
    case 1:
        return QStringLiteral("png");
    case 3:
        return QStringLiteral("bmp");
    case 4:
        return QStringLiteral("tiff");
    default:
        return QStringLiteral("jpg");
    }
}

float PdfPages::clampedDpi(float dpi)
{
    if (!(dpi >= 30.0f))
        dpi = 150.0f;
    if (dpi > 1000.0f)
        dpi = 1000.0f;
    return dpi;
}

QSize PdfPages::targetPixels(const QSizeF &pagePoints, float dpi)
{
    const double scale = double(dpi / 72.0f);
    const float w = std::roundf(float(pagePoints.width() * scale));
    const float h = std::roundf(float(pagePoints.height() * scale));
    if (!(w >= 1.0f) || !(h >= 1.0f))
        return {};
    return QSize(int(w), int(h));
}

QString PdfPages::pageBaseName(int index) { return QStringLiteral("Page_%1").arg(index + 1); }

void PdfPages::quietReader()
{
    static std::once_flag once;
    std::call_once(once, [] {
        const bool verbose = qEnvironmentVariableIntValue("QUAYDROP_VERBOSE") != 0;
        Poppler::setDebugErrorFunction(
            [](const QString &message, const QVariant &verbose) {
                if (verbose.toBool())
                    qDebug("PDF reader: %s", qPrintable(message));
            },
            verbose);
    });
}

// The reader keeps referring to the bytes it was given: they must outlive the document.
PdfPages::LockState PdfPages::inspect(const QByteArray &pdf)
{
    quietReader();
    LockState state;
    const auto document = Poppler::Document::loadFromData(pdf);
    if (!document) {
        state.problem = QString::fromLatin1(ImageErrors::kNotAPdf);
        return state;
    }
    state.readable = true;
    state.locked = document->isLocked();
    // A locked document answers that it is not encrypted until it is opened.
    state.encrypted = state.locked || document->isEncrypted();
    return state;
}

bool PdfPages::unlockWithPassword(const QByteArray &pdf, const QByteArray &password)
{
    quietReader();
    const auto document = Poppler::Document::loadFromData(pdf, password, password);
    return document && !document->isLocked();
}

bool PdfFiles::hasPdfContent(const QString &path)
{
    // Readers accept the header anywhere in the first kilobyte, after junk a mail program left.
    const FsCalls::UniqueFd file(::open(NativePath::toNative(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat st;
    if (!file || ::fstat(file.fd, &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    char head[1024];
    const ssize_t got = ::read(file.fd, head, sizeof head);
    return got > 0 && QByteArrayView(head, got).contains("%PDF-");
}

bool Utils::isThisPDFFile(const QString &path) { return PdfFiles::hasPdfContent(path); }
