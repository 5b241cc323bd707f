#pragma once

#include "utils/Result.h"

#include <QVariant>

// XML property lists as Apple writes them. Values map to Qt types:
// dict QVariantMap, array QVariantList, string QString, integer qlonglong (qulonglong above the signed
// range), real double, true/false bool, date QDateTime (UTC, whole seconds), data QByteArray.
namespace Plist {

inline constexpr char kErrorDomain[] = "Plist";

Result<QVariant> parse(const QByteArray &xml);
Result<QByteArray> serialize(const QVariant &root);

// A missing, unreadable or malformed file is an error value, never a crash.
Result<QVariant> readFile(const QString &path);
// Written through a temporary file and renamed, so readers never see half a list.
Status writeFileAtomically(const QString &path, const QVariant &root);

} // namespace Plist
