#pragma once

// A convert request for dropped images, as the panel makes it: several files, into one folder.

#include "images/jobs/ConvertJob.h"

inline ConvertJob::Request convertRequest(const QStringList &paths, const QString &folder, qint64 tag, float factor = 1.0f)
{
    ConvertJob::Request r;
    r.paths = paths;
    r.multiFiles = true;
    r.folder = folder;
    r.srcImgPath = paths.value(0);
    r.tag = tag;
    r.factor = factor;
    return r;
}
