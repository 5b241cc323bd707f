#include "ResizePlan.h"

#include "core/fs/PathParts.h"

#include <cmath>

QString ResizePlan::proportional(float oldSide, float oldOther, const QString &newValue)
{
    if (newValue.isEmpty())
        return {};
    const float ratio = newValue.toFloat() / oldSide;
    const float other = oldOther * ratio;
    if (!std::isfinite(other))
        return QStringLiteral("0");
    return QString::number(qint64(other));
}

std::optional<QString> ResizePlan::steppedUp(const QString &text)
{
    if (text.size() >= 5)
        return std::nullopt;
    return QString::number(qint64(text.toFloat() + 1.0f));
}

std::optional<QString> ResizePlan::steppedDown(const QString &text)
{
    const float value = text.toFloat() - 1.0f;
    if (value == 0.0f)
        return std::nullopt;
    return QString::number(qint64(value));
}

QString ResizePlan::outputName(const QString &sourceFileName, const QString &width, const QString &height)
{
    const auto parts = PathParts::splitExtension(sourceFileName);
    const QString base = QStringLiteral("%1_%2x%3").arg(parts.name, width, height);
    return parts.extension.isEmpty() ? base : base + QChar('.') + parts.extension;
}

QList<ResizePlan::Task> ResizePlan::plan(const QStringList &imagePaths, bool multiFiles, const QString &width,
                                         const QString &height, const QString &firstDroppedPath,
                                         const QString &destFolder,
                                         const std::function<QSizeF(const QString &)> &pixelSizeOf)
{
    auto task = [&](const QString &source, const QString &w, const QString &h) {
        return Task{source, w, h, destFolder + QChar('/') + outputName(PathParts::lastComponent(source), w, h), {}};
    };
    QList<Task> tasks;
    if (multiFiles && !imagePaths.isEmpty()) {
        for (const QString &path : imagePaths) {
            const QSizeF size = pixelSizeOf(path);
            if (size.width() < 1 || size.height() < 1) {
                Task unreadable{path, {}, {}, {}, QStringLiteral("cannot read the image's size")};
                tasks.append(unreadable);
                continue;
            }
            if (!width.isEmpty())
                tasks.append(task(path, width, proportional(float(size.width()), float(size.height()), width)));
            if (!height.isEmpty())
                tasks.append(task(path, proportional(float(size.height()), float(size.width()), height), height));
        }
        return tasks;
    }
    tasks.append(task(firstDroppedPath, width, height));
    return tasks;
}
