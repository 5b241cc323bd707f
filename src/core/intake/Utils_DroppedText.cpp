#include "utils/Utils.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>

QString Utils::tempFileOperationsFolder()
{
    const QString folder = createTempFileOperationsFolderIfneeded();
    return folder.isNull() ? createTempFileOperationsFolderIfneeded() : folder; // the creating call answers nil
}

QString Utils::pathToTempDroppedStr()
{
    const QString folder = tempFileOperationsFolder();
    return folder.isNull() ? QString() : folder + QStringLiteral("/_tempDroppedStr.txt");
}

bool Utils::createTXTfileFromString(const QString &text)
{
    const QString path = pathToTempDroppedStr();
    if (path.isEmpty()) {
        qWarning("error createingTXTFileFromSTR > %s", "no temp folder");
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
        qWarning("error createingTXTFileFromSTR > %s", qPrintable(file.errorString()));
        return false;
    }
    return true;
}

QString Utils::readDroppedString()
{
    QFile file(pathToTempDroppedStr());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    // Not UTF-8 after all: read it as Latin-1 rather than lose it.
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}
