#pragma once

#include <QStringList>
#include <QTextStream>

int runTypeCommand(const QStringList &paths, QTextStream &out, QTextStream &err);
int runSizeCommand(const QStringList &paths, QTextStream &out, QTextStream &err);
int runLedgerCommand(const QStringList &args, QTextStream &out, QTextStream &err);
