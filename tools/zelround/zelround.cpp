#include "base/file.h"
#include "check/zelCheck.h"
#include "definitions/pluginModule.h"
#include "reading/openDocument.h"
#include "saving/save.h"
#include "views/report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

const char* const kUsage =
    "usage: zelround FOLDER\n"
    "Opens every shading document below the folder (*.mtlx), checks its network, saves it into a\n"
    "folder of its own, opens it there and compares; prints a line for each. Returns 1 when one\n"
    "does not open or comes back different.\n";

/// What became of one document.
struct Row {
    std::string document;
    int nodes = 0;
    int graphs = 0;
    long connections = 0;
    std::size_t warnings = 0;
    bool hasEqualBytes = false;
    bool hasEqualNetwork = false;
    std::string problem; ///< Empty: none.
};

/// A folder for files that nobody else has; it goes with the object.
class ScratchFolder {
public:
    ScratchFolder() : m_path((fs::temp_directory_path() / "zelroundXXXXXX").string())
    {
        m_isThere = mkdtemp(m_path.data()) != nullptr;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        if (m_isThere)
            fs::remove_all(m_path, ignored);
    }

    bool isThere() const { return m_isThere; }
    std::string file() const { return m_path + "/saved.mtlx"; }

private:
    std::string m_path;
    bool m_isThere = false;
};

std::string networkText(shading::Document& document, Row& row)
{
    const ZEL::AddRefWrapper<ZEL::Node> root = document.getRootNode();
    const shading::Statistics statistics = shading::statisticsOf(*root->getAsCompound());
    row.nodes = statistics.nodes;
    row.graphs = statistics.compounds;
    row.connections = statistics.connections;
    return shading::networkText(*root);
}

/// Empty, with the problem, when the document does not open.
std::unique_ptr<shading::Document> openOne(const std::string& path, ZEL::Runtime* runtime, Row& row)
{
    std::vector<shading::Message> messages;
    shading::OpenOptions options;
    options.runtime = runtime;
    std::unique_ptr<shading::Document> document = shading::openDocument(path, options, messages);
    row.warnings = messages.size();
    if (!document)
        row.problem = shading::messageText(messages.back());
    return document;
}

Row roundTrip(const std::string& path, const std::string& scratch, ZEL::Runtime* runtime)
{
    Row row;
    const std::unique_ptr<shading::Document> document = openOne(path, runtime, row);
    if (!document)
        return row;
    const std::string before = networkText(*document, row);
    const std::vector<zelCheck::Finding> findings = zelCheck::checkNetwork(*document);
    if (!findings.empty())
        row.problem = zelCheck::findingText(findings.front());
    std::vector<shading::SaveProblem> problems;
    if (!shading::saveToFile(*document, scratch, problems)) {
        row.problem = problems.front().path + ": " + problems.front().reason;
        return row;
    }
    std::string bytes;
    std::string written;
    row.hasEqualBytes = shading::readFile(path, bytes, row.problem) &&
                        shading::readFile(scratch, written, row.problem) && bytes == written;
    Row again;
    const std::unique_ptr<shading::Document> saved = openOne(scratch, runtime, again);
    row.hasEqualNetwork = saved && networkText(*saved, again) == before;
    if (row.problem.empty())
        row.problem = again.problem;
    return row;
}

bool isGood(const Row& row)
{
    return row.hasEqualBytes && row.hasEqualNetwork && row.problem.empty();
}

void print(const Row& row)
{
    std::printf("%-50s %6d %6d %11ld %8zu  %-5s  %-7s  %s\n", row.document.c_str(), row.nodes,
                row.graphs, row.connections, row.warnings, row.hasEqualBytes ? "equal" : "no",
                row.hasEqualNetwork ? "equal" : "no",
                isGood(row)           ? "good"
                : row.problem.empty() ? "different"
                                      : row.problem.c_str());
}

/// In the order of their paths; those that cannot be looked through are a problem.
bool findDocuments(const std::string& folder, std::vector<fs::path>& paths, std::string& problem)
{
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        if (entry->path().extension() == ".mtlx")
            paths.push_back(entry->path());
    }
    std::sort(paths.begin(), paths.end());
    problem = error.message();
    return !error;
}

bool checkDocuments(const std::string& folder, const ScratchFolder& scratch, ZEL::Runtime* runtime)
{
    std::vector<fs::path> paths;
    std::string problem;
    if (!findDocuments(folder, paths, problem) || paths.empty()) {
        std::cerr << "zelround: " << folder << ": " << (paths.empty() ? "no documents" : problem)
                  << "\n";
        return false;
    }
    std::printf("%-50s %6s %6s %11s %8s  %-5s  %-7s  %s\n", "document", "nodes", "graphs",
                "connections", "warnings", "bytes", "network", "result");
    std::size_t good = 0;
    for (const fs::path& path : paths) {
        Row row = roundTrip(path.string(), scratch.file(), runtime);
        row.document = path.lexically_relative(folder).string();
        good += isGood(row) ? 1 : 0;
        print(row);
    }
    std::printf("%zu documents, %zu good, %zu not\n", paths.size(), good, paths.size() - good);
    return good == paths.size();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << kUsage;
        return kWrongUsage;
    }
    // The plugin goes after all that comes from it.
    shading::PluginModule plugin;
    std::string problem;
    if (!plugin.load(shading::defaultPluginPath(), problem))
        std::cerr << "zelround: " << problem << "; going on without the plugin\n";
    const ScratchFolder scratch;
    if (!scratch.isThere()) {
        std::cerr << "zelround: no folder for files of its own can be made\n";
        return kFailure;
    }
    const bool isDone = checkDocuments(argv[1], scratch, plugin.runtime());
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::cerr << "error: standard output: cannot be written\n";
        return kFailure;
    }
    return isDone ? kSuccess : kFailure;
}
