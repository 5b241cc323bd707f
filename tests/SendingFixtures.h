#pragma once

// A desktop of the test's own for the mail and share tests: stub programs on PATH that record the
// exact bytes of their arguments, desktop files and mimeapps.list in private XDG folders, and the
// awkward file names every sending test runs through.

#include "TestTree.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTest>

namespace SendingFixtures {

// Names that break naive quoting, lists, URLs and encodings; the last is not UTF-8.
inline QList<QByteArray> awkwardNames()
{
    return {"plain.pdf",
            "with space.txt",
            "quote's \"double\".png",
            "comma,list.jpg",
            "amp&per%cent=q?#.txt",
            QByteArray("new\nline.txt"),
            "Übergröße äöü 日本.pdf",
            QByteArray("latin1-\xe9t\xe9.txt"),
            "-starts-with-dash.txt"};
}

// Argument lists as a stub recorded them: one file per run, arguments separated by NUL.
inline QList<QByteArray> readArguments(const QString &recordFile)
{
    QByteArray all = TestTree::contents(recordFile);
    if (all.endsWith('\0'))
        all.chop(1);
    return all.split('\0');
}

// Waits until `path` exists and has stopped growing; false after `ms`.
inline bool waitForFile(const QString &path, int ms = 5000)
{
    QDeadlineTimer deadline(ms);
    qint64 last = -1;
    while (!deadline.hasExpired()) {
        const qint64 size = QFileInfo(path).exists() ? QFileInfo(path).size() : -1;
        if (size > 0 && size == last)
            return true;
        last = size;
        QTest::qWait(50);
    }
    return false;
}

class StubDesktop
{
public:
    StubDesktop()
    {
        tree.folder("data");
        bin = tree.folder("bin");
        records = tree.folder("records");
        apps = tree.folder("data/applications");
        config = tree.folder("config");
        qputenv("PATH", bin + ':' + qgetenv("PATH"));
        qputenv("XDG_DATA_HOME", tree.native() + "/data");
        // The system's MIME types, none of its applications.
        tree.folder("system");
        tree.link("system/mime", "/usr/share/mime");
        qputenv("XDG_DATA_DIRS", tree.native() + "/system");
        qputenv("XDG_CONFIG_HOME", config);
        qputenv("XDG_CONFIG_DIRS", tree.native() + "/noconfig");
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    // A program that writes its arguments to records/NAME, each run replacing the last, prints
    // `output` and exits with `exitCode`.
    void stubProgram(const QByteArray &name, int exitCode = 0, const QByteArray &output = {})
    {
        const QByteArray script = "#!/bin/sh\nprintf '%s\\0' \"$@\" > '" + records + '/' + name + ".tmp'\nmv '" +
                                  records + '/' + name + ".tmp' '" + records + '/' + name + "'\nprintf '%s' '" + output +
                                  "'\nexit " + QByteArray::number(exitCode) + "\n";
        const QByteArray path = tree.file("bin/" + name, script);
        ::chmod(path.constData(), 0755);
    }

    void desktopFile(const QByteArray &id, const QByteArray &name, const QByteArray &exec,
                     const QByteArray &mimeTypes = {}, const QByteArray &icon = {})
    {
        QByteArray text = "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + "\n";
        if (!mimeTypes.isEmpty())
            text += "MimeType=" + mimeTypes + "\n";
        if (!icon.isEmpty())
            text += "Icon=" + icon + "\n";
        tree.file("data/applications/" + id + ".desktop", text);
    }

    // Defaults as "type=id" lines.
    void setDefaults(const QByteArray &lines) { tree.file("config/mimeapps.list", "[Default Applications]\n" + lines); }

    QString record(const QByteArray &name) const { return QString::fromUtf8(records + '/' + name); }
    void forget(const QByteArray &name) const { QFile::remove(record(name)); }

    TestTree tree;
    QByteArray bin, records, apps, config;
};

} // namespace SendingFixtures
