#pragma once

// How the program and its image worker talk: frames of a 4-byte big-endian length and a CBOR map.
// The worker says hello with its version first; each request carries an id and a job name, and gets
// exactly one reply with that id. Paths travel as byte strings, so names that are not UTF-8 arrive
// intact. Nothing here does any input or output.

#include "utils/Result.h"

#include <QByteArray>
#include <QCborMap>
#include <QImage>
#include <QString>

#include <optional>

namespace WorkerProtocol {

inline constexpr qint64 kVersion = 1;
// Larger frames are a broken stream, not a message: the biggest honest one is a page's pixels.
inline constexpr quint32 kMaxFrameBytes = 1u << 30;
inline constexpr int kHeaderBytes = 4;

QByteArray frame(const QCborMap &message);

enum class Parse { Incomplete, Ok, Bad };
struct Parsed
{
    Parse state = Parse::Incomplete;
    QCborMap message;
    QString problem; // for Bad
};
// Takes one whole frame off the front of `buffer`; Incomplete leaves it untouched.
Parsed takeFrame(QByteArray &buffer);

// The messages.
QCborMap hello();
// The version a hello states; nothing when the message is no hello.
std::optional<qint64> helloVersion(const QCborMap &message);
QCborMap request(qint64 id, const QString &job, QCborMap arguments);
QCborMap cancel(qint64 id);
QCborMap bye();
bool isBye(const QCborMap &message);
QCborMap success(qint64 id, QCborMap values = {});
QCborMap failure(qint64 id, const Error &error);
QCborMap cancelled(qint64 id);

qint64 idOf(const QCborMap &message);
QString jobOf(const QCborMap &message);
QCborMap argumentsOf(const QCborMap &message);
bool isCancel(const QCborMap &message);
bool succeeded(const QCborMap &reply);
bool wasCancelled(const QCborMap &reply);
// The error a failed reply carries, with its path as the bytes the worker was given.
Error errorOf(const QCborMap &reply);

// Images as maps of their size, format, resolution and packed rows, both ways.
QCborMap image(const QImage &image);
QImage imageFrom(const QCborValue &value);

// Paths as bytes, both ways.
QCborValue path(const QString &path);
QString pathFrom(const QCborValue &value);

} // namespace WorkerProtocol
