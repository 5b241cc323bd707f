#pragma once

#include <QtGlobal>

#include <utility>

#include <condition_variable>
#include <functional>
#include <mutex>

// The decoded pixels that image work may hold at once, shared by every job of the process: an item
// waits until its bytes fit beside what the others hold. An item larger than the whole budget still
// runs, alone, so nothing is refused for its size here.
class PixelBudget
{
public:
    explicit PixelBudget(qint64 bytes) : m_limit(bytes) {}

    // The budget of the whole program.
    static PixelBudget &shared();
    static constexpr qint64 kSharedBytes = qint64(512) << 20;

    // Bytes held while it lives.
    class Hold
    {
    public:
        Hold() = default;
        Hold(Hold &&other) noexcept : m_budget(std::exchange(other.m_budget, nullptr)), m_bytes(other.m_bytes) {}
        Hold &operator=(Hold &&) = delete;
        ~Hold();
        bool held() const { return m_budget != nullptr; }

    private:
        friend class PixelBudget;
        Hold(PixelBudget *budget, qint64 bytes) : m_budget(budget), m_bytes(bytes) {}
        PixelBudget *m_budget = nullptr;
        qint64 m_bytes = 0;
    };

    // Waits for room for `bytes`; gives up, holding nothing, once `stopped` answers true (it is asked
    // a few times a second).
    Hold hold(qint64 bytes, const std::function<bool()> &stopped = {});
    qint64 inUse() const;

private:
    void release(qint64 bytes);

    const qint64 m_limit;
    mutable std::mutex m_mutex;
    std::condition_variable m_freed;
    qint64 m_inUse = 0;
};
