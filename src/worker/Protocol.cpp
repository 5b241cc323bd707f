#include "Protocol.h"

#include "core/fs/NativePath.h"

#include <QCborValue>
#include <cstring>
#include <QtEndian>

namespace {
const QString kHello = QStringLiteral("hello");
const QString kVersionKey = QStringLiteral("version");
const QString kId = QStringLiteral("id");
const QString kJob = QStringLiteral("job");
const QString kArgs = QStringLiteral("args");
const QString kOk = QStringLiteral("ok");
const QString kCancel = QStringLiteral("cancel");
const QString kCancelled = QStringLiteral("cancelled");
const QString kBye = QStringLiteral("bye");
const QString kError = QStringLiteral("error");
} // namespace

QByteArray WorkerProtocol::frame(const QCborMap &message)
{
    const QByteArray body = message.toCborValue().toCbor();
    QByteArray out(kHeaderBytes, Qt::Uninitialized);
    qToBigEndian(quint32(body.size()), out.data());
    out.append(body);
    return out;
}

WorkerProtocol::Parsed WorkerProtocol::takeFrame(QByteArray &buffer)
{
    if (buffer.size() < kHeaderBytes)
        return {};
    const quint32 length = qFromBigEndian<quint32>(buffer.constData());
    if (length > kMaxFrameBytes)
        return {Parse::Bad, {}, QStringLiteral("a frame of %1 bytes is larger than any message").arg(length)};
    if (buffer.size() < kHeaderBytes + qsizetype(length))
        return {};
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(buffer.constData() + kHeaderBytes, qsizetype(length), &error);
    buffer.remove(0, kHeaderBytes + qsizetype(length));
    if (error.error != QCborError::NoError)
        return {Parse::Bad, {}, QStringLiteral("a frame that is no CBOR: %1").arg(error.errorString())};
    if (!value.isMap())
        return {Parse::Bad, {}, QStringLiteral("a frame that is no map")};
    return {Parse::Ok, value.toMap(), {}};
}

QCborMap WorkerProtocol::hello() { return QCborMap{{kHello, QStringLiteral("quaydrop-worker")}, {kVersionKey, kVersion}}; }

std::optional<qint64> WorkerProtocol::helloVersion(const QCborMap &message)
{
    if (!message.contains(kHello) || !message.value(kVersionKey).isInteger())
        return std::nullopt;
    return message.value(kVersionKey).toInteger();
}

QCborMap WorkerProtocol::request(qint64 id, const QString &job, QCborMap arguments)
{
    return QCborMap{{kId, id}, {kJob, job}, {kArgs, arguments}};
}

QCborMap WorkerProtocol::cancel(qint64 id) { return QCborMap{{kCancel, id}}; }
QCborMap WorkerProtocol::bye() { return QCborMap{{kBye, true}}; }
bool WorkerProtocol::isBye(const QCborMap &message) { return message.value(kBye).toBool(); }

QCborMap WorkerProtocol::success(qint64 id, QCborMap values)
{
    values.insert(kId, id);
    values.insert(kOk, true);
    return values;
}

QCborMap WorkerProtocol::failure(qint64 id, const Error &error)
{
    QCborMap e{{QStringLiteral("domain"), error.domain},
               {QStringLiteral("code"), error.code},
               {QStringLiteral("message"), error.message},
               {QStringLiteral("reason"), error.info.value(QStringLiteral("reason")).toString()}};
    if (error.info.contains(QStringLiteral("path")))
        e.insert(QStringLiteral("path"), path(error.info.value(QStringLiteral("path")).toString()));
    return QCborMap{{kId, id}, {kOk, false}, {kError, e}};
}

QCborMap WorkerProtocol::cancelled(qint64 id) { return QCborMap{{kId, id}, {kOk, false}, {kCancelled, true}}; }

qint64 WorkerProtocol::idOf(const QCborMap &message) { return message.value(kId).toInteger(-1); }
QString WorkerProtocol::jobOf(const QCborMap &message) { return message.value(kJob).toString(); }
QCborMap WorkerProtocol::argumentsOf(const QCborMap &message) { return message.value(kArgs).toMap(); }
bool WorkerProtocol::isCancel(const QCborMap &message) { return message.contains(kCancel); }
bool WorkerProtocol::succeeded(const QCborMap &reply) { return reply.value(kOk).toBool(); }
bool WorkerProtocol::wasCancelled(const QCborMap &reply) { return reply.value(kCancelled).toBool(); }

Error WorkerProtocol::errorOf(const QCborMap &reply)
{
    const QCborMap e = reply.value(kError).toMap();
    Error error{e.value(QStringLiteral("domain")).toString(), int(e.value(QStringLiteral("code")).toInteger()),
                e.value(QStringLiteral("message")).toString(),
                {{QStringLiteral("reason"), e.value(QStringLiteral("reason")).toString()}}};
    if (e.contains(QStringLiteral("path")))
        error.info.insert(QStringLiteral("path"), pathFrom(e.value(QStringLiteral("path"))));
    return error;
}

QCborValue WorkerProtocol::path(const QString &path) { return QCborValue(NativePath::toNative(path)); }
QString WorkerProtocol::pathFrom(const QCborValue &value) { return NativePath::fromNative(value.toByteArray()); }

QCborMap WorkerProtocol::image(const QImage &image)
{
    const int rowBytes = int(image.bytesPerLine());
    QByteArray rows(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
    return QCborMap{{QStringLiteral("w"), image.width()},
                    {QStringLiteral("h"), image.height()},
                    {QStringLiteral("format"), int(image.format())},
                    {QStringLiteral("rowBytes"), rowBytes},
                    {QStringLiteral("dpmX"), image.dotsPerMeterX()},
                    {QStringLiteral("dpmY"), image.dotsPerMeterY()},
                    {QStringLiteral("rows"), rows}};
}

QImage WorkerProtocol::imageFrom(const QCborValue &value)
{
    const QCborMap m = value.toMap();
    const int w = int(m.value(QStringLiteral("w")).toInteger());
    const int h = int(m.value(QStringLiteral("h")).toInteger());
    const auto format = QImage::Format(m.value(QStringLiteral("format")).toInteger());
    const qsizetype rowBytes = m.value(QStringLiteral("rowBytes")).toInteger();
    const QByteArray rows = m.value(QStringLiteral("rows")).toByteArray();
    if (w <= 0 || h <= 0 || format <= QImage::Format_Invalid || format >= QImage::NImageFormats)
        return {};
    QImage out(w, h, format);
    if (out.isNull() || rowBytes < out.bytesPerLine() || rows.size() < rowBytes * h)
        return {};
    for (int y = 0; y < h; ++y)
        memcpy(out.scanLine(y), rows.constData() + rowBytes * y, size_t(out.bytesPerLine()));
    out.setDotsPerMeterX(int(m.value(QStringLiteral("dpmX")).toInteger()));
    out.setDotsPerMeterY(int(m.value(QStringLiteral("dpmY")).toInteger()));
    return out;
}
