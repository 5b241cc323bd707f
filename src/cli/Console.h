#pragma once

// Standard output and standard error of the command line. Text goes out as bytes: a path is written
// with the bytes the file system has (a name that is not UTF-8 included), so a script can use what it
// reads; everything else is UTF-8.

#include "utils/Result.h"

#include <QByteArray>
#include <QString>

class QIODevice;

class ConsoleStream
{
public:
    explicit ConsoleStream(QIODevice &device) : m_device(device) {}
    ~ConsoleStream() { flush(); }

    ConsoleStream &operator<<(const QString &text);
    ConsoleStream &operator<<(const char *text);
    ConsoleStream &operator<<(char c);
    ConsoleStream &operator<<(qint64 n);
    ConsoleStream &operator<<(int n) { return *this << qint64(n); }
    ConsoleStream &operator<<(quint64 n);
    void flush();

private:
    ConsoleStream &put(const QByteArray &bytes);

    QIODevice &m_device;
    QByteArray m_pending; // written at each line's end
};

class Console
{
public:
    Console(QIODevice &out, QIODevice &err) : out(out), err(err) {}

    ConsoleStream out;
    ConsoleStream err;
    // A progress line is being redrawn in place on standard error: it is ended before anything else.
    bool lineOpen = false;
    void endLine();

    // "quaydrop: WHAT" on standard error.
    void fail(const QString &what);
    // An error that names its file is written as "quaydrop: PATH: REASON" with the path's own bytes.
    void fail(const Error &error, const char *suffix = "");
};
