#include "NewItems.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/NativePath.h"
#include "fileops/FreeName.h"
#include "utils/Utils.h"

#include <QFile>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace {

// The RTF of an empty text: a font table and nothing else.
const QByteArray kEmptyRtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Helvetica;}}\\f0\\fs24\n}\n";

Result<QByteArray> contentsOf(const NewItems::Spec &spec)
{
    switch (spec.kind) {
    case NewItems::Kind::Text:
        return QByteArray();
    case NewItems::Kind::Rtf:
        return kEmptyRtf;
    default:
        break;
    }
    QFile resource(QStringLiteral(":/templates/%1.%2").arg(QLatin1String(spec.resource), QLatin1String(spec.extension)));
    if (!resource.open(QIODevice::ReadOnly))
        return Error{QStringLiteral("NewItems"), ENOENT, QStringLiteral("the template %1 is missing").arg(resource.fileName())};
    return resource.readAll();
}

} // namespace

const QList<NewItems::Spec> &NewItems::table()
{
    static const QList<Spec> specs{
        {Kind::Folder, 0, "folder", "_NewFolder", "", "", 3},
        {Kind::Text, 1, "txt", "_NewTextFile", "txt", "", 10},
        {Kind::Rtf, 2, "rtf", "_NewTextFile", "rtf", "", 10},
        {Kind::Word, 4, "docx", "_NewMSWordDocument", "docx", "_NewMSWordDocument", 10},
        {Kind::Excel, 5, "xlsx", "_NewWorkbook", "xlsx", "_NewWorkbook", 10},
        {Kind::OdfText, 7, "odt", "_NewDocument", "odt", "_NewDocument", 10},
        {Kind::OdfSheet, 8, "ods", "_NewSpreadsheet", "ods", "_NewSpreadsheet", 10},
    };
    return specs;
}

std::optional<NewItems::Spec> NewItems::forTag(qint64 tag)
{
    for (const Spec &s : table())
        if (s.tag == tag)
            return s;
    return std::nullopt;
}

std::optional<NewItems::Spec> NewItems::forWord(const QString &word)
{
    for (const Spec &s : table())
        if (word == QLatin1String(s.word))
            return s;
    return std::nullopt;
}

QString NewItems::folderFor(const QString &firstPath, qint64 insideState)
{
    if (insideState == 1 && Utils::isThisAFolderHere(firstPath))
        return firstPath;
    return firstPath.left(std::max<qsizetype>(1, firstPath.lastIndexOf(QLatin1Char('/'))));
}

Result<QString> NewItems::create(const Spec &spec, const QString &folder, const QString &enteredName)
{
    const QString name = enteredName.isEmpty() ? QString::fromLatin1(spec.defaultName) : enteredName;
    const QString extension = QString::fromLatin1(spec.extension);
    if (spec.kind == Kind::Folder) {
        return FreeName::write(folder, name, extension, [](const QString &path) -> Status {
            if (::mkdir(NativePath::toNative(path).constData(), 0777) == 0)
                return success();
            const int err = errno;
            return Error{QStringLiteral("NewItems"), err,
                         QStringLiteral("Error: Create folder failed %1: %2").arg(NativePath::forDisplay(path), QString::fromLocal8Bit(strerror(err))),
                         {{QStringLiteral("path"), path}, {QStringLiteral("reason"), QString::fromLocal8Bit(strerror(err))}}};
        });
    }
    const Result<QByteArray> contents = contentsOf(spec);
    if (!contents.ok())
        return contents.error();
    return FreeName::write(folder, name, extension, [&](const QString &path) {
        return AtomicFile::writeFile(path, contents.value(), AtomicFile::Mode::KeepExisting);
    });
}
