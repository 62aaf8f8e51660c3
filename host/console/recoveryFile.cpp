#include "console/recoveryFile.h"

#include "base/commandLine.h"

#include <algorithm>
#include <sstream>

namespace shading {

const char* const kRecoveryEnding = ".zelsh";
const char* const kBaseEnding = ".base";

namespace {

const char* const kFirstLine = "# zeledit recovery 1";

/// Reads what is left of a text.
class Reader {
public:
    explicit Reader(const std::string& text) : m_text(text) {}

    /// The next line, without its end; false when there is no whole one.
    bool line(std::string& line)
    {
        const std::size_t end = m_text.find('\n', m_place);
        if (end == std::string::npos)
            return false;
        line = m_text.substr(m_place, end - m_place);
        m_place = end + 1;
        return true;
    }
    /// So many bytes and the line end behind them.
    bool bytes(std::size_t count, std::string& bytes)
    {
        if (count >= m_text.size() - m_place || m_text[m_place + count] != '\n')
            return false;
        bytes = m_text.substr(m_place, count);
        m_place += count + 1;
        return true;
    }

private:
    const std::string& m_text;
    std::size_t m_place = 0;
};

/// Of the text, without what would end a line.
std::string onOneLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return text;
}

/// "#KEY NUMBER REST": false when the line is another one.
bool readEntry(const std::string& line,
               const std::string& key,
               std::size_t& number,
               std::string& rest)
{
    std::istringstream stream(line);
    std::string word;
    if (!(stream >> word >> number) || word != "#" + key)
        return false;
    stream.get(); // The blank.
    rest.clear();
    std::getline(stream, rest, '\0');
    return true;
}

/// So many lines of an edit; false when they are not all there.
bool readLines(Reader& reader, std::size_t count, std::vector<std::string>& lines)
{
    std::string line;
    std::string rest;
    std::size_t size = 0;
    for (; count > 0; --count) {
        if (!reader.line(line) ||
            (readEntry(line, "bytes", size, rest) && !reader.bytes(size, line)))
            return false;
        lines.push_back(line);
    }
    return true;
}

bool readStamp(const std::string& line, std::optional<FileStamp>& stamp)
{
    std::istringstream stream(line);
    std::string word;
    FileStamp read;
    if (!(stream >> word >> read.device >> read.number >> read.size >> read.seconds >>
          read.nanoseconds) ||
        word != "#stamp")
        return false;
    stamp = read;
    return true;
}

} // namespace

std::string textOf(const RecoveryHeader& header)
{
    std::ostringstream text;
    text << kFirstLine << "\n#document " << header.document.size() << "\n# " << header.document
         << "\n";
    if (header.isNew)
        text << "#new\n";
    else if (header.stamp)
        text << "#stamp " << header.stamp->device << " " << header.stamp->number << " "
             << header.stamp->size << " " << header.stamp->seconds << " "
             << header.stamp->nanoseconds << "\n";
    return text.str();
}

std::string textOf(const EditName& edit)
{
    std::string text =
        "#edit " + std::to_string(edit.lines.size()) + " " + onOneLine(edit.title) + "\n";
    for (const std::string& line : edit.lines) {
        if (line.find('\n') != std::string::npos)
            text += "#bytes " + std::to_string(line.size()) + "\n";
        text += line + "\n";
    }
    return text;
}

bool readRecovery(const std::string& text, RecoveryText& result)
{
    Reader reader(text);
    std::string line;
    std::string rest;
    std::size_t count = 0;
    if (!reader.line(line) || line != kFirstLine || !reader.line(line) ||
        !readEntry(line, "document", count, rest) || !reader.bytes(count + 2, line))
        return false;
    result.header.document = line.substr(2);
    while (reader.line(line)) {
        EditName edit;
        if (line == "#new")
            result.header.isNew = true;
        else if (readEntry(line, "edit", count, edit.title) && readLines(reader, count, edit.lines))
            result.edits.push_back(edit);
        else if (!readStamp(line, result.header.stamp))
            break;
    }
    return true;
}

} // namespace shading
