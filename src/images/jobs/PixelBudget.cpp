#include "PixelBudget.h"

#include <chrono>

PixelBudget &PixelBudget::shared()
{
    static PixelBudget budget(kSharedBytes);
    return budget;
}

PixelBudget::Hold::~Hold()
{
    if (m_budget)
        m_budget->release(m_bytes);
}

PixelBudget::Hold PixelBudget::hold(qint64 bytes, const std::function<bool()> &stopped)
{
    std::unique_lock lock(m_mutex);
    while (m_inUse > 0 && m_inUse + bytes > m_limit) {
        if (stopped && stopped())
            return {};
        m_freed.wait_for(lock, std::chrono::milliseconds(50));
    }
    m_inUse += bytes;
    return Hold(this, bytes);
}

qint64 PixelBudget::inUse() const
{
    std::lock_guard lock(m_mutex);
    return m_inUse;
}

void PixelBudget::release(qint64 bytes)
{
    {
        std::lock_guard lock(m_mutex);
        m_inUse -= bytes;
    }
    m_freed.notify_all();
}
