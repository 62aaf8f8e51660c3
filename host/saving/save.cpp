#include "saving/save.h"

#include "base/fileReplace.h"
#include "document/document.h"
#include "format/xml.h"
#include "reading/openDocument.h"
#include "saving/declarations.h"
#include "saving/outsideNames.h"
#include "saving/projection.h"
#include "saving/readBack.h"
#include "saving/saveCheck.h"
#include "saving/writeAhead.h"

namespace shading {

namespace {

/// Each reading back writes at least one thing into the draft that it does not take out again.
constexpr int kMaxRounds = 50;

/// Writes, reads back and corrects until nothing comes back different.
bool settle(DraftNetwork& network, std::string& text, std::vector<SaveProblem>& problems)
{
    for (int round = 0; round < kMaxRounds; ++round) {
        std::vector<Piece*> elements;
        text = network.draft().write(elements);
        Message error;
        const std::unique_ptr<Document> back = openText(text, network.document(), error);
        if (!back) {
            problems.push_back({pathOf(*network.document().getRootNode()),
                                "it would not open again: " + messageText(error)});
            return false;
        }
        ReadBack readBack(network, *back, elements);
        readBack.run();
        if (readBack.differences().empty())
            return true;
        if (!readBack.hasChanged() || round + 1 == kMaxRounds) {
            problems = readBack.differences();
            return false;
        }
    }
    return false;
}

} // namespace

bool saveToBytes(Document& document, std::string& bytes, std::vector<SaveProblem>& problems)
{
    DraftNetwork network(document);
    const std::string root = pathOf(*document.getRootNode());
    projectNodes(network);
    problems = checkSavable(network);
    updateOutsideNames(network, problems);
    updateDeclarations(network, problems);
    if (!problems.empty())
        return false;
    writeAhead(network);
    std::string text;
    if (!settle(network, text, problems))
        return false;
    const Encoding& encoding = document.xml().encoding();
    if (convertFromUtf8(text, encoding, bytes))
        return true;
    problems.push_back({root, "the encoding " + encoding.name + " lacks a character of it"});
    return false;
}

bool saveToFile(Document& document, const std::string& path, std::vector<SaveProblem>& problems)
{
    std::string bytes;
    if (!saveToBytes(document, bytes, problems))
        return false;
    std::string problem;
    if (replaceFile(path, bytes, problem))
        return true;
    problems.push_back({path, "cannot be written: " + problem});
    return false;
}

} // namespace shading
