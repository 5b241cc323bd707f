#pragma once

#include <QMutex>
#include <QStringList>

#include <atomic>
#include <memory>

// One running copy or move job, shared by the interface thread and the job's thread.
class FileCopyParams
{
public:
    FileCopyParams(QStringList sources, QString destFolder, bool isCopying)
        : isCopying(isCopying), m_sourcePathsArr(std::move(sources)), m_destFolder(std::move(destFolder))
    {
    }

    std::atomic<bool> stopped{false};
    const bool isCopying; // false: a move, the sources go once the copy is complete
    std::atomic<quint64> current{0};
    std::atomic<quint64> total{0};

    QStringList sourcePathsArr() const
    {
        QMutexLocker lock(&m_mutex);
        return m_sourcePathsArr;
    }
    QString destFolder() const
    {
        QMutexLocker lock(&m_mutex);
        return m_destFolder;
    }
    QString currentFileName() const
    {
        QMutexLocker lock(&m_mutex);
        return m_currentFileName;
    }
    void setCurrentFileName(const QString &name)
    {
        QMutexLocker lock(&m_mutex);
        m_currentFileName = name;
    }

private:
    mutable QMutex m_mutex;
    QStringList m_sourcePathsArr;
    QString m_destFolder;
    QString m_currentFileName;
};

using FileCopyParamsPtr = std::shared_ptr<FileCopyParams>;
