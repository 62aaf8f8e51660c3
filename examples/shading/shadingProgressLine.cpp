#include "shadingProgressLine.h"

#include <ostream>

namespace shading {

namespace {

constexpr std::chrono::milliseconds kSilence(1000);
constexpr std::chrono::milliseconds kInterval(100);

} // namespace

ProgressLine::ProgressLine(std::ostream& out, bool isTerminal, std::string title, Clock clock)
    : m_out(out),
      m_isTerminal(isTerminal),
      m_title(std::move(title)),
      m_clock(std::move(clock)),
      m_next(m_clock() + kSilence)
{
}

void ProgressLine::update(int permille)
{
    if (m_isWritten && !m_isTerminal)
        return;
    const auto now = m_clock();
    if (now < m_next)
        return;
    m_next = now + kInterval;
    m_isWritten = true;
    const std::string text = m_title + ": " + std::to_string(permille / 10) + " %";
    m_width = m_isTerminal ? text.size() : 0;
    m_out << (m_isTerminal ? "\r" : "") << text << (m_isTerminal ? "" : "\n") << std::flush;
}

void ProgressLine::clear()
{
    if (m_width > 0)
        m_out << "\r" << std::string(m_width, ' ') << "\r" << std::flush;
    m_width = 0;
}

} // namespace shading
