#include "Console.h"

#include "core/fs/NativePath.h"

#include <QIODevice>

ConsoleStream &ConsoleStream::put(const QByteArray &bytes)
{
    m_pending.append(bytes);
    if (bytes.contains('\n'))
        flush();
    return *this;
}

ConsoleStream &ConsoleStream::operator<<(const QString &text) { return put(NativePath::toNative(text)); }
ConsoleStream &ConsoleStream::operator<<(const char *text) { return put(QByteArray(text)); }
ConsoleStream &ConsoleStream::operator<<(char c) { return put(QByteArray(1, c)); }
ConsoleStream &ConsoleStream::operator<<(qint64 n) { return put(QByteArray::number(n)); }
ConsoleStream &ConsoleStream::operator<<(quint64 n) { return put(QByteArray::number(n)); }

void ConsoleStream::flush()
{
    if (m_pending.isEmpty())
        return;
    m_device.write(m_pending);
    m_pending.clear();
}

void Console::endLine()
{
    if (lineOpen)
        err << '\n';
    lineOpen = false;
}

void Console::fail(const QString &what)
{
    endLine();
    out.flush(); // what was written before the failure comes first
    err << "quaydrop: " << what << '\n';
}

void Console::fail(const Error &error, const char *suffix)
{
    const QString path = error.info.value(QStringLiteral("path")).toString();
    const QString reason = error.info.value(QStringLiteral("reason")).toString();
    if (!path.isEmpty() && !reason.isEmpty())
        fail(path + QStringLiteral(": ") + reason + QLatin1String(suffix));
    else
        fail(error.message + QLatin1String(suffix));
}
