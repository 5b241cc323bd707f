#pragma once

// The program as it stands after launch, on fake desktop services: what every window test starts from.

#include "core/controller/AppDelegate.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "platform/fake/FakePlatform.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QMimeData>
#include <QUrl>

#include <memory>

// Installed as the running services, past the first start's login question, launched.
inline std::unique_ptr<AppDelegate> launchedOn(const Platform &services)
{
    Platform::install(services);
    SettingsStore::shared().setBool(SettingsKey::ShowLoginAtLaunchBool, true); // no alert in the way
    auto app = std::make_unique<AppDelegate>(services);
    app->applicationDidFinishLaunching();
    return app;
}

inline std::unique_ptr<AppDelegate> launchedOn(FakePlatform &fakes)
{
    return launchedOn(fakes.services());
}

// A removable drive at /media/someone/STICK, for the lone-volume rule.
inline VolumeInfo fakeStick()
{
    VolumeInfo stick;
    stick.mountPoint = QStringLiteral("/media/someone/STICK");
    stick.name = QStringLiteral("STICK");
    stick.removable = stick.ejectable = true;
    stick.internal = false;
    return stick;
}

// A file of `bytes` at `path`, its folder made first; the path.
inline QString writtenFile(const QString &path, const QByteArray &bytes = "x")
{
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

// A small picture in PNG, as a program hands it out or a file holds it.
inline QByteArray pngBytes(QSize size = QSize(8, 6))
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return png;
}

// What a drag of files brings, and those files let go on the window.
inline std::unique_ptr<QMimeData> filesData(const QStringList &paths)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString &p : paths)
        urls.append(QUrl::fromLocalFile(p));
    data->setUrls(urls);
    return data;
}
inline void dropPaths(AppDelegate &app, const QStringList &paths) { app.mycustomviewDidGetDrop(filesData(paths).get()); }
