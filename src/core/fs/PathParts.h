#pragma once

#include <QString>

// Pieces of absolute path strings, as the file system sees them (no resolving, no normalising
// beyond dropping trailing slashes).
namespace PathParts {

QString lastComponent(const QString &path);
QString parent(const QString &path);
// "Report.pdf" -> {"Report", "pdf"}; "Photos" and ".bashrc" have no extension.
struct NameAndExtension
{
    QString name;
    QString extension;
};
NameAndExtension splitExtension(const QString &fileName);
// Creates the folder and any missing parents, names kept as bytes. False with errno set on failure.
bool makePath(const QString &path, unsigned mode = 0755);

} // namespace PathParts
