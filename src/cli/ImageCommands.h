#pragma once

#include <QStringList>
#include <QTextStream>

int runResizeCommand(const QStringList &args, QTextStream &out, QTextStream &err);
int runConvertCommand(const QStringList &args, QTextStream &out, QTextStream &err);
int runPdfToImagesCommand(const QStringList &args, QTextStream &out, QTextStream &err);
int runImagesToPdfCommand(const QStringList &args, QTextStream &out, QTextStream &err);
