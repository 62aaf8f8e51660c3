#include "shell/progressLine.h"

#include <ostream>

namespace shading {

namespace {

constexpr std::chrono::milliseconds kSilence(1000);
constexpr std::chrono::milliseconds kInterval(100);

/// The text, or so many bytes of its end: a character has one column at most for each byte.
std::string endOf(const std::string& text, std::size_t size)
{
    if (text.size() <= size)
        return text;
    std::size_t start = text.size() - size;
    while (start < text.size() && (text[start] & 0xC0) == 0x80)
        ++start; // Not within a character of several bytes.
    return text.substr(start);
}

} // namespace

ProgressLine::ProgressLine(std::ostream& out, int columns, std::string title, Clock clock)
    : m_out(out),
      m_columns(static_cast<std::size_t>(columns)),
      m_title(std::move(title)),
      m_clock(std::move(clock)),
      m_next(m_clock() + kSilence)
{
}

void ProgressLine::update(int permille)
{
    if (m_columns == 0)
        return;
    const auto now = m_clock();
    if (now < m_next)
        return;
    m_next = now + kInterval;
    const std::string text =
        endOf(m_title + ": " + std::to_string(permille / 10) + " %", m_columns - 1);
    m_width = text.size();
    m_out << "\r" << text << std::flush;
}

void ProgressLine::clear()
{
    if (m_width > 0)
        m_out << "\r" << std::string(m_width, ' ') << "\r" << std::flush;
    m_width = 0;
}

} // namespace shading
