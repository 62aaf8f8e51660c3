#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <string>

namespace shading {

/// Shows on a terminal that something takes its time: nothing within the first second; then a line
/// "TITLE: 42 %", written anew at most ten times a second and cleared at the end. What is too long
/// for one line of the terminal loses its start. Where there is no terminal nothing is written.
class ProgressLine {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// The time begins here. So many columns has the terminal; 0: it is none. The stream is not
    /// owned and must outlive the line.
    ProgressLine(std::ostream& out, int columns, std::string title, Clock clock);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine() { clear(); }

    void update(int permille);
    /// Takes the line off the terminal.
    void clear();

private:
    std::ostream& m_out;
    std::size_t m_columns; ///< 0: no terminal.
    std::string m_title;
    Clock m_clock;
    std::chrono::steady_clock::time_point m_next; ///< Nothing is written before.
    std::size_t m_width = 0;                      ///< Of what stands on the terminal.
};

} // namespace shading
