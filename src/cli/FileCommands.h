#pragma once

#include <QStringList>
#include <QTextStream>

// quaydrop copy|move SRC... DESTDIR [--keep-both|--skip|--replace]
int runCopyCommand(const QStringList &args, QTextStream &out, QTextStream &err);
int runMoveCommand(const QStringList &args, QTextStream &out, QTextStream &err);
