#include "testDocument.h"

#include "console/console.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

std::string messageLines(const std::vector<shading::Message>& messages, const std::string& path)
{
    const std::size_t folder = path.rfind('/') + 1;
    std::string result;
    for (const shading::Message& message : messages)
        result += shading::messageText(message).substr(folder) + "\n";
    return result;
}

} // namespace

TestFile::TestFile(const std::string& text, const char* name)
{
    m_folder = (std::filesystem::temp_directory_path() / "shadingXXXXXX").string();
    if (!mkdtemp(m_folder.data()))
        std::abort();
    m_path = m_folder + "/" + name;
    std::ofstream(m_path, std::ios::binary) << text;
}

TestFile::~TestFile()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::string fileBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TestDocument::TestDocument(const std::string& elements, bool isStrict)
{
    const TestFile file("<materialx version=\"1.39\">" + elements + "</materialx>\n");
    shading::OpenOptions options;
    options.isStrict = isStrict;
    std::vector<shading::Message> found;
    opened = shading::openDocument(file.path(), options, found);
    messages = messageLines(found, file.path());
}

std::string TestDocument::run(const std::string& commands) const
{
    std::ostringstream out;
    shading::Session session = sessionOn(*opened);
    shading::Console shell(session, out, out);
    shell.add(shading::viewCommands());
    shell.add(shading::fileCommands());
    shell.add(shading::drawCommands());
    shell.add(shading::editCommands());
    std::istringstream lines(commands);
    std::string line;
    while (std::getline(lines, line))
        shell.run(line);
    return out.str();
}

std::string withoutNotes(const std::string& lines)
{
    std::istringstream in(lines);
    std::string text;
    for (std::string line; std::getline(in, line);) {
        if (line.find("note: ") == std::string::npos)
            text += line + "\n";
    }
    return text;
}

std::string TestDocument::edit(const std::string& commands) const
{
    std::ostringstream out;
    shading::Session session = sessionOn(*opened);
    shading::Console shell(session, out, out);
    shell.add(shading::viewCommands());
    shell.add(shading::editCommands());
    std::istringstream lines(commands);
    std::string line;
    while (std::getline(lines, line) && shell.run(line))
        continue;
    return out.str();
}

shading::Session sessionOn(shading::Document& document)
{
    const std::shared_ptr<shading::Document> borrowed(std::shared_ptr<void>(), &document);
    return shading::Session(borrowed, "");
}

std::string openText(const std::string& text)
{
    const TestFile file(text);
    std::vector<shading::Message> found;
    const bool isOpen = shading::openDocument(file.path(), {}, found) != nullptr;
    return isOpen ? "opened" : messageLines(found, file.path());
}
