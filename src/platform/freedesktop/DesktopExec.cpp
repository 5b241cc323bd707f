#include "DesktopExec.h"

#include <QUrl>

namespace {

const QLatin1String kFileCodes("fFuU");
const QLatin1String kDroppedCodes("dDnNvm"); // deprecated: removed

bool isFieldCodeWord(const QString &word)
{
    return word.size() == 2 && word.at(0) == QLatin1Char('%') &&
           (kFileCodes.contains(word.at(1)) || kDroppedCodes.contains(word.at(1)) || word.at(1) == QLatin1Char('i') ||
            word.at(1) == QLatin1Char('c') || word.at(1) == QLatin1Char('k'));
}

// Flatpak's file forwarding markers around a file code ("@@u %u @@") mean nothing outside it.
bool isForwardingMarker(const QString &word)
{
    return word == QLatin1String("@@") || word == QLatin1String("@@u") || word == QLatin1String("@@f");
}

// Codes inside a word, other than the file codes: "%%" and the rare %c and %k.
QString expandInWord(const QString &word, const DesktopApplication &app, const QString &file, bool *usedFile)
{
    QString out;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar c = word.at(i);
        if (c != QLatin1Char('%') || i + 1 == word.size()) {
            out.append(c);
            continue;
        }
        const QChar code = word.at(++i);
        if (code == QLatin1Char('%'))
            out.append(QLatin1Char('%'));
        else if (code == QLatin1Char('c'))
            out.append(app.name);
        else if (code == QLatin1Char('k'))
            out.append(app.filePath);
        else if (code == QLatin1Char('f') || code == QLatin1Char('u')) {
            out.append(file);
            *usedFile = true;
        }
        // every other code stands for nothing
    }
    return out;
}

QByteArray bytesOf(const QString &word) { return word.toUtf8(); }

} // namespace

std::optional<QStringList> DesktopExec::split(const QString &exec)
{
    QStringList words;
    QString word;
    bool inWord = false;
    bool quoted = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar c = exec.at(i);
        if (quoted) {
            if (c == QLatin1Char('"')) {
                quoted = false;
            } else if (c == QLatin1Char('\\') && i + 1 < exec.size() && QStringLiteral("\"`$\\").contains(exec.at(i + 1))) {
                word.append(exec.at(++i));
            } else {
                word.append(c);
            }
            continue;
        }
        if (c == QLatin1Char(' ') || c == QLatin1Char('\t')) {
            if (inWord)
                words.append(word);
            word.clear();
            inWord = false;
            continue;
        }
        inWord = true;
        if (c == QLatin1Char('"'))
            quoted = true;
        else
            word.append(c);
    }
    if (quoted)
        return std::nullopt;
    if (inWord)
        words.append(word);
    return words;
}

QByteArray DesktopExec::localPathOf(const QString &fileUri)
{
    if (!fileUri.startsWith(QLatin1String("file://")))
        return {};
    QString rest = fileUri.mid(7);
    // "file://localhost/path" and "file:///path" name the same file.
    if (rest.startsWith(QLatin1String("localhost/")))
        rest = rest.mid(9);
    if (!rest.startsWith(QLatin1Char('/')))
        return {};
    return QByteArray::fromPercentEncoding(rest.toLatin1());
}

std::optional<Spawn::Argv> DesktopExec::baseCommand(const DesktopApplication &app)
{
    const auto words = split(app.exec);
    if (!words || words->isEmpty())
        return std::nullopt;
    Spawn::Argv argv;
    for (const QString &word : *words) {
        if (isFieldCodeWord(word) || isForwardingMarker(word))
            continue;
        bool usedFile = false;
        argv.append(bytesOf(expandInWord(word, app, QString(), &usedFile)));
    }
    return argv;
}

QList<Spawn::Argv> DesktopExec::commandsFor(const DesktopApplication &app, const QStringList &fileUris)
{
    const auto words = split(app.exec);
    if (!words || words->isEmpty())
        return {};
    // Which file code the line takes decides how many commands there are.
    QChar code;
    for (const QString &word : *words)
        for (qsizetype i = 0; i + 1 < word.size(); ++i)
            if (word.at(i) == QLatin1Char('%') && kFileCodes.contains(word.at(i + 1)) && code.isNull())
                code = word.at(i + 1);
    const bool all = code == QLatin1Char('F') || code == QLatin1Char('U');
    const bool asUris = code == QLatin1Char('u') || code == QLatin1Char('U');

    // A %f line gets local paths; a file that has none cannot go to it.
    QList<QByteArray> files;
    for (const QString &uri : fileUris) {
        const QByteArray file = asUris ? uri.toLatin1() : localPathOf(uri);
        if (!file.isEmpty())
            files.append(file);
    }

    auto build = [&](const QList<QByteArray> &these) {
        Spawn::Argv argv;
        for (const QString &word : *words) {
            if (isForwardingMarker(word))
                continue;
            if (word == QLatin1String("%F") || word == QLatin1String("%U")) {
                argv.append(these);
                continue;
            }
            if (word == QLatin1String("%i")) {
                if (!app.iconName.isEmpty())
                    argv << QByteArray("--icon") << bytesOf(app.iconName);
                continue;
            }
            if (isFieldCodeWord(word) && word != QLatin1String("%f") && word != QLatin1String("%u") &&
                word != QLatin1String("%c") && word != QLatin1String("%k"))
                continue;
            if (word == QLatin1String("%f") || word == QLatin1String("%u")) {
                // A whole word keeps the file's exact bytes.
                if (!these.isEmpty())
                    argv.append(these.first());
                continue;
            }
            bool usedFile = false;
            const QString placeholder = QStringLiteral("\x01");
            QString expanded = expandInWord(word, app, placeholder, &usedFile);
            QByteArray bytes = bytesOf(expanded);
            if (usedFile)
                bytes.replace("\x01", these.value(0));
            argv.append(bytes);
        }
        return argv;
    };
    QList<Spawn::Argv> commands;
    if (files.isEmpty() || code.isNull()) {
        commands.append(build({}));
    } else if (all) {
        commands.append(build(files));
    } else {
        for (const QByteArray &file : files)
            commands.append(build({file}));
    }
    return commands;
}
