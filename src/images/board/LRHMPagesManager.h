#pragma once

// The page board's entries, one list for the whole process (the board and the images-to-PDF export
// share it). Main thread only; an export works on a copy of the list.

#include "LRHMPageItem.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <optional>

class LRHMPagesManager : public QObject
{
    Q_OBJECT
public:
    static LRHMPagesManager &shareImagesManager();

    void addPageItemWith(const QString &path);
    std::optional<LRHMPageItem> pageItemAt(qsizetype index) const;
    void removePageItemAt(qsizetype index);              // ignored out of range
    void insertPageItem(const std::optional<LRHMPageItem> &item, qsizetype index); // ignored out of range; count appends
    void cleanUpCache();
    qsizetype pageImageCount() const { return m_imageList.size(); }
    void appendTransform(const QTransform &t, qsizetype index);
    void autoReloadPageItemIdentifyAt(qsizetype index);
    const QList<LRHMPageItem> &items() const { return m_imageList; }

    static QStringList supportImageTypes();
    // Adds an existing file, no folder, of a page image type; false (and nothing added) otherwise.
    bool loadPageImageWith(const QString &path);
    // The paths that were taken.
    QStringList loadPageItemImagesWithPaths(const QStringList &paths);
    // Moves the entries at `indexes` to stand before `destination`, the block in its own order.
    void moveItemsAtIndexes(QList<qsizetype> indexes, qsizetype destination);
    // Removes the entries at `indexes`, from the last down.
    void removeItems(QList<qsizetype> indexes);

Q_SIGNALS:
    void listChanged(); // any change of the entries or their order
    void itemChanged(qsizetype index);

private:
    QList<LRHMPageItem> m_imageList;
};
