#include "WordCount.h"

#include <QTextBoundaryFinder>

quint32 wordCountFromString2(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    quint32 count = 0;
    while (finder.toNextBoundary() != -1) {
        if (finder.boundaryReasons() & QTextBoundaryFinder::EndOfItem)
            ++count;
    }
    return count;
}
