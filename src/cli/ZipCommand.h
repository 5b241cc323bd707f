#pragma once

#include <QStringList>
#include <QTextStream>

// quaydrop zip FILE...: the archive the Zip button makes, its path on stdout, progress on stderr.
int runZipCommand(const QStringList &args, QTextStream &out, QTextStream &err);
