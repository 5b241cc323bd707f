#include "NaturalOrder.h"

#include <algorithm>

namespace NaturalOrder {

// Runs of digits compare by their value, the text between them without regard to case: "img2" comes
// before "img10", "B" after "a", as people sort names.
int compare(const QString &a, const QString &b)
{
    qsizetype i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (a.at(i).isDigit() && b.at(j).isDigit()) {
            qsizetype ei = i, ej = j;
            while (ei < a.size() && a.at(ei).isDigit())
                ++ei;
            while (ej < b.size() && b.at(ej).isDigit())
                ++ej;
            QStringView na = QStringView(a).mid(i, ei - i), nb = QStringView(b).mid(j, ej - j);
            while (na.size() > 1 && na.front() == u'0')
                na = na.mid(1);
            while (nb.size() > 1 && nb.front() == u'0')
                nb = nb.mid(1);
            if (na.size() != nb.size())
                return na.size() < nb.size() ? -1 : 1;
            if (const int c = na.compare(nb); c != 0)
                return c;
            i = ei;
            j = ej;
            continue;
        }
        const QChar ca = a.at(i).toCaseFolded(), cb = b.at(j).toCaseFolded();
        if (ca != cb)
            return ca < cb ? -1 : 1;
        ++i;
        ++j;
    }
    if (i < a.size() || j < b.size())
        return i < a.size() ? 1 : -1;
    return a.compare(b); // equal but for case or zeros: a fixed order all the same
}

QStringList sortArrayInAlphabeticalOrderByFileName(QStringList paths)
{
    std::stable_sort(paths.begin(), paths.end(), [](const QString &a, const QString &b) { return compare(a, b) < 0; });
    return paths;
}

} // namespace NaturalOrder
