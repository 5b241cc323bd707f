#include "BatchRename.h"

#include "Relocate.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"

#include <cerrno>

namespace {
constexpr qsizetype kNameMax = 255;
constexpr int kAttempts = 8;

QString withExtension(const QString &base, const QString &extension)
{
    return extension.isEmpty() ? base : base + QLatin1Char('.') + extension;
}
} // namespace

bool BatchRename::Planner::exists(const QString &name) const
{
    if (m_taken.contains(name))
        return true;
    return !m_vacated.contains(name) && FsCalls::exists(m_folder + QLatin1Char('/') + name);
}

QString BatchRename::Planner::freeName(const QString &base, const QString &extension)
{
    const QString plain = withExtension(base, extension);
    if (!exists(plain))
        return plain;
    const QString key = base + QChar(0) + extension;
    for (quint64 n = m_nextNumber.value(key, 1);; ++n) {
        const QString candidate = withExtension(base + QStringLiteral(" %1").arg(n), extension);
        if (NativePath::toNative(candidate).size() > kNameMax) // too long for a name: the shortening rule
            return Utils::nameForNewFileOrFolder(m_folder, base, extension);
        if (!exists(candidate)) {
            m_nextNumber.insert(key, n + 1);
            return candidate;
        }
    }
}

QString BatchRename::Planner::nameFor(const QString &path, const Request &r)
{
    const auto parts = PathParts::splitExtension(PathParts::lastComponent(path));
    return freeName(r.prefix + (r.name.isEmpty() ? parts.name : r.name) + r.suffix, parts.extension);
}

void BatchRename::Planner::moved(const QString &from, const QString &toName)
{
    m_taken.insert(toName);
    if (PathParts::parent(from) != m_folder)
        return;
    const QString left = PathParts::lastComponent(from);
    m_taken.remove(left);
    m_vacated.insert(left);
    // A number given up below the cursor is free again for the next item of that name.
    for (auto it = m_nextNumber.begin(); it != m_nextNumber.end(); ++it) {
        const QStringList key = it.key().split(QChar(0));
        const QString head = key.value(0) + QLatin1Char(' ');
        const QString tail = key.value(1).isEmpty() ? QString() : QLatin1Char('.') + key.value(1);
        if (!left.startsWith(head) || !left.endsWith(tail))
            continue;
        bool ok = false;
        const quint64 n = left.mid(head.size(), left.size() - head.size() - tail.size()).toULongLong(&ok);
        if (ok && n >= 1 && n < it.value())
            it.value() = n;
    }
}

QList<QPair<QString, QString>> BatchRename::preview(const Request &request, int rows)
{
    QList<QPair<QString, QString>> out;
    Planner planner(request.folder);
    for (const QString &path : request.paths) {
        if (out.size() >= rows)
            break;
        const QString name = planner.nameFor(path, request);
        planner.moved(path, name);
        out.append({PathParts::lastComponent(path), name});
    }
    return out;
}

BatchRename::Outcome BatchRename::run(const Request &request)
{
    Outcome out;
    Planner planner(request.folder);
    for (const QString &path : request.paths) {
        Status moved = Error{};
        QString target;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            const QString name = planner.nameFor(path, request);
            target = request.folder + QLatin1Char('/') + name;
            moved = Relocate::item(path, target);
            if (moved.ok()) {
                planner.moved(path, name);
                break;
            }
            if (moved.error().code != EEXIST)
                break;
            planner.markTaken(name); // taken by someone else meanwhile: the next free one
        }
        if (!moved.ok()) {
            qWarning("not renamed: %s", qPrintable(moved.error().message));
            out.failures.append(moved.error());
            continue;
        }
        out.renamed.append(target);
        out.steps.append({target, path, false});
    }
    return out;
}
