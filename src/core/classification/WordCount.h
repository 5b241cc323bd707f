#pragma once

#include <QString>

// Words as a reader counts them: punctuation and spaces between words do not count.
quint32 wordCountFromString2(const QString &text);
