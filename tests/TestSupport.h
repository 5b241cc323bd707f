#pragma once

// Small pieces the tests share: a program run as a shell runs it, a file written whole, and a PDF made
// object by object.

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

// A PDF of these objects, numbered from 1 (the first is the catalog), with its cross-reference table.
inline QByteArray pdfOf(const QByteArrayList &objects)
{
    QByteArray pdf = "%PDF-1.4\n";
    QList<qsizetype> offsets;
    for (const QByteArray &body : objects) {
        offsets.append(pdf.size());
        pdf += QByteArray::number(offsets.size()) + " 0 obj\n" + body + "\nendobj\n";
    }
    const qsizetype xref = pdf.size();
    pdf += "xref\n0 " + QByteArray::number(offsets.size() + 1) + "\n0000000000 65535 f \n";
    for (qsizetype at : offsets)
        pdf += QByteArray::number(at).rightJustified(10, '0') + " 00000 n \n";
    return pdf + "trailer\n<< /Size " + QByteArray::number(offsets.size() + 1) + " /Root 1 0 R >>\nstartxref\n" +
           QByteArray::number(xref) + "\n%%EOF\n";
}
