#include "PdfPages.h"

#include "images/ImageErrors.h"
#include "images/ImageWorker.h"
#include "worker/Jobs.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"


#include <sys/stat.h>

#include <cmath>

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

PdfPages::LockState PdfPages::inspect(const QString &path, const QByteArray &password)
{
    namespace J = WorkerJobs;
    LockState state;
    QCborMap arguments;
    if (!password.isEmpty())
        arguments.insert(J::kPassword, password);
    const auto reply = ImageWorker::call(J::kPdfInfo, arguments, path);
    if (!reply.ok()) {
        state.problem = reply.error().info.value(QStringLiteral("reason")).toString();
        return state;
    }
    const QCborMap &info = reply.value();
    state.readable = info.value(J::kReadable).toBool();
    state.problem = info.value(J::kProblem).toString();
    state.locked = info.value(J::kLocked).toBool();
    state.encrypted = info.value(J::kEncrypted).toBool();
    state.opens = info.value(J::kOpens).toBool();
    state.pages = int(info.value(J::kPages).toInteger());
    return state;
}

bool PdfPages::unlockWithPassword(const QString &path, const QByteArray &password)
{
    return inspect(path, password).opens;
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
