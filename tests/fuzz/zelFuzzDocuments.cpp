// Documents of the sample host: any bytes as a file, opened twice, shown, checked, edited by
// commands, taken back and done again, and saved.
//
// The input: the bytes of the document; behind a byte of 0, which no document may have, a command
// of the shell on each line. The parts are parted by the last byte of 0 but in UTF-16, which has
// such bytes itself: then there are no commands.

#include "../host/savedText.h"
#include "check/zelCheck.h"
#include "console/console.h"
#include "reading/openDocument.h"
#include "saving/save.h"
#include "shadingDefinition.h"
#include "views/report.h"
#include "zelFuzzInput.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t kMaxCommands = 30;

/// A file in memory with a path.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& bytes) : m_file(memfd_create("document", 0))
    {
        m_path = "/proc/self/fd/" + std::to_string(m_file);
        std::ofstream(m_path, std::ios::binary) << bytes;
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(m_file); }

    const std::string& path() const { return m_path; }

private:
    int m_file;
    std::string m_path;
};

/// A runtime with a few definitions, and what else the commands find.
ZEL::Runtime& runtime()
{
    static const auto made = [] {
        auto result = std::make_unique<ZEL::Runtime>();
        ZEL::AddRefWrapper<ZEL::NodeLibrary> library = ZEL::NodeLibrary::createNew("shading");
        for (const char* const type : {"float", "color3", "vector3"}) {
            result->createPortDataType(type);
            shading::DefinitionRecord record;
            record.name = std::string("ND_add_") + type;
            record.inputs = {{"in1", type, "0"}, {"in2", type, ""}};
            record.outputs = {{"out", type, ""}};
            library->addNode(shading::Definition::createNew("add", record));
        }
        result->setNodeLibrary(library);
        return result;
    }();
    return *made;
}

std::unique_ptr<shading::Document> open(const std::string& bytes, std::string& messages)
{
    const MemoryFile file(bytes);
    shading::OpenOptions options;
    options.runtime = &runtime();
    std::vector<shading::Message> found;
    auto document = shading::openDocument(file.path(), options, found);
    for (const shading::Message& message : found)
        messages += shading::messageText(message).substr(file.path().size()) + "\n";
    zelFuzz::expect(document || !found.empty(), "a document is refused without a word");
    return document;
}

/// Everything that edits may change.
std::string networkText(shading::Document& document)
{
    return shading::networkText(*document.getRootNode());
}

/// No connection that one end does not know, no inner port out of step, no wrong owner.
void expectSound(shading::Document& document, const std::string& where)
{
    for (const zelCheck::Finding& finding : zelCheck::checkNetwork(document))
        zelFuzz::expect(finding.kind != zelCheck::Kind::OneEnded &&
                            finding.kind != zelCheck::Kind::OutOfStep &&
                            finding.kind != zelCheck::Kind::WrongOwner,
                        where + ": " + zelCheck::findingText(finding));
}

/// What was saved opens again, and saves as the same bytes.
void expectSaved(shading::Document& document)
{
    const std::string before = networkText(document);
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    const bool isSaved = shading::saveToBytes(document, bytes, problems);
    zelFuzz::expect(networkText(document) == before, "saving changes the network");
    zelFuzz::expect(isSaved || !problems.empty(), "saving is refused without a word");
    if (!isSaved)
        return;
    std::string messages;
    const auto opened = open(bytes, messages);
    zelFuzz::expect(opened != nullptr, "what was saved does not open: " + messages);
    zelFuzz::expect(savedText(*opened) == savedText(document),
                    "what was saved has another network");
    std::string again;
    zelFuzz::expect(shading::saveToBytes(*opened, again, problems) && again == bytes,
                    "saved twice, other bytes");
}

/// Runs the commands and takes them back; then does them again.
void edit(shading::Document& document, const std::string& commands)
{
    std::ostringstream told;
    const std::shared_ptr<shading::Document> borrowed(std::shared_ptr<void>(), &document);
    shading::Session session(borrowed, "");
    shading::Console shell(session, told, told);
    shell.add(shading::viewCommands());
    shell.add(shading::editCommands());
    shell.add(shading::libraryCommands());
    std::istringstream lines(commands);
    std::string line;
    const std::string before = networkText(document);
    for (std::size_t i = 0; i < kMaxCommands && std::getline(lines, line); ++i) {
        if (line.find("save") != std::string::npos || line.size() > 200)
            continue; // Files of the host stay as they are.
        shell.run(line);
        expectSound(document, line);
    }
    shading::History& history = shell.edits().history();
    const int count = history.undoCount();
    const std::string after = networkText(document);
    expectSaved(document);
    std::string title;
    std::string problem;
    while (history.undoCount() > 0)
        zelFuzz::expect(history.undo(title, problem),
                        title.append(" cannot be undone: ").append(problem));
    zelFuzz::expect(networkText(document) == before, "undone, the document is another one");
    while (history.undoCount() < count)
        zelFuzz::expect(history.redo(title, problem),
                        title.append(" cannot be redone: ").append(problem));
    zelFuzz::expect(networkText(document) == after, "redone, the document is another one");
}

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name that a fuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    const bool isWide = size > 1 && (data[0] == 0 || data[1] == 0 || data[0] >= 0xFE);
    const std::size_t end = isWide ? std::string::npos : input.rfind('\0');
    const std::string text = input.substr(0, end);
    std::string messages;
    std::string messagesAgain;
    const auto document = open(text, messages);
    const auto again = open(text, messagesAgain);
    zelFuzz::expect(messages == messagesAgain && !document == !again, "opened twice, two results");
    if (!document)
        return 0;
    zelFuzz::expect(networkText(*document) == networkText(*again), "opened twice, two networks");
    expectSound(*document, "opened");
    expectSaved(*document);
    if (end != std::string::npos)
        edit(*document, input.substr(end + 1));
    return 0;
}
