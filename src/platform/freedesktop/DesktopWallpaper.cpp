#include "DesktopWallpaper.h"

#include "WallpaperSetters.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

namespace WallpaperSetters {

namespace {

constexpr int kToolTimeoutMs = 5000;

struct ToolRun
{
    bool ok = false;
    QString out;
    QString error; // what the tool said, or why it could not run
};

ToolRun runTool(const QString &program, const QStringList &arguments)
{
    QProcess p;
    p.start(program, arguments);
    ToolRun run;
    if (!p.waitForFinished(kToolTimeoutMs)) {
        p.kill();
        p.waitForFinished(1000);
        run.error = p.error() == QProcess::FailedToStart ? QStringLiteral("%1 is not installed").arg(program)
                                                          : QStringLiteral("%1 did not answer").arg(program);
        return run;
    }
    run.out = QString::fromUtf8(p.readAllStandardOutput()).trimmed();
    run.error = QString::fromUtf8(p.readAllStandardError()).trimmed();
    run.ok = p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    if (!run.ok && run.error.isEmpty())
        run.error = QStringLiteral("%1 failed").arg(program);
    return run;
}

// A string in GVariant's text form, as gsettings takes it.
QString gvariantString(const QString &s)
{
    QString escaped = s;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

// The value of a string key as gsettings prints it: quoted, with backslash escapes.
QString fromGVariantString(const QString &text)
{
    if (text.size() < 2 || (text.front() != QLatin1Char('\'') && text.front() != QLatin1Char('"')))
        return text;
    QString s;
    for (qsizetype i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == QLatin1Char('\\') && i + 2 < text.size())
            ++i;
        s.append(text[i]);
    }
    return s;
}

QString pictureValue(const GSettingsKeys &keys, const QString &imagePath)
{
    return keys.takesUri ? QUrl::fromLocalFile(imagePath).toString(QUrl::FullyEncoded) : imagePath;
}

QString pathOf(const QString &stored)
{
    const QUrl url(stored);
    return url.isLocalFile() ? url.toLocalFile() : stored;
}

} // namespace

QString setWithGSettings(const GSettingsKeys &keys, const QString &imagePath)
{
    const QString schema = QString::fromLatin1(keys.schema);
    const ToolRun list = runTool(QStringLiteral("gsettings"), {QStringLiteral("list-keys"), schema});
    if (!list.ok)
        return list.error;
    const QStringList present = list.out.split(QLatin1Char('\n'));
    const QString value = gvariantString(pictureValue(keys, imagePath));
    QStringList pictureKeys{QString::fromLatin1(keys.pictureKey)};
    if (keys.darkPictureKey && present.contains(QLatin1String(keys.darkPictureKey)))
        pictureKeys << QString::fromLatin1(keys.darkPictureKey);
    // Zoom fills the screen without distorting; an option the user chose other than "none" stays.
    const ToolRun options = runTool(QStringLiteral("gsettings"), {QStringLiteral("get"), schema, QStringLiteral("picture-options")});
    if (options.ok && fromGVariantString(options.out) == QLatin1String("none"))
        runTool(QStringLiteral("gsettings"), {QStringLiteral("set"), schema, QStringLiteral("picture-options"), QStringLiteral("'zoom'")});
    for (const QString &key : pictureKeys) {
        if (const ToolRun set = runTool(QStringLiteral("gsettings"), {QStringLiteral("set"), schema, key, value}); !set.ok)
            return set.error;
    }
    const QString back = readWithGSettings(keys);
    if (back != QFileInfo(imagePath).absoluteFilePath())
        return QStringLiteral("%1 kept \"%2\" (no settings service stores the change?)").arg(schema, back);
    return {};
}

QString readWithGSettings(const GSettingsKeys &keys)
{
    const ToolRun get = runTool(QStringLiteral("gsettings"),
                                {QStringLiteral("get"), QString::fromLatin1(keys.schema), QString::fromLatin1(keys.pictureKey)});
    return get.ok ? pathOf(fromGVariantString(get.out)) : QString();
}

bool fehInstalled()
{
    return !QStandardPaths::findExecutable(QStringLiteral("feh")).isEmpty();
}

QString setWithFeh(const QString &imagePath)
{
    const ToolRun run = runTool(QStringLiteral("feh"), {QStringLiteral("--bg-fill"), QStringLiteral("--"), imagePath});
    if (!run.ok)
        return run.error;
    if (readFromFeh() != QFileInfo(imagePath).absoluteFilePath())
        return QStringLiteral("feh did not record the picture in ~/.fehbg");
    return {};
}

QString readFromFeh()
{
    QFile script(QDir::home().filePath(QStringLiteral(".fehbg")));
    if (!script.open(QIODevice::ReadOnly))
        return {};
    // feh writes the path last, single-quoted, a quote inside it as '\''.
    const QString text = QString::fromUtf8(script.readAll());
    static const QRegularExpression quoted(QStringLiteral("'((?:[^']|'\\\\'')*)'\\s*$"), QRegularExpression::MultilineOption);
    const QRegularExpressionMatch m = quoted.match(text);
    return m.hasMatch() ? m.captured(1).replace(QLatin1String("'\\''"), QLatin1String("'")) : QString();
}

} // namespace WallpaperSetters

