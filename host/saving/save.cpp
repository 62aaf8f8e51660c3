#include "saving/save.h"

#include "base/file.h"
#include "document/document.h"
#include "format/validator.h"
#include "format/xml.h"
#include "reading/openDocument.h"
#include "saving/backdropWriter.h"
#include "saving/declarations.h"
#include "saving/factWriter.h"
#include "saving/outsideNames.h"
#include "saving/projection.h"
#include "saving/saveCheck.h"

namespace shading {

namespace {

/// Writes the draft and opens that again, which is the part of the progress from one permille to
/// the other. False, with the problems, when it does not open.
bool judge(DraftNetwork& network,
           int from,
           int to,
           std::string& text,
           std::vector<Difference>& differences,
           std::vector<SaveProblem>& problems)
{
    Progress& progress = network.progress();
    const int length = to - from;
    std::vector<Piece*> elements;
    progress.begin(from, from, 0);
    progress.await([&] { text = network.draft().write(elements); });
    Message error;
    const int opened = from + length * 7 / 10;
    const PassingDocument back(
        openText(text, network.document(), error, progress.within(from + length / 10, opened))
            .release(),
        {progress.within(to, to)});
    progress.begin(opened, to, elements.size());
    if (back)
        differences = Judge(network, *back, elements).differences();
    else
        problems.push_back({pathOf(*network.document().getRootNode()),
                            "it would not open again: " + messageText(error)});
    return back != nullptr;
}

/// Writes what changed. What then comes back different is written in full, once.
bool write(DraftNetwork& network, std::string& text, std::vector<SaveProblem>& problems)
{
    FactWriter writer(network);
    writer.writeChanges();
    network.writeAttributes(problems);
    if (!problems.empty())
        return false;
    std::vector<Difference> differences;
    if (!judge(network, 300, 600, text, differences, problems))
        return false;
    if (!differences.empty() && writer.writeInFull(differences) &&
        !judge(network, 600, 900, text, differences, problems))
        return false;
    for (const Difference& difference : differences)
        problems.push_back(difference.problem);
    return differences.empty();
}

/// The same as saveToBytes, in UTF-8.
bool saveToText(Document& document,
                std::string& text,
                std::vector<SaveProblem>& problems,
                Progress& progress)
{
    DraftNetwork network(document, progress);
    progress.begin(50, 300, 7 * document.xml().pieces().pieces().size() / 2);
    projectNodes(network);
    problems = checkSavable(network);
    updateOutsideNames(network, problems);
    updateDeclarations(network, problems);
    writeBackdrops(network);
    return problems.empty() && write(network, text, problems);
}

bool saveToBytes(Document& document,
                 std::string& bytes,
                 std::vector<SaveProblem>& problems,
                 Progress& progress)
{
    std::string text;
    if (!saveToText(document, text, problems, progress))
        return false;
    const Encoding& encoding = document.xml().encoding();
    bool isDone = false;
    progress.begin(900, 900, 0);
    progress.await([&] { isDone = convertFromUtf8(text, encoding, bytes); });
    if (!isDone)
        problems.push_back({pathOf(*document.getRootNode()),
                            "the encoding " + encoding.name + " lacks a character of it"});
    return isDone;
}

/// The bytes that belong into the file. False when they do not.
bool bytesFor(Document& document,
              const std::string& path,
              std::string& bytes,
              std::vector<SaveProblem>& problems,
              ChangedFile changed,
              Progress& progress)
{
    if (!saveToBytes(document, bytes, problems, progress))
        return false;
    const auto known = document.files().find(canonicalPath(path));
    const std::optional<FileStamp> stamp = stampOf(path);
    if (changed == ChangedFile::Replace || !stamp || known == document.files().end() ||
        known->second == *stamp)
        return true;
    problems.push_back({path, "somebody changed it since it was read or saved last"});
    return false;
}

/// Does the work. False, with that as the only problem, when it is cancelled.
template <class Work>
bool runCancellable(const std::string& subject,
                    std::vector<SaveProblem>& problems,
                    const Progress::Tell& tell,
                    const Work& work)
{
    Progress progress(tell);
    try {
        return work(progress);
    } catch (const Cancelled&) {
        problems = {{subject, kCancelled}};
        return false;
    }
}

} // namespace

bool saveToBytes(Document& document,
                 std::string& bytes,
                 std::vector<SaveProblem>& problems,
                 const Progress::Tell& tell)
{
    return runCancellable(pathOf(*document.getRootNode()), problems, tell, [&](Progress& progress) {
        return saveToBytes(document, bytes, problems, progress);
    });
}

bool maySaveToFile(Document& document,
                   const std::string& path,
                   std::vector<SaveProblem>& problems,
                   ChangedFile changed,
                   const Progress::Tell& tell)
{
    return runCancellable(path, problems, tell, [&](Progress& progress) {
        std::string bytes;
        return bytesFor(document, path, bytes, problems, changed, progress);
    });
}

bool saveToFile(Document& document,
                const std::string& path,
                std::vector<SaveProblem>& problems,
                ChangedFile changed,
                const Progress::Tell& tell)
{
    return runCancellable(path, problems, tell, [&](Progress& progress) {
        std::string bytes;
        if (!bytesFor(document, path, bytes, problems, changed, progress))
            return false;
        FileStamp written;
        std::string problem;
        int number = 0;
        bool isDone = false;
        progress.begin(950, 950, 0);
        // What has taken the place of the file is saved, whatever is wished then.
        progress.awaitResult([&] {
            isDone = replaceFile(
                path, bytes, problem, &written, [&] { return !progress.isCancelled(); }, &number);
        });
        if (!isDone && progress.isCancelled())
            throw Cancelled();
        if (isDone)
            document.files()[canonicalPath(path)] = written;
        else
            problems.push_back({path, "cannot be written: " + problem, number});
        return isDone;
    });
}

std::vector<SaveProblem> checkDocument(Document& document, const Progress::Tell& tell)
{
    std::vector<SaveProblem> problems;
    runCancellable(pathOf(*document.getRootNode()), problems, tell, [&](Progress& progress) {
        std::string text;
        if (!saveToText(document, text, problems, progress))
            return false;
        progress.await([&] {
            XmlSource written;
            Message ignored; // It was opened by the judge.
            if (!written.loadText("", text, ignored))
                return;
            for (const FormatFault& fault : formatFaults(written.documentElement())) {
                if (fault.rule < FormatFault::Rule::Type)
                    problems.push_back({fault.path, fault.text});
            }
        });
        return true;
    });
    return problems;
}

} // namespace shading
