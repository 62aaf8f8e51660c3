#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>

namespace shading {

/// Tells how far the opening of a document is, from 0 to 1000, while its parts are worked through.
class Progress {
public:
    using Tell = std::function<void(int permille)>;

    /// An empty function is not called.
    explicit Progress(Tell tell) : m_tell(std::move(tell)) {}

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
    /// True on every 1024th call: then tell is worth its while.
    bool isDue() { return (++m_calls & 1023U) == 0; }
    /// So many units of the part are done.
    void tell(std::size_t done) const
    {
        const double share =
            m_total == 0 ? 0 : static_cast<double>(done) / static_cast<double>(m_total);
        if (m_tell)
            m_tell(m_from + static_cast<int>(std::min(share, 1.0) * (m_to - m_from)));
    }
    /// One unit more is done: tells now and then.
    void step()
    {
        ++m_done;
        if (isDue())
            tell(m_done);
    }

private:
    Tell m_tell;
    int m_from = 0;
    int m_to = 0;
    std::size_t m_total = 0;
    std::size_t m_done = 0; ///< Steps of the part.
    unsigned m_calls = 0;
};

} // namespace shading
