#pragma once

// Small pieces the tests share: a program run as a shell runs it, and a file written whole.

#include <QFile>
#include <QProcess>
#include <QStringList>

struct ProgramRun
{
    int code = -1; // -1: it crashed or did not end in time
    QByteArray out, err;
};

// Standard input is closed, as under a shell with nothing piped in.
inline ProgramRun runProgram(const QString &program, const QStringList &args, const QString &folder = {},
                             const QProcessEnvironment &env = QProcessEnvironment::systemEnvironment(), int ms = 60000)
{
    QProcess p;
    p.setWorkingDirectory(folder);
    p.setProcessEnvironment(env);
    p.start(program, args);
    p.closeWriteChannel();
    ProgramRun r;
    if (p.waitForFinished(ms) && p.exitStatus() == QProcess::NormalExit)
        r.code = p.exitCode();
    r.out = p.readAllStandardOutput();
    r.err = p.readAllStandardError();
    return r;
}

// A Python snippet's standard output; the arguments follow the snippet in sys.argv.
inline QByteArray python(const char *snippet, const QStringList &args)
{
    return runProgram(QStringLiteral("/usr/bin/python3"), QStringList{QStringLiteral("-c"), QString::fromUtf8(snippet)} + args).out;
}

inline bool writeFile(const QString &path, const QByteArray &bytes = {})
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}
