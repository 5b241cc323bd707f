#include "LRHMPagesManager.h"

#include "images/ImageTypeCode.h"

#include <algorithm>

LRHMPagesManager &LRHMPagesManager::shareImagesManager()
{
    static LRHMPagesManager manager;
    return manager;
}

void LRHMPagesManager::addPageItemWith(const QString &path)
{
    m_imageList.append(LRHMPageItem(path));
    Q_EMIT listChanged();
}

std::optional<LRHMPageItem> LRHMPagesManager::pageItemAt(qsizetype index) const
{
    if (index < 0 || index >= m_imageList.size())
        return std::nullopt;
    return m_imageList.at(index);
}

void LRHMPagesManager::removePageItemAt(qsizetype index)
{
    if (index < 0 || index >= m_imageList.size())
        return;
    m_imageList.removeAt(index);
    Q_EMIT listChanged();
}

void LRHMPagesManager::insertPageItem(const std::optional<LRHMPageItem> &item, qsizetype index)
{
    if (!item || index < 0 || index > m_imageList.size())
        return;
    m_imageList.insert(index, *item);
    Q_EMIT listChanged();
}

void LRHMPagesManager::cleanUpCache()
{
    m_imageList.clear();
    Q_EMIT listChanged();
}

void LRHMPagesManager::appendTransform(const QTransform &t, qsizetype index)
{
    if (index < 0 || index >= m_imageList.size())
        return;
    m_imageList[index].appendCGTransform(t);
    Q_EMIT itemChanged(index);
}

void LRHMPagesManager::autoReloadPageItemIdentifyAt(qsizetype index)
{
    if (index < 0 || index >= m_imageList.size())
        return;
    m_imageList[index].autoReloadIdentify();
    Q_EMIT itemChanged(index);
}

QStringList LRHMPagesManager::supportImageTypes()
{
    return PageImageTypes::supportImageTypes();
}

bool LRHMPagesManager::loadPageImageWith(const QString &path)
{
    if (!PageImageTypes::isPageImage(path))
        return false;
    addPageItemWith(path);
    return true;
}

QStringList LRHMPagesManager::loadPageItemImagesWithPaths(const QStringList &paths)
{
    QStringList taken;
    for (const QString &path : paths)
        if (loadPageImageWith(path))
            taken << path;
    return taken;
}

void LRHMPagesManager::moveItemsAtIndexes(QList<qsizetype> indexes, qsizetype destination)
{
    std::sort(indexes.begin(), indexes.end());
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    QList<LRHMPageItem> moving;
    // From the last to the first: each taken entry below the destination moves it up by one.
    for (auto it = indexes.crbegin(); it != indexes.crend(); ++it) {
        if (*it < 0 || *it >= m_imageList.size())
            continue;
        if (*it < destination)
            --destination;
        moving.append(m_imageList.takeAt(*it));
    }
    // Filled from the back, inserted one by one at the same place: the block keeps its order.
    destination = std::clamp<qsizetype>(destination, 0, m_imageList.size());
    for (const LRHMPageItem &item : moving)
        m_imageList.insert(destination, item);
    Q_EMIT listChanged();
}

void LRHMPagesManager::removeItems(QList<qsizetype> indexes)
{
    std::sort(indexes.begin(), indexes.end());
    for (auto it = indexes.crbegin(); it != indexes.crend(); ++it)
        if (*it >= 0 && *it < m_imageList.size())
            m_imageList.removeAt(*it);
    Q_EMIT listChanged();
}
