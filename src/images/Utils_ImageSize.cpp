#include "ImageSize.h"

#include "ImageErrors.h"
#include "ImageWorker.h"

#include "core/fs/NativePath.h"
#include "utils/Utils.h"
#include "worker/Jobs.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

std::unique_ptr<ImageSize::CommonReader> ImageSize::CommonReader::open(const QString &path)
{
    static const QList<QByteArray> common{"png", "jpeg", "gif", "bmp", "tiff", "webp"};
    const int fd = ::open(NativePath::toNative(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return nullptr;
    std::unique_ptr<CommonReader> opened(new CommonReader);
    if (!opened->m_file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return nullptr;
    }
    opened->m_reader.setDevice(&opened->m_file);
    if (!common.contains(opened->m_reader.format()))
        return nullptr;
    opened->m_reader.setAutoTransform(true);
    return opened;
}

Result<QSize> ImageSize::ofFile(const QString &path)
{
    if (auto unusable = ImageErrors::unusableInput(path))
        return *unusable;
    if (const auto opened = CommonReader::open(path)) {
        QImageReader &reader = opened->reader();
        QSize size = reader.size();
        if (size.isValid() && !size.isEmpty()) {
            if (qint64(size.width()) * size.height() > ImageErrors::kMaxPixels)
                return ImageErrors::tooLarge(path, size.width(), size.height());
            if (reader.transformation() & QImageIOHandler::TransformationRotate90)
                size.transpose();
            return size;
        }
    }
    const auto probed = ImageWorker::call(WorkerJobs::kProbe, {}, path);
    if (!probed.ok())
        return probed.error();
    return QSize(int(probed.value().value(WorkerJobs::kWidth).toInteger()),
                 int(probed.value().value(WorkerJobs::kHeight).toInteger()));
}

QVariantMap Utils::getImageDimensionsAtPath(const QString &path)
{
    // The header is enough: nothing is decoded, so a huge or broken image costs nothing here.
    const QSizeF size = getImageDimensionsAtPathInSize(path);
    return QVariantMap{{QStringLiteral("kImgWidth"), float(size.width())},
                       {QStringLiteral("kImgHeight"), float(size.height())}};
}

QSizeF Utils::getImageDimensionsAtPathInSize(const QString &path)
{
    const auto size = ImageSize::ofFile(path);
    return size.ok() ? QSizeF(size.value()) : QSizeF(0, 0);
}

QString Utils::getImageDimensionsAsStringImgPath(const QString &path)
{
    const QSizeF size = getImageDimensionsAtPathInSize(path);
    return QStringLiteral("%1x%2").arg(qint64(size.width())).arg(qint64(size.height()));
}
