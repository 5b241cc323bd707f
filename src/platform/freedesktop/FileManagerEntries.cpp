#include "FileManagerEntries.h"

#include <QDir>
#include <optional>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QXmlStreamReader>

namespace {

const QByteArray kUniqueId = "<unique-id>com.velmora.Quaydrop.panel</unique-id>";
// Thunar writes its actions with tabs, one element a line; ours looks the same.
const QByteArray kThunarAction = "<action>\n"
                                 "\t<icon>com.velmora.Quaydrop</icon>\n"
                                 "\t<name>Open in Quaydrop</name>\n"
                                 "\t<name xml:lang=\"de\">In Quaydrop öffnen</name>\n"
                                 "\t<submenu></submenu>\n"
                                 "\t" + kUniqueId + "\n"
                                 "\t<command>quaydrop panel -- %F</command>\n"
                                 "\t<description>Show Quaydrop's actions for the selected items</description>\n"
                                 "\t<description xml:lang=\"de\">Quaydrops Aktionen für die Auswahl zeigen</description>\n"
                                 "\t<range>*</range>\n"
                                 "\t<patterns>*</patterns>\n"
                                 "\t<directories/>\n\t<audio-files/>\n\t<image-files/>\n\t<other-files/>\n"
                                 "\t<text-files/>\n\t<video-files/>\n"
                                 "</action>\n";
const QByteArray kFreshUca = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<actions>\n" + kThunarAction + "</actions>\n";

// The first line says the script is ours: --remove deletes nothing else of that name.
const QByteArray kScriptMark = "# Quaydrop: Open in Quaydrop";
const QByteArray kNautilusScript = "#!/bin/sh\n" + kScriptMark + "\n"
                                   "# Nautilus hands the selected items over as arguments.\n"
                                   "exec quaydrop panel -- \"$@\"\n";

Error fileError(const QString &path, const QString &what)
{
    return Error{QStringLiteral("FileManagerEntries"), 1, QStringLiteral("%1: %2").arg(path, what),
                 {{QStringLiteral("path"), path}}};
}

std::optional<QString> notWellFormed(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    bool actionsRoot = false;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && !actionsRoot) {
            if (reader.name() != u"actions")
                return QStringLiteral("its root element is <%1>, not <actions>").arg(reader.name());
            actionsRoot = true;
        }
    }
    if (reader.hasError())
        return QStringLiteral("not well-formed XML (line %1: %2)").arg(reader.lineNumber()).arg(reader.errorString());
    if (!actionsRoot)
        return QStringLiteral("it has no <actions> element");
    return std::nullopt;
}

Result<QByteArray> readAll(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return QByteArray();
    if (!file.open(QIODevice::ReadOnly))
        return fileError(path, file.errorString());
    return file.readAll();
}

Status writeAll(const QString &path, const QByteArray &bytes, QFileDevice::Permissions permissions = {})
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return fileError(path, QStringLiteral("its folder cannot be made"));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() ||
        (permissions && !file.setPermissions(permissions)) || !file.commit())
        return fileError(path, file.errorString());
    return success();
}

} // namespace

Result<QByteArray> FileManagerEntries::withThunarAction(const QByteArray &uca, bool *alreadyThere)
{
    if (uca.trimmed().isEmpty())
        return kFreshUca;
    if (const auto wrong = notWellFormed(uca))
        return Error{QStringLiteral("FileManagerEntries"), 2, *wrong};
    const bool present = uca.contains(kUniqueId);
    if (alreadyThere)
        *alreadyThere = present;
    if (present)
        return uca;
    const qsizetype close = uca.lastIndexOf("</actions>");
    if (close < 0) // <actions/>: an empty list written as one tag
        return Error{QStringLiteral("FileManagerEntries"), 2, QStringLiteral("its <actions> element is empty-tagged")};
    // Just before the closing tag, so that taking it out again gives back the very same bytes.
    QByteArray merged = uca;
    return merged.insert(close, kThunarAction);
}

Result<QByteArray> FileManagerEntries::withoutThunarAction(const QByteArray &uca, bool *wasThere)
{
    const qsizetype id = uca.indexOf(kUniqueId);
    if (wasThere)
        *wasThere = id >= 0;
    if (id < 0)
        return uca;
    if (const auto wrong = notWellFormed(uca))
        return Error{QStringLiteral("FileManagerEntries"), 2, *wrong};
    const qsizetype start = uca.lastIndexOf("<action>", id);
    qsizetype end = uca.indexOf("</action>", id);
    if (start < 0 || end < 0)
        return Error{QStringLiteral("FileManagerEntries"), 2, QStringLiteral("our action is not inside <action>")};
    end += qsizetype(qstrlen("</action>"));
    if (end < uca.size() && uca.at(end) == '\n')
        ++end;
    QByteArray rest = uca;
    return rest.remove(start, end - start);
}

QString FileManagerEntries::thunarActionsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Thunar/uca.xml");
}

QString FileManagerEntries::nautilusScriptsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/nautilus/scripts");
}

Result<FileManagerEntries::Change> FileManagerEntries::integrateThunar(const QString &ucaPath, bool remove)
{
    const Result<QByteArray> before = readAll(ucaPath);
    if (!before)
        return before.error();
    bool present = false;
    const Result<QByteArray> after = remove ? withoutThunarAction(before.value(), &present)
                                            : withThunarAction(before.value(), &present);
    if (!after)
        return fileError(ucaPath, after.error().message + QStringLiteral("; it was left as it is"));
    if (after.value() == before.value())
        return remove ? Change::NotThere : Change::AlreadyThere;
    if (const Status written = writeAll(ucaPath, after.value()); !written)
        return written.error();
    return remove ? Change::Removed : Change::Added;
}

Result<FileManagerEntries::Change> FileManagerEntries::integrateNautilus(const QString &scriptsFolder, bool remove)
{
    const QString script = scriptsFolder + QStringLiteral("/Open in Quaydrop");
    const Result<QByteArray> existing = readAll(script);
    if (!existing)
        return existing.error();
    const bool ours = existing.value().contains(kScriptMark);
    if (!existing.value().isEmpty() && !ours)
        return fileError(script, QStringLiteral("a script of that name that is not Quaydrop's is there; it was left as it is"));
    if (remove) {
        if (!ours)
            return Change::NotThere;
        if (!QFile::remove(script))
            return fileError(script, QStringLiteral("cannot be removed"));
        return Change::Removed;
    }
    if (existing.value() == kNautilusScript)
        return Change::AlreadyThere;
    const auto executable = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                            QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther | QFileDevice::ExeOther;
    if (const Status written = writeAll(script, kNautilusScript, executable); !written)
        return written.error();
    return Change::Added;
}
