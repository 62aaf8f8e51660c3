#include "saving/save.h"

#include "base/file.h"
#include "document/document.h"
#include "format/validator.h"
#include "format/xml.h"
#include "reading/openDocument.h"
#include "saving/declarations.h"
#include "saving/factWriter.h"
#include "saving/outsideNames.h"
#include "saving/projection.h"
#include "saving/saveCheck.h"

namespace shading {

namespace {

/// Writes the draft and opens that again. False, with the problems, when it does not open.
bool judge(DraftNetwork& network,
           std::string& text,
           std::vector<Difference>& differences,
           std::vector<SaveProblem>& problems)
{
    std::vector<Piece*> elements;
    text = network.draft().write(elements);
    Message error;
    const std::unique_ptr<Document> back = openText(text, network.document(), error);
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
    if (!judge(network, text, differences, problems))
        return false;
    if (!differences.empty() && writer.writeInFull(differences) &&
        !judge(network, text, differences, problems))
        return false;
    for (const Difference& difference : differences)
        problems.push_back(difference.problem);
    return differences.empty();
}

/// The same as saveToBytes, in UTF-8.
bool saveToText(Document& document, std::string& text, std::vector<SaveProblem>& problems)
{
    DraftNetwork network(document);
    projectNodes(network);
    problems = checkSavable(network);
    updateOutsideNames(network, problems);
    updateDeclarations(network, problems);
    return problems.empty() && write(network, text, problems);
}

/// The bytes that belong into the file. False when they do not.
bool bytesFor(Document& document,
              const std::string& path,
              std::string& bytes,
              std::vector<SaveProblem>& problems,
              ChangedFile changed)
{
    if (!saveToBytes(document, bytes, problems))
        return false;
    const auto known = document.files().find(canonicalPath(path));
    const std::optional<FileStamp> stamp = stampOf(path);
    if (changed == ChangedFile::Replace || !stamp || known == document.files().end() ||
        known->second == *stamp)
        return true;
    problems.push_back({path, "somebody changed it since it was read or saved last"});
    return false;
}

} // namespace

bool saveToBytes(Document& document, std::string& bytes, std::vector<SaveProblem>& problems)
{
    std::string text;
    if (!saveToText(document, text, problems))
        return false;
    const Encoding& encoding = document.xml().encoding();
    if (convertFromUtf8(text, encoding, bytes))
        return true;
    problems.push_back({pathOf(*document.getRootNode()),
                        "the encoding " + encoding.name + " lacks a character of it"});
    return false;
}

bool maySaveToFile(Document& document,
                   const std::string& path,
                   std::vector<SaveProblem>& problems,
                   ChangedFile changed)
{
    std::string bytes;
    return bytesFor(document, path, bytes, problems, changed);
}

bool saveToFile(Document& document,
                const std::string& path,
                std::vector<SaveProblem>& problems,
                ChangedFile changed)
{
    std::string bytes;
    if (!bytesFor(document, path, bytes, problems, changed))
        return false;
    FileStamp written;
    std::string problem;
    if (!replaceFile(path, bytes, problem, &written)) {
        problems.push_back({path, "cannot be written: " + problem});
        return false;
    }
    document.files()[canonicalPath(path)] = written;
    return true;
}

std::vector<SaveProblem> checkDocument(Document& document)
{
    std::vector<SaveProblem> problems;
    std::string text;
    if (!saveToText(document, text, problems))
        return problems;
    XmlSource written;
    Message ignored; // It was opened by the judge.
    if (written.loadText("", text, ignored)) {
        for (const FormatFault& fault : formatFaults(written.documentElement())) {
            if (fault.rule < FormatFault::Rule::Type)
                problems.push_back({fault.path, fault.text});
        }
    }
    return problems;
}

} // namespace shading
