#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <functional>

namespace shading {

/// Thrown out of the work by its progress when the one who is told wants it to end. The functions
/// that are given a Progress::Tell catch it.
struct Cancelled {};

/// What is said of such a work.
extern const char* const kCancelled;

/// Tells how far a work is, from 0 to 1000, while its parts are worked through. Who is told may let
/// the events of a window be handled meanwhile.
class Progress {
public:
    /// False: the work is to end, undone.
    using Tell = std::function<bool(int permille)>;

    /// An empty function is not called.
    explicit Progress(Tell tell) : m_tell(std::move(tell)) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Begins a part of the work, which leads from one permille to the other and has that many
    /// units. Tells where it begins.
    void begin(int from, int to, std::size_t total)
    {
        m_from = from;
        m_to = to;
        m_total = total;
        m_done = 0;
        tell(0);
    }
    /// True on every 256th call: then tell is worth its while.
    bool isDue() { return (++m_calls & 255U) == 0; }
    /// So many units of the part are done. Throws Cancelled.
    void tell(std::size_t done)
    {
        note(done);
        if (m_isCancelled)
            throw Cancelled();
    }
    /// As many as were told last.
    void tell() { tell(m_done); }
    /// One unit more is done: tells now and then. Throws Cancelled.
    void step()
    {
        ++m_done;
        if (isDue())
            tell(m_done);
    }

    /// Does the work in a thread of its own, and goes on telling until it has ended; where nobody
    /// is told, here. It must touch nothing that counts references, such as the objects of the
    /// library, and nothing that those may change who are told. Throws what the work throws;
    /// Cancelled when it has ended.
    void await(const std::function<void()>& work);
    /// The same for work that has its say about the end: does not throw Cancelled.
    void awaitResult(const std::function<void()>& work);
    /// The work is to end. In its own thread it may ask.
    bool isCancelled() const { return m_isCancelled; }

    /// For a work that is the part from one permille of this one to the other. This must outlive
    /// it.
    Tell within(int from, int to);

private:
    void note(std::size_t done)
    {
        m_done = done;
        const double share =
            m_total == 0 ? 0 : static_cast<double>(done) / static_cast<double>(m_total);
        if (m_tell && !pass(m_from + static_cast<int>(std::min(share, 1.0) * (m_to - m_from))))
            m_isCancelled = true;
    }
    /// Never tells less than before: a part may have told more of itself than its begin.
    bool pass(int permille)
    {
        m_told = std::max(m_told, permille);
        return m_tell(m_told);
    }

    Tell m_tell;
    int m_from = 0;
    int m_to = 0;
    std::size_t m_total = 0;
    std::size_t m_done = 0; ///< Steps of the part.
    int m_told = 0;         ///< The most, in permille.
    unsigned m_calls = 0;
    std::atomic<bool> m_isCancelled = false;
};

/// The same told, whose wish to end is not heard: for what must be finished.
Progress::Tell withoutCancel(const Progress::Tell& tell);

} // namespace shading
