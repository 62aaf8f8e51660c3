#include "console/script.h"

#include "base/file.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace shading {

namespace {

/// Scripts may lie this deep inside each other, far below what the stack holds.
constexpr std::size_t kMaxScripts = 64;

const char* const kByteOrderMark = "\xEF\xBB\xBF"; ///< Some editors begin a text with it.

/// Splits at line ends. False at a control character that no text has: the last line is its place.
bool splitLines(const std::string& text, std::vector<std::string>& lines)
{
    lines.assign(1, "");
    const std::size_t begin = text.rfind(kByteOrderMark, 0) == 0 ? std::strlen(kByteOrderMark) : 0;
    for (std::size_t i = begin; i < text.size(); ++i) {
        const char c = text[i];
        const bool isText = static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\r';
        if (c == '\n')
            lines.emplace_back();
        else if (isText)
            lines.back() += c;
        else
            return false;
    }
    return true;
}

} // namespace

bool ScriptStack::enter(const std::string& path, std::string& problem)
{
    Script script;
    script.path = pathFrom(path);
    std::error_code ignored;
    script.file = std::filesystem::weakly_canonical(script.path, ignored).string();
    const auto isSame = [&](const Script& other) { return other.file == script.file; };
    std::string text;
    if (std::any_of(m_scripts.begin(), m_scripts.end(), isSame))
        problem = "it runs already";
    else if (m_scripts.size() == kMaxScripts)
        problem = "more than " + std::to_string(kMaxScripts) + " scripts inside each other";
    else if (!readFile(script.path, text, problem))
        problem = "cannot be read: " + problem;
    else if (!splitLines(text, script.lines))
        problem = "no text: a control character in line " + std::to_string(script.lines.size());
    if (!problem.empty())
        return false;
    m_scripts.push_back(std::move(script));
    return true;
}

std::string ScriptStack::place() const
{
    if (m_scripts.empty())
        return "";
    return m_scripts.back().path + ":" + std::to_string(m_scripts.back().line) + ": ";
}

std::string ScriptStack::pathFrom(const std::string& path) const
{
    if (m_scripts.empty())
        return path;
    return (std::filesystem::path(m_scripts.back().path).parent_path() / path).string();
}

} // namespace shading
