#include "base/progress.h"

#include <algorithm>

namespace shading {

void Progress::begin(int from, int to, std::size_t total)
{
    m_from = from;
    m_to = to;
    m_total = total;
    m_done = 0;
    tell(0);
}

void Progress::tell(std::size_t done) const
{
    if (!m_tell)
        return;
    const double share =
        m_total == 0 ? 0
                     : static_cast<double>(std::min(done, m_total)) / static_cast<double>(m_total);
    m_tell(m_from + static_cast<int>(share * (m_to - m_from)));
}

} // namespace shading
