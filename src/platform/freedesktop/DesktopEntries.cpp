#include "DesktopEntries.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>

QStringList DesktopEntries::applicationFolders()
{
    return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

namespace {

// The program of an Exec line: the first word, without quotes, environment settings or its folder.
QString programOf(const QString &exec)
{
    const QStringList words = exec.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString word : words) {
        word.remove(QLatin1Char('"'));
        if (word == QLatin1String("env") || word.contains(QLatin1Char('=')))
            continue;
        return QFileInfo(word).fileName();
    }
    return {};
}

// The escapes of a desktop file's string values.
QString unescaped(const QString &value)
{
    QString out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c != QLatin1Char('\\') || i + 1 == value.size()) {
            out.append(c);
            continue;
        }
        const QChar next = value.at(++i);
        switch (next.unicode()) {
        case 's': out.append(QLatin1Char(' ')); break;
        case 'n': out.append(QLatin1Char('\n')); break;
        case 't': out.append(QLatin1Char('\t')); break;
        case 'r': out.append(QLatin1Char('\r')); break;
        case '\\': out.append(next); break;
        default: // not a string escape: left for the Exec line's own quoting (\")
            out.append(c);
            out.append(next);
        }
    }
    return out;
}

} // namespace

DesktopApplication DesktopEntries::parse(const QString &filePath, const QString &id)
{
    DesktopApplication app;
    app.id = id;
    app.filePath = filePath;
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return app;
    const QString language = QLocale().name().section(QLatin1Char('_'), 0, 0);
    QString localizedName;
    bool inEntry = false;
    bool isApplication = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            inEntry = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        if (!inEntry)
            continue;
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq <= 0)
            continue;
        const QString key = line.left(eq).trimmed();
        const QString value = line.mid(eq + 1).trimmed();
        if (key == QLatin1String("Name"))
            app.name = value;
        else if (key == QLatin1String("Name[%1]").arg(language))
            localizedName = value;
        else if (key == QLatin1String("Icon"))
            app.iconName = value;
        else if (key == QLatin1String("StartupWMClass"))
            app.startupWMClass = value;
        else if (key == QLatin1String("Exec")) {
            app.executable = programOf(value);
            app.exec = unescaped(value);
        } else if (key == QLatin1String("MimeType"))
            app.mimeTypes = value.split(QLatin1Char(';'), Qt::SkipEmptyParts);
        else if (key == QLatin1String("Type"))
            isApplication = value == QLatin1String("Application");
        else if ((key == QLatin1String("NoDisplay") || key == QLatin1String("Hidden")) && value == QLatin1String("true"))
            app.shown = false;
    }
    if (!localizedName.isEmpty())
        app.name = localizedName;
    if (!isApplication)
        app.shown = false;
    return app;
}

DesktopEntries DesktopEntries::load(const QStringList &folders)
{
    DesktopEntries entries;
    QSet<QString> seen; // an id in an earlier folder hides the same id later
    for (const QString &folder : folders) {
        const QDir root(folder);
        QDirIterator it(folder, {QStringLiteral("*.desktop")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QString id = root.relativeFilePath(path);
            id.chop(int(sizeof(".desktop") - 1));
            id.replace(QLatin1Char('/'), QLatin1Char('-'));
            if (seen.contains(id))
                continue;
            seen.insert(id);
            DesktopApplication app = parse(path, id);
            if (!app.name.isEmpty())
                entries.m_apps.append(app);
        }
    }
    return entries;
}

const DesktopApplication *DesktopEntries::byId(const QString &id) const
{
    for (const DesktopApplication &app : m_apps)
        if (app.id == id)
            return &app;
    return nullptr;
}

QList<const DesktopApplication *> DesktopEntries::claiming(const QString &mimeType) const
{
    QList<const DesktopApplication *> found;
    for (const DesktopApplication &app : m_apps)
        if (app.mimeTypes.contains(mimeType))
            found.append(&app);
    return found;
}

QString DesktopEntries::idForWindow(const QString &wmInstance, const QString &wmClass, const QString &executable) const
{
    QStringList names{wmClass, wmInstance};
    names.removeAll(QString());
    // What the desktop file says of its windows decides first, then its name, then its program.
    for (const QString &name : names)
        for (const DesktopApplication &app : m_apps)
            if (!app.startupWMClass.isEmpty() && app.startupWMClass.compare(name, Qt::CaseInsensitive) == 0)
                return app.id;
    for (const QString &name : names)
        for (const DesktopApplication &app : m_apps)
            if (app.id.compare(name, Qt::CaseInsensitive) == 0 ||
                app.id.section(QLatin1Char('.'), -1).compare(name, Qt::CaseInsensitive) == 0)
                return app.id;
    for (const QString &program : QStringList{executable, wmInstance})
        if (!program.isEmpty())
            for (const DesktopApplication &app : m_apps)
                if (app.executable == program)
                    return app.id;
    return {};
}