using namespace WallpaperSetters;

namespace {

const GSettingsKeys kGnome{"org.gnome.desktop.background", "picture-uri", "picture-uri-dark", true};
const GSettingsKeys kCinnamon{"org.cinnamon.desktop.background", "picture-uri", nullptr, true};
const GSettingsKeys kMate{"org.mate.background", "picture-filename", nullptr, false};

} // namespace

DesktopWallpaper::DesktopWallpaper(QDBusConnection bus, QString currentDesktop)
    : m_bus(std::move(bus)), m_currentDesktop(std::move(currentDesktop)), m_desktop(detect(m_currentDesktop))
{
}

DesktopWallpaper::Desktop DesktopWallpaper::detect(const QString &xdgCurrentDesktop)
{
    for (const QString &name : xdgCurrentDesktop.toLower().split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        if (name == QLatin1String("gnome") || name == QLatin1String("unity") || name == QLatin1String("gnome-classic")
            || name == QLatin1String("gnome-flashback"))
            return Desktop::Gnome;
        if (name == QLatin1String("x-cinnamon") || name == QLatin1String("cinnamon"))
            return Desktop::Cinnamon;
        if (name == QLatin1String("mate"))
            return Desktop::Mate;
        if (name == QLatin1String("kde"))
            return Desktop::Kde;
        if (name == QLatin1String("xfce"))
            return Desktop::Xfce;
    }
    return Desktop::Other;
}

QString DesktopWallpaper::desktopName() const
{
    return m_currentDesktop.isEmpty() ? QStringLiteral("this desktop (XDG_CURRENT_DESKTOP is not set)") : m_currentDesktop;
}

Status DesktopWallpaper::refused(const QString &why) const
{
    return Error{QStringLiteral("Wallpaper"), 1,
                 QStringLiteral("The wallpaper could not be set on %1: %2").arg(desktopName(), why)};
}

QString DesktopWallpaper::currentWallpaper() const
{
    switch (m_desktop) {
    case Desktop::Gnome:
        return readWithGSettings(kGnome);
    case Desktop::Cinnamon:
        return readWithGSettings(kCinnamon);
    case Desktop::Mate:
        return readWithGSettings(kMate);
    case Desktop::Kde:
        return readFromPlasma(m_bus);
    case Desktop::Xfce:
        return readFromXfconf(m_bus);
    case Desktop::Other:
        break;
    }
    return readFromFeh(); // the portal has no way to read the picture back
}

Status DesktopWallpaper::setWallpaper(const QString &imagePath)
{
    if (!QFileInfo(imagePath).isFile())
        return refused(QStringLiteral("there is no picture at %1").arg(imagePath));
    const QString path = QFileInfo(imagePath).absoluteFilePath();
    QString why;
    switch (m_desktop) {
    case Desktop::Gnome:
        why = setWithGSettings(kGnome, path);
        break;
    case Desktop::Cinnamon:
        why = setWithGSettings(kCinnamon, path);
        break;
    case Desktop::Mate:
        why = setWithGSettings(kMate, path);
        break;
    case Desktop::Kde:
        why = setOnPlasma(m_bus, path);
        break;
    case Desktop::Xfce:
        why = setWithXfconf(m_bus, path);
        break;
    case Desktop::Other:
        if (portalAnswers(m_bus))
            why = setWithPortal(m_bus, path);
        else if (fehInstalled())
            why = setWithFeh(path);
        else
            why = QStringLiteral("it has no wallpaper setting Quaydrop knows, no desktop portal answers, and feh is not installed");
        break;
    }
    return why.isEmpty() ? success() : refused(why);
}
